#include "resources/connectmenus.h"

#include "resources/connectcommands.h"

namespace connectdialog {

using namespace ConnectCommands;

namespace {

/// The menus name a command for the search that the dialog does not know: its key and the toolbar lead to the search.
constexpr int kMenuFind = 57636;

struct TextRow {
    int command;
    const char16_t* text;
};

constexpr TextRow kMenuLabels[] = {
    {kConnectInTerminal, u"连接终端(&L)\tAlt+T"},
    {kConnectInTransfer, u"连接文件传输(&O)\tAlt+X"},
    {kConnectInBoth, u"连接两者(&B)"},
    {kCut, u"剪切(&T)\tCtrl+X"},
    {kCopy, u"复制(&C)\tCtrl+C"},
    {kPaste, u"粘贴(&P)\tCtrl+V"},
    {kMenuFind, u"查找(&F)...\tCtrl+F"},
    {kFindNext, u"查找下一个(&X)\tF3"},
    {kDelete, u"删除(&D)\tDel"},
    {kRename, u"重命名(&M)\tAlt+M"},
    {kShortcut, u"创建桌面快捷方式(&E)\tAlt+E"},
    {kOpenInTab, u"在标签页中打开(&B)\tAlt+B"},
    {kMenuQuickConnect, u"快速连接(&Q)\tAlt+Q"},
    {kNewSession, u"新建会话(&N)\tAlt+N"},
    {kNewFolder, u"新建文件夹(&O)\tAlt+F"},
    {kProperties, u"属性(&R)\tAlt+Enter"},
    {kArrangeAlphabetically, u"字母(&A)"},
    {kArrangeLogically, u"逻辑(&L)"},
    {kArrangeManually, u"手动(&M)\tAlt+A"},
    {kShowDescriptions, u"显示描述(&W)"},
    {kShowTerminalSessions, u"显示终端会话(&S)"},
    {kShowTransferSessions, u"显示传输会话(&S)"},
};

constexpr TextRow kCommandTexts[] = {
    {kConnect, u"连接"},
    {kQuickConnect, u"快速连接"},
    {kBarProperties, u"属性"},
    {kBarDelete, u"删除"},
    {kBarNewFolder, u"新建文件夹"},
    {kBarNewSession, u"新建会话"},
    {kBarShortcut, u"创建桌面快捷方式"},
    {kHelp, u"帮助"},
    {kBarCut, u"剪切"},
    {kBarCopy, u"复制"},
    {kBarPaste, u"粘贴"},
    {kFind, u"查找"},
    {kNewSession, u"创建一个新会话。\n新建会话"},
    {kProperties, u"编辑选定会话的属性。\n属性"},
    {kCut, u"剪切选定的会话或文件夹\n剪切"},
    {kCopy, u"复制选定的会话或文件夹。\n复制"},
    {kPaste, u"粘贴会话或文件夹\n粘贴"},
    {kDelete, u"删除选定的会话或文件夹。\n删除"},
    {kNewFolder, u"创建一个新文件夹。\n新建文件夹"},
    {kShortcut, u"为选中会话创建桌面快捷方式。\n创建桌面快捷方式"},
    {3004, u"按字母排序文件夹和会话"},
    {kShowDescriptions, u"显示会话项目的工具提示\n显示描述"},
    {kConnectInTerminal, u"在 NorHalden 中打开会话\n连接终端"},
    {kConnectInTransfer, u"在 Tessaly 中打开会话\n连接文件传输器"},
    {kConnectInBoth, u"在 NorHalden和Tessaly 中打开会话\n连接两者"},
    {kArrangeManually, u"用户自定义顺序排序文件夹和会话"},
};

constexpr int kSession[] = {kConnectInTerminal,
                            kConnectInTransfer,
                            kConnectInBoth,
                            kMenuSeparator,
                            kCut,
                            kCopy,
                            kPaste,
                            kMenuSeparator,
                            kMenuFind,
                            kFindNext,
                            kMenuSeparator,
                            kDelete,
                            kRename,
                            kShortcut,
                            kMenuSeparator,
                            kMenuArrangements,
                            kShowDescriptions,
                            kShowTerminalSessions,
                            kShowTransferSessions,
                            kMenuSeparator,
                            kProperties};

constexpr int kFolder[] = {kOpenInTab,
                           kMenuQuickConnect,
                           kMenuSeparator,
                           kNewSession,
                           kNewFolder,
                           kMenuSeparator,
                           kCut,
                           kCopy,
                           kPaste,
                           kMenuSeparator,
                           kMenuFind,
                           kFindNext,
                           kMenuSeparator,
                           kDelete,
                           kRename,
                           kShortcut,
                           kMenuSeparator,
                           kMenuArrangements,
                           kShowDescriptions,
                           kShowTerminalSessions,
                           kShowTransferSessions,
                           kMenuSeparator,
                           kProperties};

constexpr int kMultiple[] = {kOpenInTab,     kMenuSeparator,    kNewSession,       kNewFolder,     kMenuSeparator,
                             kMenuFind,      kFindNext,         kMenuSeparator,    kDelete,        kShortcut,
                             kMenuSeparator, kMenuArrangements, kShowDescriptions, kMenuSeparator, kProperties};

constexpr int kArrangements[] = {kArrangeAlphabetically, kArrangeLogically, kArrangeManually};

constexpr int kToolbar[] = {kConnect,       kQuickConnect, kMenuSeparator, kBarNewSession, kMenuSeparator, kBarCut,
                            kBarCopy,       kBarPaste,     kMenuSeparator, kBarDelete,     kBarProperties, kFind,
                            kMenuSeparator, kBarNewFolder, kMenuSeparator, kBarShortcut,   kMenuSeparator, kHelp};

const char16_t* FindText(std::span<const TextRow> rows, int command) {
    for (const TextRow& row : rows)
        if (row.command == command) return row.text;
    return u"";
}

}  // namespace

const ConnectPopup kPopupSession{kSession, u"布局列表(&A)"};
const ConnectPopup kPopupFolder{kFolder, u"布局列表(&A)"};
const ConnectPopup kPopupMultiple{kMultiple, u"布局列表"};
const std::span<const int> kPopupArrangements = kArrangements;
const std::span<const int> kConnectToolbarCommands = kToolbar;

const char16_t* GetMenuLabel(int command) {
    return FindText(kMenuLabels, command);
}
const char16_t* GetCommandText(int command) {
    return FindText(kCommandTexts, command);
}

}  // namespace connectdialog
