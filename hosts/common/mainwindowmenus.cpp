// What the menus and the button bar of the main window do beyond its own commands.
#include "foundation/textchecks.h"
#include "hosts/common/hostcommands.h"
#include "hosts/common/mainwindow.h"
#include "hosts/common/userprogram.h"
#include "imports/dialogkit/vmessagebox.h"
#include "keymap/keynames.h"
#include "profile/unitofwork.h"
#include "suite/buttonbar/buttonbardialog.h"

namespace connectdialog::hosts {

namespace {

/// What is shown of a text that may be long.
constexpr std::size_t kShownText = 60;

VUnicodeString DescribeUnsent(const VUnicodeString& text) {
    VUnicodeString fault;
    fault.Format(u"无法发送“%1”：会话在各自的终端窗口中运行，本程序不能向其中输入文字。",
                 VUnicodeString(Shorten(text, kShownText)));
    return fault;
}

}  // namespace

bool MainWindow::DoesFunction(int command) const {
    VMenuToolbarItem item;
    return buttons.Find(command) != nullptr || (HostMenus::FindFunction(command, item) && item.GetTakesArgument());
}

void MainWindow::DoFunction(int command) {
    if (const UserButton* button = buttons.Find(command)) return PressButton(UserButton(*button));
    VMenuToolbarItem item;
    if (!HostMenus::FindFunction(command, item)) return;
    VUnicodeString argument;
    VUnicodeString fault;
    item.GetArgument(argument);
    switch (item.GetType()) {
        case kMenuTypeOpenSession:
        case kMenuTypeOpenSessionTab:
            return OpenAt(argument, item.GetType() == kMenuTypeOpenSessionTab);
        case kMenuTypeSend:
            return ShowFault(DescribeUnsent(argument));
        case kMenuTypeRun:
            if (!StartScript(argument, fault)) ShowFault(fault);
            return;
        default:
            return;
    }
}

void MainWindow::PressButton(const UserButton& button) {
    VUnicodeString fault;
    switch (button.function) {
        case UserButton::kUnknownFunction:
            fault = u"无法识别此按钮的功能："_v + button.label;
            break;
        case kKeyFunctionSend:
            fault = DescribeUnsent(button.argument1);
            break;
        case kKeyFunctionRun:
        case kKeyFunctionLaunch:
            // The bar is in the store, which may be somebody else's.
            if (!run.isOwnStore)
                fault = u"此会话存储不是您自己的，因此不运行其中的程序："_v + button.argument1;
            else
                StartUserProgram(button.argument1, button.argument2, fault);
            break;
        default:
            return PressFunction(static_cast<std::uint32_t>(button.function));
    }
    if (!fault.IsEmpty()) ShowFault(fault);
}

void MainWindow::PressFunction(std::uint32_t function) {
    const int command = static_cast<int>(CommandOfKeyFunction(function));
    if (IsOwnCommand(command)) return OnFrameCommand(command);
    VUnicodeString fault;
    fault.Format(u"功能 %1 只能在会话自己的终端窗口中使用。", GetKeyFunctionName(function));
    ShowFault(fault);
}

void MainWindow::ShowButtons(bool again) {
    const std::vector<std::size_t> selected = window->GetSelectedRows();
    const OpenedSession* const row = selected.size() == 1 ? &opened.GetRows()[selected.front()] : nullptr;
    const bool isStored = row != nullptr && row->client.empty();
    const VUnicodeString path = isStored ? row->path : VUnicodeString();
    if (!again && path == buttonsPath) return;
    buttonsPath = path;
    if (buttons.Load(ChooseButtonBar(path), again)) ShowMenus();
}

void MainWindow::EditButtons() {
    UserButtonBar bar;
    if (!bar.Load(buttons.GetName())) return ShowFault(u"无法读取按钮栏。"_v);
    if (ButtonBarDialog(bar, window.get()).DoModal() != kDialogAccepted || !bar.IsChanged()) return;
    SaveButtons(bar);
}

void MainWindow::SaveButtons(UserButtonBar& edited) {
    bool isOutdated = false;
    const auto save = [&] {
        isOutdated = edited.IsOutdated();
        return !isOutdated && edited.Save();
    };
    bool isSaved = AsOneUnit(save);
    if (isOutdated) {  // asked outside the unit: nobody waits for the user
        const VUnicodeString question = u"在您编辑期间，此按钮栏已被更改。要用您编辑的按钮替换它吗？"_v;
        if (VMessageBox(window.get(), question, kBoxYesNo | kBoxWarning) != kAnswerYes) return;
        isSaved = edited.Save();
    }
    if (!isSaved) ShowFault(u"无法保存按钮栏。"_v);
}

void MainWindow::ToggleToolbar() {
    menus.SetWanted(!menus.IsWanted());
}

void MainWindow::ToggleButtonBar() {
    buttons.SetWanted(!buttons.IsWanted());
}

void MainWindow::ShowMenus() {
    menus.Check(HostCommands::kToggleToolbar, menus.IsWanted());
    menus.Check(HostCommands::kToggleButtonBar, buttons.IsWanted());
    menus.Show(*window, [this](int command) { return IsEnabled(command); });
    buttons.Show(*window, [this](std::int32_t function) {
        const int command = static_cast<int>(CommandOfKeyFunction(static_cast<std::uint32_t>(function)));
        return !IsOwnCommand(command) || IsEnabled(command);  // what cannot be done at all is told when it is pressed
    });
}

}  // namespace connectdialog::hosts
