#include "hosts/common/traylauncher.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "foundation/messagetable.h"
#include "frame/connectdialogapi.h"
#include "hosts/common/hostoptions.h"
#include "hosts/common/hostsession.h"
#include "hosts/common/hosttray.h"
#include "hosts/common/hostusage.h"
#include "hosts/common/hostwindow.h"
#include "hosts/common/quickstart.h"
#include "hosts/common/startup.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/processlaunch.h"
#include "platform/runninghosts.h"
#include "sessiondb/sessiontree.h"
#include "suite/configpanels/referenceconfigpanels.h"

namespace connectdialog::hosts {

namespace {

/// Of one that may run already.
constexpr std::chrono::seconds kAnswerPatience{2};

void ShowAbout() {
    VUnicodeString text;
    text.Format(u"%1 %2\n\n从系统托盘打开已保存的会话。", VGetAppName(), u"" HOST_VERSION);
    VMessageBox(nullptr, text, kBoxInformation);
}

/// The desktop session's trays are those of its screen.
VUnicodeString NameLauncherOf(const std::string& storeUrl) {
    std::string name = "Brennmark Software - tray launcher of " + storeUrl;
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        const char* const screen = std::getenv(variable);
        name += std::string(" ") + (screen != nullptr ? screen : "");
    }
    return VUnicodeString(name.c_str());
}

bool IsRunning(const VUnicodeString& launcher) {
    const auto deadline = std::chrono::steady_clock::now() + kAnswerPatience;
    const auto answers = platform::SendToHosts(platform::FindHosts(launcher).names, 0, 0, 0, deadline);
    return std::ranges::any_of(answers, [](const auto& answer) { return answer.state != platform::HostState::kGone; });
}

/// Whoever started it from the desktop sees no terminal.
int ShowFault(const VUnicodeString& fault) {
    if (!platform::HasTerminal()) VMessageBox(nullptr, fault, kBoxWarning);
    return Fail(kWakestone, fault);
}

class TrayLauncher : public ITrayEvents {
  public:
    explicit TrayLauncher(const HostOptions& options) : options(options) {}

    int Run();

    std::vector<TrayEntry> ListMenu(const TrayEntry* opened) override {
        return opened == nullptr ? ListTrayRootMenu() : ListTrayMenu(opened->range);
    }
    void OnChosen(const TrayEntry& entry) override;
    void OnIconClicked() override {
        OnlyOne([&] { Connect(); });
    }

  private:
    /// The tray lives on below a dialog; a second one shall not come up over the first, which is shown again.
    template <class Show>
    void OnlyOne(Show show) {
        if (isBusy) return tray->ShowDialog();
        isBusy = true;
        show();
        isBusy = false;
    }
    void OpenStored(const VUnicodeString& path);
    void Connect();
    void QuickConnect();
    void OpenChosen(const ISessionConfig& session);
    void Start(const HostKind& program, const std::string& path, const std::vector<std::string>& client);

    const HostOptions& options;
    std::string storeUrl;
    std::unique_ptr<HostTray> tray;
    bool isBusy = false;
};

int TrayLauncher::Run() {
    VUnicodeString fault;
    const auto window = OpenHostWindow(kWakestone, fault);
    if (!window) return Fail(kWakestone, fault);
    SetAppName(kWakestone.appName);
    if (!HasTray(fault)) return ShowFault(fault);
    if (options.store.empty() && !AskForStoreFolder(window->GetIcon()))
        return Fail(kWakestone, u"there is no folder for the sessions");
    storeUrl = FindStoreUrl(options.store);
    const VUnicodeString name = NameLauncherOf(storeUrl);
    if (IsRunning(name)) return ShowFault(u"wakestone runs already: its icon is in the tray"_v);
    const platform::HostAnnouncement announcement(name, [](const platform::HostMessage&) { return 0; });
    const auto store = OpenStoreInWindow(kWakestone, storeUrl, MakeHostParts(storeUrl, window->GetIcon()));
    if (!store) return kFailed;
    tray = OpenHostTray(kWakestone, *this);
    OnlyOne([] { RemindOfUpdates(nullptr); });
    tray->Run();
    tray.reset();
    return 0;
}

void TrayLauncher::OnChosen(const TrayEntry& entry) {
    if (entry.kind == TrayEntry::Kind::kSession) return OpenStored(entry.path);
    switch (entry.command) {
        case TrayCommand::kQuickConnect:
            return OnlyOne([&] { QuickConnect(); });
        case TrayCommand::kConnect:
            return OnlyOne([&] { Connect(); });
        case TrayCommand::kAbout:
            return OnlyOne([] { ShowAbout(); });
        case TrayCommand::kExit:
            return tray->Close();
        case TrayCommand::kNone:
            return;
    }
}

void TrayLauncher::OpenStored(const VUnicodeString& path) {
    const bool isTerminal = SessionHasProtocol(AppKind::kNorHalden, path);
    Start(isTerminal ? kNorHalden : kTessaly, platform::ToNarrow(path), {});
}

void TrayLauncher::Connect() {
    // The others decide about tabs: a check box for it would do nothing, and is hidden.
    bool isInTab = false;
    if (ShowConnectDialog(kWakestone.title, false, true, true, nullptr, isInTab) != kDialogAccepted) return;
    for (unsigned i = 0; i < GetConnectDialogSessionConfigCount(); ++i)
        OpenChosen(*VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(i)));
    CleanupConnectDialogSessionConfigs();
}

void TrayLauncher::QuickConnect() {
    bool isInTab = false;
    const VRef<ISessionConfig> connection = AskQuickConnect(nullptr, isInTab);
    if (connection) OpenChosen(*connection);
}

void TrayLauncher::OpenChosen(const ISessionConfig& session) {
    std::vector<HostSession> sessions;
    VUnicodeString fault;
    if (!AddSession(session, sessions, fault)) return (void)VMessageBox(nullptr, fault, kBoxWarning);
    const HostSession& added = sessions.front();
    if (added.isStored) return OpenStored(added.path);
    Start(kNorHalden, {}, added.command.arguments);
}

/// As MakeHostArguments.
void TrayLauncher::Start(const HostKind& program, const std::string& path, const std::vector<std::string>& client) {
    std::vector<std::string> words = MakeHostArguments(storeUrl, path, client);
    words.insert(words.begin(), "--window");
    StartSuiteProgram(nullptr, program.program, std::move(words));
}

}  // namespace

int RunTrayLauncher(int argc, char** argv) {
    const std::span<const char* const> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    HostOptions options;
    int exitCode = 0;
    if (!TakeCommandLine(kWakestone, arguments, options, exitCode)) return exitCode;
    if (options.action == HostAction::kShowDialog) return TrayLauncher(options).Run();
    if (options.action != HostAction::kOpenSessions)
        return RefuseUsage(kWakestone, u"norhalden and tessaly take this command line, and wakestone does not");
    std::vector<std::string> words(arguments.begin(), arguments.end());
    words.insert(words.begin(), FindSuiteProgram(kNorHalden.program));
    platform::ReplaceProcess(words);
    return Fail(kWakestone, u"norhalden cannot be started: "_v + FindSystemMessage(platform::GetLastErrorCode()));
}

}  // namespace connectdialog::hosts
