#include "imports/globalconfig.h"

#include "imports/configpanels.h"

namespace connectdialog {

namespace {
class NoGlobalConfig : public GlobalConfig {
    bool Save() override { return false; }
};
}  // namespace

VRef<GlobalConfig> FetchGlobalConfig(std::int32_t kind) {
    VRef<GlobalConfig> config;
    if (!GetGlobalConfig(config, kind)) config = VRef<GlobalConfig>::Adopt(new NoGlobalConfig);
    return config;
}

}  // namespace connectdialog
