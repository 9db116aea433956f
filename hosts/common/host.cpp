#include "hosts/common/host.h"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "connectdialog/multiconnectwarningdialog.h"
#include "foundation/vreportmessageparams.h"
#include "frame/connectdialogapi.h"
#include "hosts/common/hostoptions.h"
#include "hosts/common/hostrun.h"
#include "hosts/common/hostsession.h"
#include "hosts/common/hostwindow.h"
#include "hosts/common/mainwindow.h"
#include "hosts/common/sessionreport.h"
#include "hosts/common/tell.h"
#include "hosts/common/terminalemulator.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/codepage.h"
#include "platform/processlaunch.h"
#include "profile/iprofilestore.h"
#include "stores/openstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/configpanels/referenceglobalconfig.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr char kUsage[] =
    "usage: HOST [--store URL] [--main]\n"
    "       HOST [--store URL] [--window] /S \"PATH\" ... /SESSION_FOLDER \"PATH\" ...\n"
    "       HOST --terminal COMMAND\n"
    "       HOST --help | --version\n"
    "\n"
    "PURPOSE\n"
    "Without a session it shows the connect dialog and opens what is chosen there; without a terminal,\n"
    "its main window with that dialog over it.\n"
    "\n"
    "  /S PATH               open the session, in this terminal; several one after the other. The names of\n"
    "                        a path are separated by \"\\\"\n"
    "  /SESSION_FOLDER PATH  open all sessions in the folder; \"\\\" is the root\n"
    "  --window              open each session in a window of a terminal emulator instead\n"
    "  --main                show the main window, also from a terminal\n"
    "  --wait                when a client failed, wait for the Return key before ending\n"
    "  --encoded             what follows options from here on is percent-encoded\n"
    "  --terminal COMMAND    remember the command for such windows, as \"gnome-terminal --tab --\"; the empty\n"
    "                        one stands for the system's: x-terminal-emulator, or another that is installed\n"
    "  --store URL           the store of the sessions, as sqlite:FILE; without it the one that\n"
    "                        BRENNMARK_STORE names, or else the user's own\n";

std::string UsageOf(const HostKind& kind) {
    std::string usage = kUsage;
    for (const auto& [word, text] :
         {std::pair<std::string_view, const char*>{"HOST", kind.program}, {"PURPOSE", kind.purpose}})
        for (std::size_t at = usage.find(word); at != std::string::npos; at = usage.find(word, at))
            usage.replace(at, word.size(), text);
    return usage;
}

constexpr char16_t kHelpText[] =
    u"选择会话后按“连接”打开。\n\n"
    u"Alt+N 新建会话    Alt+F 新建文件夹    Alt+R 属性\n"
    u"F2 重命名    Del 删除    Ctrl+X/C/V 剪切、复制、粘贴\n"
    u"Ctrl+F 查找    F3 查找下一个    Alt+E 桌面快捷方式\n"
    u"Shift+F10 菜单    Alt+A 切换排列方式\n\n"
    u"详细说明：man %1";

int Fail(const HostKind& kind, const VUnicodeString& text, int exitCode = kFailed) {
    Tell(kind, text);
    return exitCode;
}

std::string AbsoluteUrl(const VUnicodeString& url) {
    return platform::ToNarrow(stores::GetAbsoluteStoreUrl(url));
}

HostRun MakeRun(const HostKind& kind, const std::string& store) {
    const std::string own = AbsoluteUrl(stores::GetDefaultStoreUrl());
    const std::string url = store.empty() ? own : AbsoluteUrl(VUnicodeString(store.c_str()));
    return {kind, url, url == own};
}

void ShowHelp(VWindow* window, unsigned, unsigned long) {
    VUnicodeString text;
    VUnicodeString program = VGetAppName();
    program.MakeLower();
    text.Format(kHelpText, program);
    VMessageBox(window, text, kBoxInformation);
}

/// One run with what the command line asks for.
class Host {
  public:
    Host(const HostKind& kind, const HostOptions& options)
        : kind(kind), options(options), run(MakeRun(kind, options.store)) {
        SetAppName(kind.appName);
        const VUnicodeString storeUrl(run.storeUrl.c_str());
        parts.commandLine = u"--window --store \""_v + storeUrl + u"\"";
        parts.help = ShowHelp;
        parts.needsTerminal = true;  // to open one session, as a shortcut does
        parts.shortcutOptions = GetStoreOptions(storeUrl);
    }

    int ShowDialog();
    int OpenSessions();
    int SetTerminal();

  private:
    /// False when `notice` says why; it may also say something when it was opened.
    bool OpenStore(VUnicodeString& notice);
    bool OpenStoreInWindow();
    bool FindSessions(VUnicodeString& fault);
    void LetUserChoose();
    bool ShowMainWindow(const VIcon* icon);
    int OpenInWindowsOfTheirOwn();
    int ShowFault(const VUnicodeString& fault, std::unique_ptr<HostWindow> window);
    bool ConfirmMany();

    const HostKind& kind;
    const HostOptions& options;
    const HostRun run;
    HostParts parts;
    std::unique_ptr<VProfileStoreFactory> store;
    std::vector<HostSession> sessions;
};

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
    return true;
}

int Host::SetTerminal() {
    VUnicodeString notice;
    if (!run.isOwnStore) return Fail(kind, u"the terminal is remembered in the user's own store only"_v);
    if (!OpenStore(notice)) return Fail(kind, notice);
    if (!notice.IsEmpty()) Tell(kind, notice);
    const VRef<GlobalConfig> settings = FetchGlobalConfig();
    auto* global = dynamic_cast<ReferenceGlobalConfig*>(settings.Get());
    const VUnicodeString command(options.terminal.value_or("").c_str());
    TerminalEmulator terminal;
    if (!command.IsEmpty() && !TerminalEmulator::Find(command, terminal, notice)) return Fail(kind, notice);
    global->terminalCommand.Set(command);
    return global->Save() ? 0 : Fail(kind, u"the settings cannot be saved"_v);
}

int Host::OpenSessions() {
    SessionReport report(options.report);
    VUnicodeString notice;
    const bool isFound = OpenStore(notice) && FindSessions(notice);
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
int Host::ShowFault(const VUnicodeString& fault, std::unique_ptr<HostWindow> window) {
    VUnicodeString ignored;
    if (!window) window = OpenHostWindow(kind, ignored);
    if (window) VMessageBox(nullptr, fault, kBoxWarning);
    return Fail(kind, fault);
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
        if (!OpenStoreInWindow()) return kFailed;
        const bool wantsMain = options.isMain || !platform::HasTerminal();
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
    window.Run([&] { window.ShowConnect(); });
    return true;
}

bool Host::OpenStoreInWindow() {
    while (true) {
        VUnicodeString notice;
        if (OpenStore(notice)) {
            if (!notice.IsEmpty()) VMessageBox(nullptr, notice, kBoxWarning);
            return true;
        }
        Tell(kind, notice);
        const VUnicodeString question =
            u"无法打开会话存储。\n\n" + notice + u"\n\n是否重试？（--store 可指定另一个存储）";
        if (VMessageBox(nullptr, question, kBoxYesNo | kBoxError) != kAnswerYes) return false;
    }
}

/// Shows the dialog until what was chosen is open, or is to be opened here: then it is in `sessions`.
void Host::LetUserChoose() {
    while (true) {
        TerminalEmulator terminal;
        VUnicodeString ignored;
        const bool hasTabs = FindHostTerminal(run, terminal, ignored) && terminal.HasTabs();
        bool isInTab = false;
        // A check box that would do nothing is hidden.
        if (ShowConnectDialog(kind.title, false, !hasTabs, true, nullptr, isInTab) != kDialogAccepted) return;
        VUnicodeString fault;
        bool isDone = TakeChosenSessions(sessions, fault);
        if (isDone && sessions.size() == 1 && platform::HasTerminal()) return;
        isDone = isDone && FindHostTerminal(run, terminal, fault) &&
                 OpenInWindows(terminal, isInTab && hasTabs, run.storeUrl, sessions, fault);
        sessions.clear();
        if (isDone) return;
        VMessageBox(nullptr, fault, kBoxWarning);
    }
}

int Run(const HostKind& kind, const HostOptions& options) {
    Host host(kind, options);
    switch (options.action) {
        case HostAction::kShowDialog:
            return host.ShowDialog();
        case HostAction::kSetTerminal:
            return host.SetTerminal();
        case HostAction::kOpenSessions:
            return host.OpenSessions();
        case HostAction::kHelp:
            std::fputs(UsageOf(kind).c_str(), stdout);
            return 0;
        case HostAction::kVersion:
            std::printf("%s %s\n", kind.program, HOST_VERSION);
            return 0;
    }
    return kFailed;
}

}  // namespace

int RunHost(const HostKind& kind, int argc, char** argv) {
    const std::vector<const char*> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    HostOptions options;
    std::string fault;
    if (!ReadHostOptions(arguments, options, fault)) {
        std::fputs(UsageOf(kind).c_str(), stderr);
        return Fail(kind, VUnicodeString(fault.c_str()), kWrongUsage);
    }
    const int exitCode = Run(kind, options);
    if (exitCode != 0 && options.waitsAtEnd) {
        std::fputs("\nPress Return to end.\n", stderr);
        for (int character = 0; character != '\n' && character != EOF;) character = std::getchar();
    }
    return exitCode;
}

}  // namespace connectdialog::hosts
