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
/// What parts an address from its scope in a link (RFC 6874).
constexpr char16_t kEncodedPercent[] = u"%25";

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

/// Names the scheme alone: a password may stand behind it, and before a "://" that is the end of none.
bool FailAsUnknown(std::u16string_view text, VReportMessageParams& report) {
    const std::u16string_view scheme = text.substr(0, text.find(kAfterScheme));
    return FailAs(kLaunchNoAddress, CheckLaunchHost(scheme) == kLaunchFine ? scheme : u"Address", report);
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
    VUnicodeString decoded(host);
    if (!address.protocol.IsEmpty()) decoded.Replace(kEncodedPercent, u"%");
    const LaunchFault fault = CheckLaunchHost(decoded);
    if (fault != kLaunchFine) return FailAs(fault, u"Hostname", report);
    int number = 0;
    if (hasPort && !ReadPageNumber(VUnicodeString(port), 1, kLastPort, number))
        return FailOutOfRange(report, u"Port"_v, 1, kLastPort);
    address.host = decoded;
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
    if (!CutScheme(rest, found)) return FailAsUnknown(text, report);
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
    config->Revert();
    config->EditSettings().sshJumpHost.Revert();  // SSH may be chosen later
    config->SetHostName(address.host);
    if (!address.user.IsEmpty()) config->GetRemoteHost().SetUsername(address.user);
    config->SetPort(address.port != 0 ? address.port : config->GetTraits().defaultPort);
    return true;
}

}  // namespace connectdialog
