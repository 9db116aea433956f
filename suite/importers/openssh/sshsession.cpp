#include "suite/importers/openssh/sshsession.h"

#include "foundation/casefold.h"
#include "foundation/hextext.h"
#include "platform/codepage.h"
#include "platform/paths.h"
#include "sessiondb/sessionpaths.h"
#include "suite/importers/openssh/sshconfigeval.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/protocolconfig.h"

namespace connectdialog {

namespace {

void AppendEscaped(std::u16string& text, char16_t character) {
    const bool isShort = character < 0x100;
    text += isShort ? u"%" : u"%u";
    for (int shift = isShort ? 4 : 12; shift >= 0; shift -= 4)
        text += HexDigit(unsigned{character} >> shift, HexCase::kUpper);
}

bool IsTakenName(std::u16string_view name, bool isInRoot) {
    return name == u"." || name == u".." || EqualsNoCase(name, kFolderDataKey) ||
           (isInRoot && IsTemplateEntry({}, name));
}

/// Checks the values of one host, one after the other.
class Checks {
  public:
    explicit Checks(std::string& problem) : problem(problem) {}

    /// False when the value is refused; a value that only a client will refuse is noted. An empty one is fine.
    bool Pass(const char* what, std::u16string_view value, LaunchFault (*check)(std::u16string_view)) {
        const LaunchFault fault = value.empty() ? kLaunchFine : check(value);
        const char* const refusal = RefusalOf(fault);
        if (refusal != nullptr) {
            problem = std::string(what) + refusal;
        } else if (fault != kLaunchFine && problem.empty()) {
            problem = std::string(what) + " has characters that keep the session from being opened";
        }
        return refusal == nullptr;
    }

  private:
    static const char* RefusalOf(LaunchFault fault) {
        switch (fault) {
            case kLaunchLeadingDash:
                return " begins with a minus sign";
            case kLaunchControl:
                return " has a control character";
            case kLaunchTooLong:
                return " is too long";
            default:
                return nullptr;
        }
    }

    std::string& problem;
};

bool PassesChecks(const SshHost& host, const SshSession& session, std::string& problem) {
    using platform::ToWide;
    Checks checks(problem);
    bool isFine = checks.Pass("the host's alias", ToWide(host.alias), CheckLaunchPath) &&
                  checks.Pass("the host name", session.hostName, CheckLaunchHost) &&
                  checks.Pass("the user's name", session.user, CheckLaunchUser);
    for (const std::string& path : host.identityFiles)
        isFine = isFine && checks.Pass("the identity file", ToWide(path), CheckLaunchPath);
    for (const SshHop& hop : host.jumps)
        isFine = isFine && checks.Pass("a jump host", ToWide(hop.host), CheckLaunchHost) &&
                 checks.Pass("a jump host's user", ToWide(hop.user), CheckLaunchUser);
    return isFine && checks.Pass("the list of jump hosts", session.jumpHost, CheckLaunchJumpHost);
}

}  // namespace

std::u16string MakeSshSessionName(std::u16string_view alias, bool isInRoot) {
    std::u16string name;
    const bool isTaken = IsTakenName(alias, isInRoot);
    for (std::size_t i = 0; i < alias.size(); ++i) {
        const char16_t character = alias[i];
        const bool isAtEdge = i == 0 || i + 1 == alias.size();
        if (std::u16string_view(u"\\:%").find(character) != std::u16string_view::npos ||
            (isAtEdge && IsSpace(character)) || (isTaken && i == 0))
            AppendEscaped(name, character);
        else
            name += character;
    }
    return name;
}

bool MakeSshSession(const SshHost& host, SshSession& session, std::string& problem) {
    problem.clear();
    session.hostName = platform::ToWide(host.hostName);
    session.user = platform::ToWide(host.user);
    session.jumpHost = platform::ToWide(FormatProxyJump(host.jumps));
    session.port = static_cast<std::uint16_t>(host.port);
    if (!host.identityFiles.empty()) session.identityFile = platform::FromNativePath(host.identityFiles.front());
    return PassesChecks(host, session, problem);
}

std::vector<std::u16string_view> ApplySshSession(const SshSession& session, ProtocolConfig& config) {
    std::vector<std::u16string_view> changed;
    const auto apply = [&](VProfileText& setting, const VUnicodeString& value) {
        if (setting.Get() == value) return;
        setting.Set(value);
        changed.push_back(setting.GetName());
    };
    IRemoteHostConfig& remote = config.GetRemoteHost();
    VUnicodeString present;
    remote.GetHostname(present);
    if (present != session.hostName) {
        remote.SetHostname(session.hostName.GetData());
        changed.push_back(u"Hostname");
    }
    remote.GetUsername(present);
    if (present != session.user && remote.IsSaveUsernamesAllowed(nullptr, nullptr)) {
        remote.SetUsername(session.user);
        changed.push_back(u"Username");
    }
    if (config.GetPort() != session.port) {
        config.SetPort(session.port);
        changed.push_back(config.GetSettings().sshPort.GetName());
    }
    apply(config.EditSettings().sshIdentityFile, session.identityFile);
    apply(config.EditSettings().sshJumpHost, session.jumpHost);
    return changed;
}

}  // namespace connectdialog
