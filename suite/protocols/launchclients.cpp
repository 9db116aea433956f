#include "suite/protocols/launchclients.h"

#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "platform/codepage.h"
#include "platform/environment.h"
#include "platform/paths.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/launchproxy.h"
#include "suite/protocols/protocolconfig.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

namespace {

/// Collects one vector. Every step gives true, or reports what is wrong and gives false.
class Arguments {
  public:
    Arguments(const ProtocolConfig& config, std::vector<std::string>& words, VReportMessageParams& report)
        : config(config), settings(config.GetSettings()), words(words), report(report) {}

    bool Word(std::string_view word) {
        words.emplace_back(word);
        return true;
    }
    /// A checked text behind its option.
    bool Option(std::string_view option, std::u16string_view text) {
        return Word(option) && Word(platform::ToNarrow(text));
    }
    bool Fault(LaunchFault fault, const VUnicodeString& setting) { return report.Fail(fault, setting.GetData()); }

    bool Port(std::string_view option) { return PortText() && Word(option) && Word(port); }
    bool PortWord() { return PortText() && Word(port); }
    /// Adds nothing when there is no user.
    bool User(std::string_view option);
    bool Host();
    /// For clients that read `host:path` or a URL: a numeric address needs its brackets.
    bool HostInBrackets(const std::string& before, std::string_view percent);
    bool SshKeyAndJump();
    bool SshSwitches();
    bool RemoteCommand();
    bool UserAtHost();
    bool SerialLine();
    bool Device();
    bool ShellCommand();

  private:
    bool PortText();
    bool HostText(VUnicodeString& host);
    /// One that may be empty.
    bool UserText(VUnicodeString& user);
    bool Number(std::string_view option, const VProfile<int>& value, const NumberRange& range);
    /// A number as the letter that stands for it.
    bool Choice(std::string_view option, const VProfile<int>& value, std::string_view letters);

    const ProtocolConfig& config;
    const ProtocolSettings& settings;
    std::vector<std::string>& words;
    VReportMessageParams& report;
    std::string port;
};

bool Arguments::PortText() {
    const auto& value = settings.*config.GetTraits().port;
    if (value.Get() == 0) return FailOutOfRange(report, value.GetName(), 1, 65535);
    port = std::to_string(value.Get());
    return true;
}

bool Arguments::HostText(VUnicodeString& host) {
    config.GetRemoteHost().GetHostname(host);
    const LaunchFault fault = CheckLaunchHost(host);
    if (fault != kLaunchFine) return Fault(fault, u"Hostname"_v);
    if (host[0] == u'[') host = host.Mid(1, host.GetLength() - 2);
    return true;
}

bool Arguments::UserText(VUnicodeString& user) {
    config.GetRemoteHost().GetUsername(user);
    if (user.IsEmpty()) return true;
    const LaunchFault fault = CheckLaunchUser(user);
    return fault == kLaunchFine || Fault(fault, u"Username"_v);
}

bool Arguments::User(std::string_view option) {
    VUnicodeString user;
    return UserText(user) && (user.IsEmpty() || Option(option, user));
}

bool Arguments::Host() {
    VUnicodeString host;
    return HostText(host) && Word(platform::ToNarrow(host));
}

bool Arguments::HostInBrackets(const std::string& before, std::string_view percent) {
    VUnicodeString host;
    if (!HostText(host)) return false;
    std::string address = platform::ToNarrow(host);
    if (const std::size_t scope = address.find('%'); scope != std::string::npos) address.replace(scope, 1, percent);
    if (IsNumericIpv6(host)) address = "[" + address + "]";
    return Word(before + address);
}

bool Arguments::UserAtHost() {
    VUnicodeString user;
    if (!UserText(user)) return false;
    return HostInBrackets(user.IsEmpty() ? std::string() : platform::ToNarrow(user) + "@", "%");
}

bool Arguments::SshKeyAndJump() {
    const VUnicodeString& key = settings.sshIdentityFile.Get();
    if (!key.IsEmpty()) {
        if (const auto fault = CheckLaunchPath(key)) return Fault(fault, settings.sshIdentityFile.GetName());
        Word("-i");
        Word(platform::ToNativePath(key));
    }
    const VUnicodeString& jump = settings.sshJumpHost.Get();
    if (jump.IsEmpty()) return true;
    if (const auto fault = CheckLaunchJumpHost(jump)) return Fault(fault, settings.sshJumpHost.GetName());
    return Option("-J", jump);
}

bool Arguments::SshSwitches() {
    if (settings.sshForwardAgent.Get()) Word("-A");
    if (settings.sshForwardX11.Get()) Word("-X");
    // Without a command the client asks for a terminal by itself.
    if (!settings.sshRemoteCommand.Get().IsEmpty()) Word("-t");
    return true;
}

bool Arguments::RemoteCommand() {
    const VUnicodeString& text = settings.sshRemoteCommand.Get();
    if (text.IsEmpty()) return true;
    if (const auto fault = CheckLaunchText(text)) return Fault(fault, settings.sshRemoteCommand.GetName());
    return Word(platform::ToNarrow(text));
}

bool Arguments::Number(std::string_view option, const VProfile<int>& value, const NumberRange& range) {
    if (value.Get() >= range.least && value.Get() <= range.most)
        return Word(option) && Word(std::to_string(value.Get()));
    return FailOutOfRange(report, value.GetName(), range.least, range.most);
}

bool Arguments::Choice(std::string_view option, const VProfile<int>& value, std::string_view letters) {
    const NumberRange range{0, 0, static_cast<int>(letters.size()) - 1};
    if (!Number(option, value, range)) return false;
    words.back() = letters[static_cast<std::size_t>(value.Get())];
    return true;
}

bool Arguments::SerialLine() {
    return Number("--baud", settings.serialBaudRate, kSerialBaudRates) &&
           Number("--databits", settings.serialDataBits, kSerialDataBits) &&
           Choice("--parity", settings.serialParity, "noe") &&
           Number("--stopbits", settings.serialStopBits, kSerialStopBits) &&
           Choice("--flow", settings.serialFlowControl, "nhs");
}

bool Arguments::Device() {
    const VUnicodeString& text = settings.serialDevice.Get();
    if (const auto fault = CheckLaunchPath(text)) return Fault(fault, settings.serialDevice.GetName());
    const std::string path = platform::ToNativePath(text);
    return Word(path.find('/') == std::string::npos ? "/dev/" + path : path);
}

bool Arguments::ShellCommand() {
    const VUnicodeString& text = settings.localShellCommand.Get();
    if (text.IsEmpty()) {
        std::u16string shell;
        const bool isPath = platform::GetEnvironmentText(u"SHELL", shell) && shell.starts_with(u'/');
        return Word(isPath ? platform::ToNarrow(shell) : "/bin/sh");
    }
    VStringArray command;
    if (const auto fault = SplitLaunchCommand(text, command)) return Fault(fault, settings.localShellCommand.GetName());
    for (const VUnicodeString& word : command) Word(platform::ToNarrow(word));
    return true;
}

// One function a client: its arguments behind the program's name. A user's name and the rest of the options stand
// before the host, and "--" between them where the client knows it.

bool FillSsh(Arguments& to) {
    return to.Port("-p") && to.SshKeyAndJump() && to.User("-l") && to.SshSwitches() && to.Word("--") && to.Host() &&
           to.RemoteCommand();
}
bool FillSsh1(Arguments& to) {
    return to.Word("-1") && FillSsh(to);
}
bool FillSftp(Arguments& to) {
    return to.Port("-P") && to.SshKeyAndJump() && to.Word("--") && to.UserAtHost();
}
bool FillTelnet(Arguments& to) {
    return to.User("-l") && to.Word("--") && to.Host() && to.PortWord();
}
bool FillTelnetSsl(Arguments& to) {
    return to.Word("-z") && to.Word("ssl") && FillTelnet(to);
}
bool FillRLogin(Arguments& to) {
    return to.User("-l") && to.Port("-p") && to.Word("--") && to.Host();
}
bool FillRaw(Arguments& to) {
    return to.Word("--") && to.Host() && to.PortWord();
}
bool FillShell(Arguments& to) {
    return to.ShellCommand();
}

bool FillSerial(Arguments& to) {
    return to.SerialLine() && to.Word("--") && to.Device();
}
bool FillFtp(Arguments& to) {
    return to.Port("-p") && to.User("-u") && to.HostInBrackets("ftp://", "%25");
}
bool FillFtpSslImplicit(Arguments& to) {
    return to.Port("-p") && to.User("-u") && to.HostInBrackets("ftps://", "%25");
}
bool FillFtpSslExplicit(Arguments& to) {
    return to.Word("-e") && to.Word("set ftp:ssl-force yes; set ftp:ssl-protect-data yes") && FillFtp(to);
}

struct Client {
    LaunchClient id;
    ProxyForm proxy;
    const char* program;  ///< null: the arguments begin with it
    const char* package;
    bool (*fill)(Arguments& to);
    const char16_t* note;
};

constexpr Client kClients[] = {
    {LaunchClient::kSsh, ProxyForm::kSsh, "ssh", "openssh-client", FillSsh, u""},
    {LaunchClient::kSsh1, ProxyForm::kNone, "ssh1", "openssh-client-ssh1", FillSsh1, u""},
    {LaunchClient::kTelnet, ProxyForm::kNone, "telnet", "inetutils-telnet", FillTelnet, u""},
    {LaunchClient::kTelnetSsl, ProxyForm::kNone, "telnet-ssl", "telnet-ssl", FillTelnetSsl, u""},
    // Under its own name: "rlogin" may be another program, which knows no port.
    {LaunchClient::kRLogin, ProxyForm::kNone, "rsh-redone-rlogin", "rsh-redone-client", FillRLogin, u""},
    {LaunchClient::kSerial, ProxyForm::kNone, "picocom", "picocom", FillSerial, u""},
    {LaunchClient::kShell, ProxyForm::kNone, nullptr, "", FillShell, u""},
    {LaunchClient::kRaw, ProxyForm::kNetcat, "nc", "netcat-openbsd", FillRaw, u""},
    {LaunchClient::kSftp, ProxyForm::kSsh, "sftp", "openssh-client", FillSftp, u""},
    {LaunchClient::kScp, ProxyForm::kSsh, "sftp", "openssh-client", FillSftp,
     u"SCP copies single files and has no prompt of its own: this opens SFTP on the same server."},
    {LaunchClient::kFtp, ProxyForm::kNone, "lftp", "lftp", FillFtp, u""},
    {LaunchClient::kFtpSslImplicit, ProxyForm::kNone, "lftp", "lftp", FillFtpSslImplicit, u""},
    {LaunchClient::kFtpSslExplicit, ProxyForm::kNone, "lftp", "lftp", FillFtpSslExplicit, u""},
};

const Client* FindClient(LaunchClient id) {
    for (const Client& client : kClients)
        if (client.id == id) return &client;
    return nullptr;
}

}  // namespace

bool FillLaunchCommand(const ProtocolConfig& config, LaunchCommand& command, VReportMessageParams& report) {
    const Client* client = FindClient(config.GetTraits().client);
    if (client == nullptr) return report.Fail(kLaunchNoClient, VUnicodeString(config.GetTraits().name).GetData());
    if (client->program != nullptr) command.arguments.emplace_back(client->program);
    command.package = client->package;
    command.note = client->note;
    Arguments arguments(config, command.arguments, report);
    return AddLaunchProxy(config, client->proxy, command, report) && client->fill(arguments);
}

}  // namespace connectdialog
