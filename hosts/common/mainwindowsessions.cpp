// What the main window does with sessions: choosing, making, opening and changing them.
#include <algorithm>
#include <utility>

#include "config/appkind.h"
#include "config/isessionconfig.h"
#include "connectdialog/newsession.h"
#include "frame/connectdialogapi.h"
#include "hosts/common/mainwindow.h"
#include "hosts/common/quickstart.h"
#include "hosts/common/terminalemulator.h"
#include "imports/configpanels.h"
#include "imports/connectconfig.h"
#include "imports/globalconfig.h"
#include "imports/hostcallbacks.h"
#include "profile/unitofwork.h"
#include "quickconnect/hostnameprompt.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/storedspelling.h"

namespace connectdialog::hosts {

void MainWindow::ShowConnect() {
    LetUserChoose(false);
}

void MainWindow::Find() {
    LetUserChoose(true);
}

void MainWindow::LetUserChoose(bool isToFind) {
    while (true) {
        TerminalEmulator terminal;
        VUnicodeString fault;
        const bool hasTabs = FindHostTerminal(run, terminal, fault) && terminal.HasTabs();
        bool isInTab = false;
        // A check box that would do nothing is hidden.
        const std::int64_t result =
            isToFind ? ShowConnectDialogFind(run.kind.title, !hasTabs, window.get(), isInTab)
                     : ShowConnectDialog(run.kind.title, false, !hasTabs, true, window.get(), isInTab);
        if (result != kDialogAccepted) return;
        std::vector<HostSession> chosen;
        if (TakeChosenSessions(chosen, fault) && Open(chosen, isInTab && hasTabs, fault)) return;
        ShowFault(fault);
        isToFind = false;
    }
}

void MainWindow::AskQuickConnect() {
    while (true) {
        bool isInTab = false;
        const VRef<ISessionConfig> config = hosts::AskQuickConnect(window.get(), isInTab);
        std::vector<HostSession> sessions;
        VUnicodeString fault;
        if (!config || (AddSession(*config, sessions, fault) && Open(sessions, isInTab, fault))) return;
        ShowFault(fault);
        // Once more here would save it twice.
        if (config->IsStored()) return ShowConnect();
    }
}

bool MainWindow::Open(const std::vector<HostSession>& sessions, bool isInTab, VUnicodeString& fault,
                      std::optional<std::size_t> row) {
    TerminalEmulator terminal;
    if (!HaveClients(sessions, fault) || !FindHostTerminal(run, terminal, fault)) return false;
    if (row)
        opened.OpenAgain(terminal, isInTab, *row, sessions.front());
    else
        opened.Open(terminal, isInTab, sessions);
    ShowRows();
    return true;
}

bool MainWindow::AskMissingHost(ISessionConfig& session) {
    const bool isTransfer = GetAppKind() == AppKind::kTessaly;
    ConnectConfig* const config = isTransfer ? session.GetTransferConnectConfig() : session.GetConnectConfig();
    bool wasAsked = false;
    if (config != nullptr && !FillInHostname(*config, session.GetName(), window.get(), wasAsked)) return false;
    if (!wasAsked || SaveSession(session)) return true;
    ShowFault(u"无法保存会话。"_v);
    return false;
}

bool MainWindow::OpenInSister(const ISessionConfig& session, const VUnicodeString& path) {
    const bool isTransfer = GetAppKind() == AppKind::kTessaly;
    const bool isForThis = isTransfer ? session.IsTransferConnectable() : session.IsConnectable();
    const bool isForSister = isTransfer ? session.IsConnectable() && IsNorHaldenOrHaldenInstalled()
                                        : session.IsTransferConnectable() && IsTessalyInstalled();
    if (isForThis || !isForSister) return false;
    const auto launch = isTransfer ? LaunchTerminalApp : LaunchFileTransferApp;
    launch(window.get(), MakeLaunchCommand(path).GetData());
    return true;
}

void MainWindow::OpenAt(const VUnicodeString& typedPath, bool isInTab, std::optional<std::size_t> row) {
    const std::u16string_view typed = typedPath;
    const std::size_t first = std::min(typed.find_first_not_of(u'\\'), typed.size());
    const VUnicodeString path = SpelledAsStored(VUnicodeString(typed.substr(first)));
    const VRef<ISessionConfig> session = OpenSession(path);
    const bool canKeepHost = session && path != kDefaultSession;
    if (canKeepHost && (!AskMissingHost(*session) || OpenInSister(*session, path))) return;
    std::vector<HostSession> sessions;
    VUnicodeString fault;
    if (!AddSessionAt(path, sessions, fault) || !Open(sessions, isInTab, fault, row)) ShowFault(fault);
}

void MainWindow::OpenRowAgain(std::size_t row) {
    const OpenedSession former = opened.GetRows()[row];
    const bool isInTab = FetchGlobalConfig()->openInTab.Get();
    if (former.client.empty()) return OpenAt(former.path, isInTab, row);
    VUnicodeString fault;
    const HostSession session = MakeClientSession(former.path, former.protocol, former.host, former.client);
    if (!Open({session}, isInTab, fault, row)) ShowFault(fault);
}

void MainWindow::OpenAgain() {
    for (const std::size_t row : window->GetSelectedRows())
        if (opened.GetRows()[row].IsOver()) OpenRowAgain(row);
}

void MainWindow::CreateSession() {
    const VUnicodeString root;
    const VRef<ISessionConfig> config = PrepareNewSession(root);
    if (!config) return ShowFault(u"无法读取默认会话。"_v);
    if (!EditNewSession(*config, window.get())) return;
    if (!StoreUnderFreeName(root, *config)) return ShowFault(u"无法保存会话。"_v);
    // There it can be connected, or put where it belongs.
    FetchGlobalConfig()->lastSessionPath.Set(config->GetName());
    ShowConnect();
}

void MainWindow::ShowOptions() {
    const VRef<ISessionConfig> config = OpenSession(kDefaultSession);
    if (!config) return ShowFault(u"无法读取默认会话。"_v);
    if (!RunSessionOptions(*config, kPageModeOne, false, false, window.get())) return;
    const auto save = [&] {
        // Where somebody removed the template meanwhile, what was changed alone would be no session.
        const bool isThere = SessionKeyExists(kDefaultSession);
        if (isThere && IsFolderPath(kDefaultSession)) return false;
        const VUnicodeString path = BuildSessionKeyPath(kDefaultSession);
        return WriteToKey(path.GetData(), [&](VProfileKey& key) { config->Save(key, !isThere); });
    };
    if (!AsOneUnit(save)) ShowFault(u"无法保存会话。"_v);
}

void MainWindow::ShowProperties() {
    const std::size_t row = window->GetSelectedRows().front();
    const VUnicodeString path = opened.GetRows()[row].path;
    const VRef<ISessionConfig> config = OpenSession(path);
    if (!config) return ShowFault(u"会话已不存在：" + path);
    VUnicodeString failure = u"无法保存会话。"_v;
    const EditOutcome outcome = EditStoredSession(*config, window.get(), failure);
    if (outcome == EditOutcome::kRefused) return ShowFault(failure);
    if (outcome == EditOutcome::kGivenUp) return;
    const VUnicodeString name = config->GetName();
    const VUnicodeString former = GetEntryLeaf(path);
    const auto isFree = [&] { return ValidateSessionName(path, former, name, false, window.get()); };
    if (name == former || !isFree()) return;
    if (!RenameInPlace(path, name)) {
        // The name may have been taken since, which is told like at first.
        if (isFree()) ShowFault(u"无法重命名会话。"_v);
        return;
    }
    opened.SetPath(path, JoinEntryPath(GetEntryParent(path), name));
    ShowRows();
}

}  // namespace connectdialog::hosts
