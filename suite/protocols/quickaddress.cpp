#include "suite/protocols/quickaddress.h"

#include <algorithm>

#include "config/appkind.h"
#include "config/protocolchoice.h"
#include "config/sessionconfig.h"
#include "foundation/casefold.h"
#include "foundation/messagetable.h"
#include "foundation/vreportmessageparams.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/pages.h"
#include "suite/protocols/protocolconfig.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

namespace {

constexpr int kLastPort = 65535;
constexpr std::u16string_view kAfterScheme = u"://";
/// The most that is shown of a scheme that is refused.
constexpr std::size_t kShownCharacters = 60;

struct Scheme {
    std::u16string_view name;
    std::u16string_view protocol;
};
constexpr Scheme kSchemes[] = {{u"ssh", u"SSH2"}, {u"telnet", u"Telnet"}, {u"sftp", u"SFTP"}};

/// Cuts the scheme off, and the "/" that may end a link. False for a scheme that is not known.
bool CutScheme(std::u16string_view& rest, QuickAddress& address) {
    const std::size_t end = rest.find(kAfterScheme);
    if (end == rest.npos) return true;
    for (const Scheme& scheme : kSchemes) {
        if (!EqualsNoCase(rest.substr(0, end), scheme.name)) continue;
        address.protocol = scheme.protocol;
        rest.remove_prefix(end + kAfterScheme.size());
        if (rest.ends_with(u'/')) rest.remove_suffix(1);
        return true;
    }
    return false;
}

/// Splits host and port; `port` is empty where there is none, and `hasPort` tells an empty one from it. False for
/// brackets that do not fit or hold no IPv6 address.
bool SplitPort(std::u16string_view text, std::u16string_view& host, std::u16string_view& port, bool& hasPort) {
    host = text;
    hasPort = false;
    std::size_t colon = text.find(u':');
    if (text.starts_with(u'[')) {
        const std::size_t end = text.find(u']');
        if (end == text.npos || !IsNumericIpv6(text.substr(0, end + 1))) return false;
        host = text.substr(1, end - 1);
        colon = end + 1;
        if (colon == text.size()) return true;
        if (text[colon] != u':') return false;
    } else if (colon == text.npos || text.find(u':', colon + 1) != text.npos) {
        return true;  // several colons without brackets are an IPv6 address, which the check of hosts sees to
    } else {
        host = text.substr(0, colon);
    }
    port = text.substr(colon + 1);
    hasPort = true;
    return true;
}

bool FailAs(LaunchFault fault, std::u16string_view what, VReportMessageParams& report) {
    return report.Fail(fault, VUnicodeString(what).GetData());
}

bool TakeUser(std::u16string_view& rest, QuickAddress& address, VReportMessageParams& report) {
    const std::size_t at = rest.rfind(u'@');
    if (at == rest.npos) return true;
    const LaunchFault fault = CheckLaunchUser(rest.substr(0, at));
    if (fault != kLaunchFine) return FailAs(fault, u"Username", report);
    address.user = rest.substr(0, at);
    rest.remove_prefix(at + 1);
    return true;
}

bool TakeHost(std::u16string_view rest, QuickAddress& address, VReportMessageParams& report) {
    std::u16string_view host;
    std::u16string_view port;
    bool hasPort = false;
    if (!SplitPort(rest, host, port, hasPort)) return FailAs(kLaunchNoHostName, u"Hostname", report);
    const LaunchFault fault = CheckLaunchHost(host);
    if (fault != kLaunchFine) return FailAs(fault, u"Hostname", report);
    int number = 0;
    if (hasPort && !ReadPageNumber(VUnicodeString(port), 1, kLastPort, number))
        return FailOutOfRange(report, u"Port"_v, 1, kLastPort);
    address.host = host;
    address.port = static_cast<std::uint16_t>(number);
    return true;
}

}  // namespace

bool ParseQuickAddress(std::u16string_view text, QuickAddress& address, VReportMessageParams& report) {
    RegisterMessageTable(GetFallbackMessageModule(), kLaunchMessages);
    const LaunchFault fault = CheckLaunchText(text);
    if (fault != kLaunchFine) return FailAs(fault, u"Address", report);
    QuickAddress found;
    std::u16string_view rest = text;
    // Behind the scheme there may be a password.
    if (!CutScheme(rest, found))
        return FailAs(kLaunchNoAddress, text.substr(0, std::min(text.find(kAfterScheme), kShownCharacters)), report);
    if (!TakeUser(rest, found, report) || !TakeHost(rest, found, report)) return false;
    address = found;
    return true;
}

bool ApplyQuickAddress(ISessionConfig& session, const QuickAddress& address) {
    const bool isTransfer = GetAppKind() == AppKind::kTessaly;
    const ProtocolSide side = isTransfer ? ProtocolSide::kTransfer : ProtocolSide::kTerminal;
    const auto selected = [&] {
        return dynamic_cast<ProtocolConfig*>(isTransfer ? session.GetTransferConnectConfig()
                                                        : session.GetConnectConfig());
    };
    std::u16string_view protocol = address.protocol;
    const ProtocolConfig* const present = selected();
    const bool hasHost = present != nullptr && present->GetTraits().target == ProtocolTarget::kHost;
    if (protocol.empty() && !hasHost) protocol = isTransfer ? u"SFTP" : u"SSH2";
    if (!protocol.empty() && !SelectProtocol(session, side, protocol)) return false;
    ProtocolConfig* const config = selected();
    if (config == nullptr) return false;
    config->SetHostName(address.host);
    if (!address.user.IsEmpty()) config->GetRemoteHost().SetUsername(address.user);
    if (address.port != 0) config->SetPort(address.port);
    return true;
}

}  // namespace connectdialog
