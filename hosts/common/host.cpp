#include "hosts/common/host.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "connectdialog/multiconnectwarningdialog.h"
#include "foundation/messagetable.h"
#include "foundation/vreportmessageparams.h"
#include "frame/connectdialogapi.h"
#include "hosts/common/hostoptions.h"
#include "hosts/common/hostrun.h"
#include "hosts/common/hostsession.h"
#include "hosts/common/hostusage.h"
#include "hosts/common/hostwindow.h"
#include "hosts/common/mainwindow.h"
#include "hosts/common/quickstart.h"
#include "hosts/common/sessionreport.h"
#include "hosts/common/startup.h"
#include "hosts/common/tell.h"
#include "hosts/common/terminalemulator.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/lasterror.h"
#include "platform/processlaunch.h"
#include "profile/iprofilestore.h"
#include "stores/userstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

/// One run with what the command line asks for.
class Host {
  public:
    Host(const HostKind& kind, const HostOptions& options) : kind(kind), options(options), run{kind, {}} {
        SetAppName(kind.appName);
        FindStore();
    }

    int ShowDialog();
    int QuickConnect();
    int OpenSessions();
    int SetTerminal();

  private:
    void FindStore();
    /// False when `notice` says why; it may also say something when it was opened.
    bool OpenStore(VUnicodeString& notice);
    bool FindStoreInWindow();
    bool CanHaveSessions(VUnicodeString& fault) const;
    bool FindSessions(VUnicodeString& fault);
    bool WantsQuickConnect() const;
    void LetUserChoose();
    bool ShowMainWindow(const VIcon* icon);
    void ShowFirstDialog(MainWindow& window);
    bool ShowChoice(bool hasTabs, bool& isInTab);
    bool TakeChosen(VUnicodeString& fault);
    int OpenInWindowsOfTheirOwn();
    int BecomeOther();
    int ShowFault(const VUnicodeString& fault, std::unique_ptr<HostWindow> window, int exitCode = kFailed);
    bool ConfirmMany();

    const HostKind& kind;
    const HostOptions& options;
    HostRun run;
    HostParts parts;
    std::unique_ptr<VProfileStoreFactory> store;
    std::vector<HostSession> sessions;
    std::optional<QuickAddress> address;
    bool isQuick = false;             ///< quick connect is shown, and not the connect dialog
    VRef<ISessionConfig> connection;  ///< what was accepted there
};

void Host::FindStore() {
    run.storeUrl = FindStoreUrl(options.store);
    run.isOwnStore = run.storeUrl == FindStoreUrl({});
    parts = MakeHostParts(run.storeUrl, parts.icon);
}

bool Host::OpenStore(VUnicodeString& notice) {
    store = OpenReferenceStore(kind.appName, VUnicodeString(run.storeUrl.c_str()), notice, parts);
    return store != nullptr;
}

bool Host::FindSessions(VUnicodeString& fault) {
    for (const std::string& path : options.paths)
        if (!AddSessionAt(VUnicodeString(path.c_str()), sessions, fault)) return false;
    for (const std::string& folder : options.folders) {
        const bool isRoot = folder.find_first_not_of('\\') == std::string::npos;
        if (!AddSessionsIn(isRoot ? VUnicodeString() : VUnicodeString(folder.c_str()), sessions, fault)) return false;
    }
    if (!options.client.empty()) sessions.push_back(MakeClientSession({}, {}, {}, options.client));
    return true;
}

/// A store that was never asked for is not made here: the first dialog asks where it shall live.
bool Host::CanHaveSessions(VUnicodeString& fault) const {
    const bool namesNone = options.paths.empty() && options.folders.empty();
    if (namesNone || !options.store.empty() || stores::IsDefaultStoreKnown()) return true;
    fault = u"there is no store of sessions yet; \"" + VUnicodeString(kind.program) + u"\" makes one";
    return false;
}

int Host::SetTerminal() {
    VUnicodeString notice;
    if (!run.isOwnStore) return Fail(kind, u"the terminal is remembered in the user's own store only"_v);
    if (!OpenStore(notice)) return Fail(kind, notice);
    if (!notice.IsEmpty()) Tell(kind, notice);
    const VRef<ReferenceGlobalConfig> global = FetchReferenceGlobalConfig();
    const VUnicodeString command(options.terminal.value_or("").c_str());
    TerminalEmulator terminal;
    if (!command.IsEmpty() && !TerminalEmulator::Find(command, terminal, notice)) return Fail(kind, notice);
    global->terminalCommand.Set(command);
    return global->Save() ? 0 : Fail(kind, u"the settings cannot be saved"_v);
}

int Host::OpenSessions() {
    SessionReport report(options.report);
    VUnicodeString notice;
    const bool isFound = CanHaveSessions(notice) && OpenStore(notice) && FindSessions(notice);
    if (isFound && !notice.IsEmpty()) Tell(kind, notice);
    if (options.isInWindow) {
        const bool canOpen = isFound && HaveClients(sessions, notice);
        return canOpen ? OpenInWindowsOfTheirOwn() : ShowFault(notice, nullptr);
    }
    if (!isFound) {
        report.Fail();
        return Fail(kind, notice);
    }
    store.reset();
    return RunHere(kind, sessions, report);
}

int Host::OpenInWindowsOfTheirOwn() {
    TerminalEmulator terminal;
    VUnicodeString fault;
    std::unique_ptr<HostWindow> window;
    if (sessions.size() > std::size_t{kMultiConnectLimit}) {
        window = OpenHostWindow(kind, fault);
        if (window && !ConfirmMany()) return 0;
    }
    const bool inTab = FetchGlobalConfig()->openInTab.Get();
    if (FindHostTerminal(run, terminal, fault) && OpenInWindows(terminal, inTab, run.storeUrl, sessions, fault))
        return 0;
    return ShowFault(fault, std::move(window));
}

/// Whoever wants windows may see no terminal.
int Host::ShowFault(const VUnicodeString& fault, std::unique_ptr<HostWindow> window, int exitCode) {
    VUnicodeString ignored;
    if (!window) window = OpenHostWindow(kind, ignored);
    if (window) VMessageBox(nullptr, fault, kBoxWarning);
    return Fail(kind, fault, exitCode);
}

bool Host::ConfirmMany() {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    if (global->suppressMultiConnectWarning.Get()) return true;
    bool isSuppressed = false;
    if (MultiConnectWarningDialog(isSuppressed, nullptr).DoModal() != kDialogAccepted) return false;
    global->suppressMultiConnectWarning.Set(isSuppressed);
    if (isSuppressed) global->Save();
    return true;
}

int Host::ShowDialog() {
    {
        VUnicodeString fault;
        const auto window = OpenHostWindow(kind, fault);
        if (!window)
            return Fail(kind, fault + u"; \"connectctl\" lists the sessions without one, and \"" +
                                  VUnicodeString(kind.program) + u" /S PATH\" opens one in this terminal");
        parts.icon = window->GetIcon();
        if (!FindStoreInWindow()) return kFailed;
        store = OpenStoreInWindow(kind, run.storeUrl, parts);
        if (!store) return kFailed;
        // Who brings an address wants quick connect and no more.
        const bool wantsMain = options.isMain || (!address && !platform::HasTerminal());
        if (!wantsMain || !ShowMainWindow(window->GetIcon())) LetUserChoose();
        store.reset();
    }
    SessionReport nobody{{}};
    return sessions.empty() ? 0 : RunHere(kind, sessions, nobody);
}

/// False where there is none.
bool Host::ShowMainWindow(const VIcon* icon) {
    MainWindow window(run);
    if (!window.Create(icon)) return false;
    window.Run([&] { ShowFirstDialog(window); });
    return true;
}

int Host::QuickConnect() {
    VUnicodeString fault;
    QuickAddress found;
    if (ReadQuickAddress(*options.address, options.isLink, found, fault)) {
        address = found;
        return HasProtocolOf(found) ? ShowDialog() : BecomeOther();
    }
    if (!options.isLink) return Fail(kind, fault, kWrongUsage);
    return ShowFault(u"the link cannot be opened: "_v + fault, nullptr, kWrongUsage);
}

/// Hands the address on to the program that has its protocol; comes back when that cannot be started.
int Host::BecomeOther() {
    const HostKind& other = &kind == &kTessaly ? kNorHalden : kTessaly;
    std::vector<std::string> words = {FindSuiteProgram(other.program)};
    if (!options.store.empty()) words.insert(words.end(), {"--store", options.store});
    if (options.isMain) words.emplace_back("--main");
    words.insert(words.end(), {options.isLink ? "--link" : "--quick", *options.address});
    platform::ReplaceProcess(words);
    return ShowFault(
        VUnicodeString(other.program) + u" cannot be started: " + FindSystemMessage(platform::GetLastErrorCode()),
        nullptr);
}

bool Host::FindStoreInWindow() {
    if (!options.store.empty()) return true;
    const bool isFound = AskForStoreFolder(parts.icon);
    if (!isFound) Tell(kind, u"there is no folder for the sessions");
    FindStore();
    return isFound;
}

/// Shows a dialog until what was chosen is open, or is to be opened here: then it is in `sessions`.
void Host::LetUserChoose() {
    RemindOfUpdates(nullptr);
    isQuick = WantsQuickConnect();
    while (true) {
        TerminalEmulator terminal;
        VUnicodeString ignored;
        const bool hasTabs = FindHostTerminal(run, terminal, ignored) && terminal.HasTabs();
        bool isInTab = false;
        if (!ShowChoice(hasTabs, isInTab)) return;
        VUnicodeString fault;
        bool isDone = TakeChosen(fault);
        if (isDone && sessions.size() == 1 && platform::HasTerminal()) return;
        isDone = isDone && FindHostTerminal(run, terminal, fault) &&
                 OpenInWindows(terminal, isInTab && hasTabs, run.storeUrl, sessions, fault);
        sessions.clear();
        if (isDone) return;
        VMessageBox(nullptr, fault, kBoxWarning);
    }
}

/// With the address of the command line filled in, where there is one.
bool Host::WantsQuickConnect() const {
    return address ? FillQuickConnect(*address) : GetStartupDialog() == StartupDialog::kQuickConnect;
}

/// Over the main window, once it shows.
void Host::ShowFirstDialog(MainWindow& window) {
    RemindOfUpdates(&window.GetWindow());
    if (WantsQuickConnect())
        window.AskQuickConnect();
    else if (GetStartupDialog() == StartupDialog::kConnect)
        window.ShowConnect();
}

bool Host::ShowChoice(bool hasTabs, bool& isInTab) {
    // A check box that would do nothing is hidden.
    if (!isQuick) return ShowConnectDialog(kind.title, false, !hasTabs, true, nullptr, isInTab) == kDialogAccepted;
    connection = AskQuickConnect(nullptr, isInTab);
    return connection.Get() != nullptr;
}

bool Host::TakeChosen(VUnicodeString& fault) {
    if (!isQuick) return TakeChosenSessions(sessions, fault);
    // One that is saved already is found in the connect dialog, should this fail: once more here would save it twice.
    isQuick = !connection->IsStored();
    return AddSession(*connection, sessions, fault) && HaveClients(sessions, fault);
}

int Run(const HostKind& kind, const HostOptions& options) {
    Host host(kind, options);
    switch (options.action) {
        case HostAction::kShowDialog:
            return host.ShowDialog();
        case HostAction::kQuickConnect:
            return host.QuickConnect();
        case HostAction::kSetTerminal:
            return host.SetTerminal();
        case HostAction::kOpenSessions:
            return host.OpenSessions();
        case HostAction::kHelp:
        case HostAction::kVersion:
            break;  // answered before
    }
    return 0;
}

}  // namespace

int RunHost(const HostKind& kind, int argc, char** argv) {
    HostOptions options;
    int exitCode = 0;
    if (!TakeCommandLine(kind, std::span(argv + (argc > 0 ? 1 : 0), argv + argc), options, exitCode)) return exitCode;
    exitCode = Run(kind, options);
    if (exitCode != 0 && options.waitsAtEnd && !platform::WasAskedToEnd()) {
        std::fputs("\nPress Return to end.\n", stderr);
        for (int character = 0; character != '\n' && character != EOF;) character = std::getchar();
    }
    return exitCode;
}

}  // namespace connectdialog::hosts
