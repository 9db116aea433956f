#include "hosts/common/mainwindow.h"

#include <algorithm>
#include <utility>

#include "foundation/textchecks.h"
#include "hosts/common/hostcommands.h"
#include "hosts/common/keyshelp.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/idialogkit.h"
#include "imports/dialogkit/vmessagebox.h"
#include "sessiondb/sessionpaths.h"
#include "suite/configpanels/referenceglobalconfig.h"

namespace connectdialog::hosts {

namespace {

constexpr std::size_t kLongestFault = 2000;

const VUnicodeString kHeadings[] = {u"名称"_v, u"协议"_v, u"主机"_v, u"状态"_v};

constexpr char16_t kHelpText[] =
    u"主窗口列出本次运行中打开的会话。每个会话在终端窗口中打开，关闭主窗口不会结束它们。\n\n";

VUnicodeString DescribeState(const OpenedSession& row) {
    VUnicodeString text;
    switch (row.state) {
        case OpenedState::kStarting:
            return u"正在启动"_v;
        case OpenedState::kOpen:
            return u"已打开"_v;
        case OpenedState::kEnded:
            if (row.exitCode == 0) return u"已结束"_v;
            text.Format(u"已结束（退出代码 %1!d!）", row.exitCode);
            return text;
        case OpenedState::kFailed:
            return u"无法启动"_v;
    }
    return text;
}

}  // namespace

constexpr MainWindow::CommandRow MainWindow::kCommands[] = {
    {HostCommands::kConnect, &MainWindow::ShowConnect},
    {HostCommands::kQuickConnect, &MainWindow::AskQuickConnect},
    {HostCommands::kNewSession, &MainWindow::CreateSession},
    {HostCommands::kFind, &MainWindow::Find},
    {HostCommands::kHelp, &MainWindow::ShowHelp},
    {HostCommands::kProperties, &MainWindow::ShowProperties},
    {HostCommands::kRemove, &MainWindow::RemoveSelected},
    {HostCommands::kOpenAgain, &MainWindow::OpenAgain},
    {HostCommands::kRemoveEnded, &MainWindow::RemoveEnded},
    {HostCommands::kOptions, &MainWindow::ShowOptions},
    {HostCommands::kExit, &MainWindow::Exit},
    {HostCommands::kToggleToolbar, &MainWindow::ToggleToolbar},
    {HostCommands::kToggleButtonBar, &MainWindow::ToggleButtonBar},
    {HostCommands::kEditButtons, &MainWindow::EditButtons},
};

MainWindow::~MainWindow() = default;

bool MainWindow::Create(const VIcon* icon) {
    window = GetDialogKit() != nullptr ? GetDialogKit()->CreateFrameWindow(*this) : nullptr;
    if (!window) return false;
    opened.Listen([this] { window->Wake(); });
    window->SetTitle(VGetAppName());
    if (icon != nullptr) window->SetIcon(*icon);
    window->SetColumns(kHeadings);
    notice = menus.Load(GetUserMenusFile());
    ShowButtons(true);
    ShowEnabled();
    ShowRows();
    if (const VRef<ReferenceGlobalConfig> settings = FetchReferenceGlobalConfig())
        window->SetPlacement(settings->mainWindowPlacement.Get());
    return true;
}

void MainWindow::Run(std::function<void()> first) {
    begin = std::move(first);
    window->Wake();
    window->Run();
}

void MainWindow::OnFrameWoken() {
    if (!notice.IsEmpty()) ShowFault(std::exchange(notice, {}));
    if (begin) std::exchange(begin, nullptr)();
    const std::vector<VUnicodeString> faults = opened.TakeNews();
    ShowRows();
    for (const VUnicodeString& fault : faults) ShowFault(fault);
}

void MainWindow::OnFrameCommand(int command) {
    const auto* const row = std::ranges::find(kCommands, command, &CommandRow::command);
    if (row == std::end(kCommands)) return DoFunction(command);
    if (!IsEnabled(command)) return;
    (this->*row->act)();
    ShowButtons(true);  // and the menus: a command may have changed either, or the session that tells which bar
}

bool MainWindow::IsOwnCommand(int command) {
    return std::ranges::find(kCommands, command, &CommandRow::command) != std::end(kCommands);
}

bool MainWindow::OnFrameClose() {
    SavePlacement();
    return true;
}

void MainWindow::Exit() {
    if (OnFrameClose()) window->Close();
}

void MainWindow::SavePlacement() {
    const VRef<ReferenceGlobalConfig> settings = FetchReferenceGlobalConfig();
    if (!settings) return;
    settings->mainWindowPlacement.Set(window->GetPlacement());
    settings->SaveOne(settings->mainWindowPlacement);
}

bool MainWindow::IsEnabled(int command) const {
    const std::vector<std::size_t> selected = window->GetSelectedRows();
    const auto isAny = [&](auto fits) {
        return std::ranges::any_of(selected, [&](std::size_t row) { return fits(opened.GetRows()[row]); });
    };
    switch (command) {
        case HostCommands::kOpenAgain:
            return isAny([](const OpenedSession& row) { return row.IsOver(); });
        case HostCommands::kRemove:
            return isAny([this](const OpenedSession& row) { return opened.CanRemove(row); });
        case HostCommands::kRemoveEnded:
            return std::ranges::any_of(opened.GetRows(), &OpenedSession::IsOver);
        case HostCommands::kProperties:
            return selected.size() == 1 && isAny([](const OpenedSession& row) { return row.client.empty(); });
        default:
            return IsOwnCommand(command) || DoesFunction(command);
    }
}

void MainWindow::ShowEnabled() {
    ShowButtons(false);
    std::vector<bool> now;
    for (const CommandRow& row : kCommands) now.push_back(IsEnabled(row.command));
    if (std::exchange(enabled, now) == now) return;
    ShowMenus();
}

void MainWindow::ShowRows() {
    std::vector<FrameRow> shown;
    for (const OpenedSession& row : opened.GetRows())
        shown.push_back({{GetEntryLeaf(row.path), row.protocol, row.host, DescribeState(row)}});
    window->SetRows(shown);
    VUnicodeString status = opened.GetError() == 0 ? u"就绪"_v : u"无法得知会话何时结束"_v;
    const auto open = std::ranges::count(opened.GetRows(), OpenedState::kOpen, &OpenedSession::state);
    if (!shown.empty())
        status.Format(u"%1!d! 个会话已打开，列表中共 %2!d! 个", static_cast<int>(open), static_cast<int>(shown.size()));
    window->SetStatus(status);
    ShowEnabled();
}

void MainWindow::OnRowActivated(std::size_t row) {
    if (opened.GetRows()[row].IsOver()) OpenRowAgain(row);
}

void MainWindow::OnListMenu(VPoint point) {
    const VPopupMenu menu = menus.MakeListMenu([this](int command) { return IsEnabled(command); });
    OnFrameCommand(GetDialogKit()->TrackPopupMenu(window.get(), menu, point));
}

void MainWindow::RemoveSelected() {
    std::vector<std::size_t> selected = window->GetSelectedRows();
    for (auto row = selected.rbegin(); row != selected.rend(); ++row)
        if (opened.CanRemove(opened.GetRows()[*row])) opened.Remove(*row);
    ShowRows();
}

void MainWindow::RemoveEnded() {
    opened.RemoveEnded();
    ShowRows();
}

void MainWindow::ShowHelp() {
    ShowKeys(window.get(), kHelpText + DescribeShortcuts(menus.GetMenuBar()));
}

void MainWindow::ShowFault(const VUnicodeString& fault) {
    // A path in a description may be of any length, and a box grows with its text.
    VMessageBox(window.get(), VUnicodeString(Shorten(fault, kLongestFault)), kBoxWarning);
}

}  // namespace connectdialog::hosts
