#include "hosts/common/mainmenus.h"

#include <span>

#include "hosts/common/hostcommands.h"
#include "imports/dialogkit/iframewindow.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "resources/accelerators.h"

namespace connectdialog::hosts {

namespace {

/// A row without a command is a separator.
struct EntryRow {
    int command;
    const char16_t* text;
};

constexpr EntryRow kFileMenu[] = {
    {HostCommands::kConnect, u"连接(&C)...\tCtrl+O"},
    {HostCommands::kQuickConnect, u"快速连接(&Q)...\tAlt+Q"},
    {HostCommands::kNewSession, u"新建会话(&N)...\tCtrl+N"},
    {0, u""},
    {HostCommands::kExit, u"退出(&X)\tCtrl+Q"},
};
constexpr EntryRow kEditMenu[] = {
    {HostCommands::kFind, u"查找会话(&F)...\tCtrl+F"},     {0, u""},
    {HostCommands::kRemoveEnded, u"移除已结束的会话(&E)"}, {0, u""},
    {HostCommands::kOptions, u"默认会话选项(&O)..."},
};
constexpr EntryRow kListMenu[] = {
    {HostCommands::kOpenAgain, u"重新打开(&A)\tEnter"},
    {HostCommands::kRemove, u"从列表中移除(&R)\tDel"},
    {0, u""},
    {HostCommands::kProperties, u"属性(&P)...\tAlt+Enter"},
};
constexpr EntryRow kHelpMenu[] = {{HostCommands::kHelp, u"帮助(&H)\tF1"}};

struct MenuRow {
    const char16_t* text;
    std::span<const EntryRow> entries;
};
constexpr MenuRow kMenuBar[] = {
    {u"文件(&F)", kFileMenu}, {u"编辑(&E)", kEditMenu}, {u"会话(&S)", kListMenu}, {u"帮助(&H)", kHelpMenu}};

constexpr EntryRow kToolbar[] = {
    {HostCommands::kConnect, u"连接"},        {HostCommands::kQuickConnect, u"快速连接"},
    {HostCommands::kNewSession, u"新建会话"}, {0, u""},
    {HostCommands::kFind, u"查找会话"},       {0, u""},
    {HostCommands::kProperties, u"属性"},     {HostCommands::kRemove, u"从列表中移除"},
};

constexpr Accelerator kAccelerators[] = {
    {Accelerator::kControl, 'O', HostCommands::kConnect},    {Accelerator::kAlt, 'Q', HostCommands::kQuickConnect},
    {Accelerator::kControl, 'N', HostCommands::kNewSession}, {Accelerator::kControl, 'F', HostCommands::kFind},
    {Accelerator::kNone, kKeyDelete, HostCommands::kRemove}, {Accelerator::kAlt, kKeyReturn, HostCommands::kProperties},
    {Accelerator::kNone, kKeyF1, HostCommands::kHelp},       {Accelerator::kControl, 'Q', HostCommands::kExit},
};

VPopupMenu MakeMenu(std::span<const EntryRow> rows, const IsCommandEnabled& isEnabled) {
    VPopupMenu menu;
    for (const EntryRow& row : rows) {
        if (row.command == 0) {
            menu.AddSeparator();
            continue;
        }
        menu.Add(row.command, row.text);
        menu.Enable(row.command, isEnabled(row.command));
    }
    return menu;
}

}  // namespace

void ShowMainMenus(IFrameWindow& window, const IsCommandEnabled& isEnabled) {
    VPopupMenu bar;
    for (const MenuRow& row : kMenuBar) bar.AddSubMenu(row.text, MakeMenu(row.entries, isEnabled));
    window.SetMenuBar(bar);
    VToolbarState toolbar;
    for (const EntryRow& row : kToolbar) {
        if (row.command == 0) {
            toolbar.AddSeparator();
            continue;
        }
        toolbar.Add(row.command, row.text);
        toolbar.Enable(row.command, isEnabled(row.command));
    }
    window.SetToolbar(0, toolbar);
    window.SetAccelerators(kAccelerators);
}

VPopupMenu MakeListMenu(const IsCommandEnabled& isEnabled) {
    return MakeMenu(kListMenu, isEnabled);
}

}  // namespace connectdialog::hosts
