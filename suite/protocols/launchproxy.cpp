#include "suite/protocols/launchproxy.h"

#include <string>
#include <vector>

#include "config/firewalltypes.h"
#include "config/ifirewallui.h"
#include "config/sessiondbhooks.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "resources/storenames.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/launchcommand.h"
#include "suite/protocols/protocolconfig.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

namespace {

/// A proxy as netcat is told of it.
struct LaunchProxy {
    std::string version;  ///< "4", "5" or "connect"; empty: none, the way is direct
    std::string address;  ///< host:port, an IPv6 address in brackets; nothing in it has a meaning for a shell
};

struct ProxyVersion {
    std::u16string_view type;
    const char* version;
};
/// What netcat can do without a password.
constexpr ProxyVersion kVersions[] = {
    {u"None", ""},
    {u"SOCKSv4", "4"},
    {u"SOCKSv5", "5"},
    {u"HTTP", "connect"},
};

const char* FindVersion(std::u16string_view type) {
    for (const ProxyVersion& row : kVersions)
        if (row.type == type) return row.version;
    return nullptr;
}

bool ReadAddress(const IFirewallUI& firewall, std::string& address, VReportMessageParams& report) {
    VUnicodeString host;
    firewall.GetAddress(host);
    LaunchFault fault = CheckLaunchHost(host);
    const bool isNumeric = IsNumericIpv6(host);
    // The address travels through a command line in which "%" stands before a token.
    if (fault == kLaunchFine && host.View().find(u'%') != std::u16string_view::npos) fault = kLaunchNoHostName;
    if (fault != kLaunchFine) return report.Fail(fault, u"Firewall Address");
    if (firewall.GetPort() == 0) return FailOutOfRange(report, u"Firewall Port"_v, 1, 65535);
    address = platform::ToNarrow(host);
    if (isNumeric && address.front() != '[') address = '[' + address + ']';
    address += ':' + std::to_string(firewall.GetPort());
    return true;
}

bool ReadLaunchProxy(const ProtocolConfig& config, LaunchProxy& proxy, VReportMessageParams& report) {
    proxy = LaunchProxy();
    if (config.GetTraits().target != ProtocolTarget::kHost) return true;
    VUnicodeString name;
    config.GetRemoteHost().GetFirewallName(name);
    if (name == kNoFirewall) return true;
    // Asked by its name: the session's own object may belong to a name that was changed since.
    const auto firewall = VRef<IFirewallUI>::Adopt(GetSessionDbHooks()->LoadFirewall(name));
    if (!firewall) return report.Fail(kLaunchNoFirewall, name.GetData());
    VUnicodeString type;
    firewall->GetType(type);
    const char* const version = FindVersion(type);
    if (version == nullptr) {
        report.Fail(FindFirewallType(type).needsCredentials ? kLaunchFirewallPassword : kLaunchFirewallType,
                    name.GetData());
        report.AddInsert(type.GetData());
        return false;
    }
    if (*version == '\0') return true;
    proxy.version = version;
    return ReadAddress(*firewall, proxy.address, report);
}

}  // namespace

bool AddLaunchProxy(const ProtocolConfig& config, ProxyForm form, LaunchCommand& command,
                    VReportMessageParams& report) {
    std::vector<std::string>& words = command.arguments;
    LaunchProxy proxy;
    if (!ReadLaunchProxy(config, proxy, report)) return false;
    if (proxy.version.empty()) return true;
    switch (form) {
        case ProxyForm::kNone:
            return report.Fail(kLaunchFirewall, VUnicodeString(config.GetTraits().name).GetData());
        case ProxyForm::kNetcat:
            words.insert(words.end(), {"-X", proxy.version, "-x", proxy.address});
            return true;
        case ProxyForm::kSsh:
            break;
    }
    if (!config.GetSettings().sshJumpHost.Get().IsEmpty()) {
        report.Fail(kLaunchFirewallAndJump, u"Firewall Name");
        report.AddInsert(config.GetSettings().sshJumpHost.GetName().GetData());
        return false;
    }
    if (command.note.empty())
        command.note = u"The way leads through a proxy: netcat (the package netcat-openbsd) finds it.";
    // A shell runs it: the quotes are for the brackets of a numeric address.
    words.insert(words.end(), {"-o", "ProxyCommand=nc -X " + proxy.version + " -x '" + proxy.address + "' %h %p"});
    return true;
}

}  // namespace connectdialog
