#include "suite/hostsetup/hostsetup.h"

#include <string>

#include "foundation/vreportmessageparams.h"
#include "frame/connectdialogapi.h"
#include "imports/dialogkit/appname.h"
#include "stores/openstore.h"
#include "stores/userstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/sessionoptions/sessionoptions.h"

namespace connectdialog {

namespace {

VProfileStoreFactory* currentFactory = nullptr;

}  // namespace

ReferenceConfigPanels& GetReferenceConfigPanels() {
    static ReferenceConfigPanels panels;
    return panels;
}

void InstallReferenceSuite(const VUnicodeString& appName, VProfileStoreFactory& factory, const HostParts& parts) {
    currentFactory = &factory;
    SetAppName(appName);
    GetReferenceConfigPanels().ReloadGlobalConfig();
    InstallConfigPanels(&GetReferenceConfigPanels());

    ConnectDialogDllInitProfileFactory([] { return currentFactory; });
    ConnectDialogDllInit(nullptr, nullptr);
    ConnectDialogInitApplicationCommandLine(parts.commandLine.GetData());
    ConnectDialogInitGUI(parts.icon, ShowSessionOptions, parts.help);
    GetHostCallbacks().needsTerminal = parts.needsTerminal;
    GetHostCallbacks().shortcutOptions = parts.shortcutOptions;
}

std::unique_ptr<VProfileStoreFactory> OpenReferenceStore(const VUnicodeString& appName, const VUnicodeString& url,
                                                         VUnicodeString& notice, const HostParts& parts) {
    VReportMessageParams report;
    const VUnicodeString own = stores::GetAbsoluteStoreUrl(stores::GetDefaultStoreUrl());
    const bool isOwn = url.IsEmpty() || url == own;
    std::unique_ptr<VProfileStoreFactory> factory;
    if (!isOwn || stores::CheckDefaultStore(report))
        factory = stores::OpenProfileStoreFactory(isOwn ? own : url, report);
    const char16_t* const what = factory ? u"a damaged store was set aside: " : u"the store cannot be opened: ";
    if (report.GetCode() != 0) notice = what + DescribeReport(report);
    if (factory) InstallReferenceSuite(appName, *factory, parts);
    return factory;
}

VStringArray GetStoreOptions(const VUnicodeString& url) {
    VStringArray options;
    const VUnicodeString absolute = stores::GetAbsoluteStoreUrl(url);
    if (url.IsEmpty() || absolute == stores::GetAbsoluteStoreUrl(stores::GetDefaultStoreUrl())) return options;
    options.Add(u"--store"_v);
    options.Add(absolute);
    return options;
}

VUnicodeString DescribeReport(VReportMessageParams& report) {
    std::u16string text(report.GetTextOneLine());
    while (!text.empty() && (text.back() == u' ' || text.back() == u'.')) text.pop_back();
    std::u16string details;
    for (std::size_t i = 0; i < report.GetInsertCount(); ++i) {
        const std::u16string_view insert = report.GetInserts()[i];
        if (insert.empty() || text.find(insert) != text.npos) continue;
        details.append(details.empty() ? u" (" : u": ").append(insert);
    }
    return VUnicodeString(details.empty() ? text : text + details + u')');
}

}  // namespace connectdialog
