#include "hosts/common/quickstart.h"

#include <algorithm>
#include <string>

#include "config/appkind.h"
#include "config/isessionconfig.h"
#include "foundation/percenttext.h"
#include "foundation/vreportmessageparams.h"
#include "frame/connectdialogapi.h"
#include "imports/configpanels.h"
#include "suite/hostsetup/hostsetup.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog::hosts {

namespace {

constexpr std::string_view kAfterScheme = "://";

}  // namespace

bool HasProtocolOf(const QuickAddress& address) {
    const ConnectProtocolTable& table = GetReferenceProtocolTable();
    return address.protocol.IsEmpty() ||
           std::any_of(table.begin(), table.end(), [&](const ConnectProtocolTableElement& row) {
               return row.kind == GetAppKind() && row.name == address.protocol;
           });
}

bool ReadQuickAddress(std::string_view text, bool isLink, QuickAddress& address, VUnicodeString& fault) {
    std::string plain(text);
    if (isLink && text.find(kAfterScheme) == text.npos) {
        fault = u"a link begins with ssh://, telnet:// or sftp://"_v;
        return false;
    }
    if (isLink && !PercentDecode(text, plain)) {
        fault = u"the link is not percent-encoded as links are"_v;
        return false;
    }
    QuickAddress found;
    VReportMessageParams report;
    if (!ParseQuickAddress(VUnicodeString(plain.c_str(), plain.size()), found, report)) {
        fault = DescribeReport(report);
        return false;
    }
    address = found;
    return true;
}

bool FillQuickConnect(const QuickAddress& address) {
    const auto appKind = static_cast<unsigned>(GetAppKind());
    CleanupQuickConnectDialog();
    ISessionConfig* first = nullptr;
    GetQuickConnectConfig(&first, appKind);
    const VRef<ISessionConfig> config = VRef<ISessionConfig>::Adopt(first);
    if (!config || !ApplyQuickAddress(*config, address)) return false;
    SetQuickConnectConfig(*config);
    return true;
}

VRef<ISessionConfig> AskQuickConnect(VWindow* parent, bool& isInTab) {
    ISessionConfig* chosen = nullptr;
    const auto appKind = static_cast<unsigned>(GetAppKind());
    if (ShowQuickConnectDialog(&chosen, VUnicodeString(), appKind, parent) != kDialogAccepted) return nullptr;
    isInTab = FetchGlobalConfig()->openInTab.Get();
    return VRef<ISessionConfig>::Adopt(chosen);
}

}  // namespace connectdialog::hosts
