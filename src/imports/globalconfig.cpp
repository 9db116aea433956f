#include "imports/globalconfig.h"

#include "imports/configpanels.h"

namespace connectdialog {

namespace {
class NoGlobalConfig : public GlobalConfig {
    bool Save() override { return false; }
};
}  // namespace

VRef<GlobalConfig> FetchGlobalConfig() {
    VRef<GlobalConfig> config;
    if (!GetGlobalConfig(config, -1)) config = VRef<GlobalConfig>::Adopt(new NoGlobalConfig);
    return config;
}

}  // namespace connectdialog
