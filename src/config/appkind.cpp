#include "config/appkind.h"

#include "imports/dialogkit/appname.h"

namespace connectdialog {

namespace {
struct AppName {
    std::u16string_view name;
    AppKind kind;
};
constexpr AppName kAppNames[] = {
    {u"Halden", AppKind::kHalden},
    {u"NorHalden", AppKind::kNorHalden},
    {u"Wakestone", AppKind::kNorHalden},
    {u"Tessaly", AppKind::kTessaly},
};
}  // namespace

AppKind GetAppKind() {
    const VUnicodeString running = VGetAppName();
    for (const AppName& row : kAppNames)
        if (running.EqualsNoCase(row.name)) return row.kind;
    return AppKind::kUnknown;
}

}  // namespace connectdialog
