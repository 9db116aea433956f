#include "hosts/common/traylauncher.h"

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "foundation/messagetable.h"
#include "foundation/percenttext.h"
#include "frame/connectdialogapi.h"
#include "hosts/common/host.h"
#include "hosts/common/hostoptions.h"
#include "hosts/common/hostsession.h"
#include "hosts/common/hosttray.h"
#include "hosts/common/hostwindow.h"
#include "hosts/common/quickstart.h"
#include "hosts/common/startup.h"
#include "hosts/common/tell.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "platform/processlaunch.h"
#include "sessiondb/sessiontree.h"
#include "suite/configpanels/referenceconfigpanels.h"

namespace connectdialog::hosts {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr char kUsage[] =
    "usage: wakestone [--store URL]\n"
    "       wakestone --help | --version\n"
    "\n"
    "Shows an icon in the desktop's tray. Its menu has the folders and saved sessions, which norhalden and tessaly\n"
    "open in windows of a terminal emulator, quick connect and the connect dialog.\n"
    "\n"
    "  --store URL           the store of the sessions, as sqlite:FILE; without it the one that\n"
    "                        BRENNMARK_STORE names, or else the user's own, whose folder is asked for at the\n"
    "                        first run\n";

void ShowAbout() {
    VUnicodeString text;
    text.Format(u"%1 %2\n\n从系统托盘打开已保存的会话。", VGetAppName(), u"" HOST_VERSION);
    VMessageBox(nullptr, text, kBoxInformation);
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
    /// The tray lives on below a dialog; a second one shall not come up over the first.
    template <class Show>
    void OnlyOne(Show show) {
        if (isBusy) return;
        isBusy = true;
        show();
        isBusy = false;
    }
    void OpenStored(const VUnicodeString& path);
    void Connect();
    void QuickConnect();
    void OpenChosen(const ISessionConfig& session);
    void Start(const HostKind& program, std::vector<std::string> words);

    const HostOptions& options;
    std::string storeUrl;
    std::unique_ptr<HostTray> tray;
    bool isBusy = false;
};

int TrayLauncher::Run() {
    VUnicodeString fault;
    const auto fail = [&] {
        Tell(kWakestone, fault);
        return kFailed;
    };
    const auto window = OpenHostWindow(kWakestone, fault);
    if (!window) return fail();
    SetAppName(kWakestone.appName);
    if (!HasTray(fault)) return fail();
    if (options.store.empty() && !AskForStoreFolder(window->GetIcon())) {
        fault = u"there is no folder for the sessions"_v;
        return fail();
    }
    storeUrl = FindStoreUrl(options.store);
    HostParts parts = MakeHostParts(storeUrl);
    parts.icon = window->GetIcon();
    parts.help = ShowHelp;
    const auto store = OpenStoreInWindow(kWakestone, storeUrl, parts);
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
            return OnlyOne([&] { tray->Close(); });
        case TrayCommand::kNone:
            return;
    }
}

void TrayLauncher::OpenStored(const VUnicodeString& path) {
    const bool isTerminal = SessionHasProtocol(AppKind::kNorHalden, path);
    Start(isTerminal ? kNorHalden : kTessaly, {"/S", PercentEncode(platform::ToNarrow(path))});
}

void TrayLauncher::Connect() {
    bool isInTab = false;
    if (ShowConnectDialog(kWakestone.title, false, false, true, nullptr, isInTab) != kDialogAccepted) return;
    for (unsigned i = 0; i < GetConnectDialogSessionConfigCount(); ++i)
        OpenChosen(*VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(i)));
    CleanupConnectDialogSessionConfigs();
}

void TrayLauncher::QuickConnect() {
    const VRef<ISessionConfig> connection = AskQuickConnect(nullptr);
    if (connection) OpenChosen(*connection);
}

void TrayLauncher::OpenChosen(const ISessionConfig& session) {
    std::vector<HostSession> sessions;
    VUnicodeString fault;
    if (!AddSession(session, sessions, fault)) return (void)VMessageBox(nullptr, fault, kBoxWarning);
    const HostSession& added = sessions.front();
    if (added.isStored) return OpenStored(added.path);
    std::vector<std::string> words;
    for (const std::string& word : added.command.arguments)
        words.insert(words.end(), {"--client", PercentEncode(word)});
    Start(kNorHalden, std::move(words));
}

/// `words` are percent-encoded where they are values.
void TrayLauncher::Start(const HostKind& program, std::vector<std::string> words) {
    words.insert(words.begin(),
                 {FindSuiteProgram(program.program), "--window", "--encoded", "--store", PercentEncode(storeUrl)});
    if (platform::StartProgram(words, {})) return;
    VUnicodeString text;
    text.Format(u"无法启动 %1：%2", VUnicodeString(program.program), FindSystemMessage(platform::GetLastErrorCode()));
    VMessageBox(nullptr, text, kBoxWarning);
}

}  // namespace

int RunTrayLauncher(int argc, char** argv) {
    std::vector<const char*> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    HostOptions options;
    std::string fault;
    const bool isRead = ReadHostOptions(arguments, options, fault);
    if (isRead && options.action == HostAction::kOpenSessions) {
        std::vector<std::string> words(arguments.begin(), arguments.end());
        words.insert(words.begin(), FindSuiteProgram(kNorHalden.program));
        platform::ReplaceProcess(words);
        Tell(kWakestone, u"norhalden cannot be started: "_v + FindSystemMessage(platform::GetLastErrorCode()));
        return kFailed;
    }
    if (isRead && options.action == HostAction::kHelp) return std::fputs(kUsage, stdout) < 0 ? kFailed : 0;
    if (isRead && options.action == HostAction::kVersion) return std::printf("wakestone %s\n", HOST_VERSION) < 0;
    if (isRead && options.action == HostAction::kShowDialog) return TrayLauncher(options).Run();
    std::fputs(kUsage, stderr);
    if (isRead) fault = "norhalden and tessaly take this command line, and wakestone does not";
    Tell(kWakestone, VUnicodeString(fault.c_str()));
    return kWrongUsage;
}

}  // namespace connectdialog::hosts
