#include "imports/dialogkit/appname.h"

namespace connectdialog {

namespace {
VUnicodeString& AppName() {
    static VUnicodeString name;
    return name;
}
}  // namespace

VUnicodeString VGetAppName() {
    return AppName();
}
void SetAppName(const VUnicodeString& name) {
    AppName() = name;
}
bool IsTerminalHost() {
    return AppName().View().find(u"Halden") != std::u16string_view::npos;
}

}  // namespace connectdialog
