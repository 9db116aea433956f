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
#include "profile/unitofwork.h"
#include "quickconnect/hostnameprompt.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "sessiondb/storedspelling.h"

namespace connectdialog::hosts {

namespace {

const VUnicodeString kDefaultSession = u"Default"_v;

}  // namespace

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
        const VRef<ISessionConfig> config = hosts::AskQuickConnect(window.get());
        VUnicodeString fault;
        if (!config || OpenConfig(*config, fault)) return;
        ShowFault(fault);
    }
}

bool MainWindow::OpenConfig(const ISessionConfig& config, VUnicodeString& fault) {
    std::vector<HostSession> sessions;
    return AddSession(config, sessions, fault) && HaveClients(sessions, fault) &&
           Open(sessions, FetchGlobalConfig()->openInTab.Get(), fault);
}

bool MainWindow::Open(const std::vector<HostSession>& sessions, bool isInTab, VUnicodeString& fault) {
    TerminalEmulator terminal;
    if (!FindHostTerminal(run, terminal, fault)) return false;
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

void MainWindow::OpenAt(const VUnicodeString& typedPath, bool isInTab) {
    const std::u16string_view typed = typedPath;
    const std::size_t first = std::min(typed.find_first_not_of(u'\\'), typed.size());
    const VUnicodeString path = SpelledAsStored(VUnicodeString(typed.substr(first)));
    const VRef<ISessionConfig> session = OpenSession(path);
    const bool canKeepHost = session && path != kDefaultSession;
    if (canKeepHost && !AskMissingHost(*session)) return;
    std::vector<HostSession> sessions;
    VUnicodeString fault;
    const bool isOpening =
        AddSessionAt(path, sessions, fault) && HaveClients(sessions, fault) && Open(sessions, isInTab, fault);
    if (!isOpening) ShowFault(fault);
}

void MainWindow::OpenRowAgain(std::size_t row) {
    std::vector<HostSession> sessions;
    TerminalEmulator terminal;
    VUnicodeString fault;
    const OpenedSession& former = opened.GetRows()[row];
    if (!former.client.empty())
        sessions.push_back({former.path, former.protocol, former.host, {former.client, {}, {}}, false});
    if ((sessions.empty() && !AddSessionAt(former.path, sessions, fault)) || !HaveClients(sessions, fault) ||
        !FindHostTerminal(run, terminal, fault))
        return ShowFault(fault);
    opened.OpenAgain(terminal, FetchGlobalConfig()->openInTab.Get(), row, sessions.front());
    ShowRows();
}

void MainWindow::OpenAgain() {
    for (const std::size_t row : window->GetSelectedRows())
        if (opened.GetRows()[row].IsOver()) OpenRowAgain(row);
}

void MainWindow::CreateSession() {
    const VRef<ISessionConfig> config = OpenSession(kDefaultSession);
    if (!config) return ShowFault(u"无法读取默认会话。"_v);
    config->SetPath(VUnicodeString());
    const VUnicodeString offered = MakeUniqueName(VUnicodeString(), u"New"_v);
    config->SetName(offered);
    const auto wizard = [this](ISessionConfig& session, std::int64_t& result, bool& useWizard) {
        return LaunchNewSessionWizard(session, window.get(), result, useWizard);
    };
    if (!EditNewSession(*config, wizard, window.get())) return;
    // A name that cannot stand costs the name and not the session.
    if (!ValidateSessionName(VUnicodeString(), offered, config->GetName(), true, window.get()))
        config->SetName(offered);
    VUnicodeString name;
    const bool isStored = AsOneUnit([&] {
        name = MakeUniqueName(VUnicodeString(), config->GetName());
        config->SetName(name);
        return StoreSessionEntry(VUnicodeString(), name, *config, VUnicodeString(), true);
    });
    if (!isStored) return ShowFault(u"无法保存会话。"_v);
    // There it can be connected, or put where it belongs.
    FetchGlobalConfig()->lastSessionPath.Set(name);
    ShowConnect();
}

void MainWindow::ShowOptions() {
    const VRef<ISessionConfig> config = OpenSession(kDefaultSession);
    if (!config) return ShowFault(u"无法读取默认会话。"_v);
    if (!RunSessionOptions(*config, kPageModeOne, false, false, window.get())) return;
    const VUnicodeString path = BuildSessionKeyPath(kDefaultSession);
    if (!WriteToKey(path.GetData(), [&](VProfileKey& key) { config->Save(key, false); }))
        ShowFault(u"无法保存会话。"_v);
}

void MainWindow::ShowProperties() {
    const std::size_t row = window->GetSelectedRows().front();
    const VUnicodeString path = opened.GetRows()[row].path;
    const VRef<ISessionConfig> config = OpenSession(path);
    if (!config) return ShowFault(u"会话已不存在：" + path);
    if (!RunSessionOptions(*config, kPageModeOne, false, false, window.get())) return;
    const VUnicodeString name = config->GetName();
    const VUnicodeString former = GetEntryLeaf(path);
    if (config->IsChanged() && !SaveSession(*config)) return ShowFault(u"无法保存会话。"_v);
    if (name == former || !ValidateSessionName(path, former, name, false, window.get())) return;
    if (!RenameInPlace(path, name)) return ShowFault(u"无法重命名会话。"_v);
    opened.SetPath(path, JoinEntryPath(GetEntryParent(path), name));
    ShowRows();
}

}  // namespace connectdialog::hosts
