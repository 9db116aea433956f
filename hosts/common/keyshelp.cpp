#include "hosts/common/keyshelp.h"

#include <string>
#include <vector>

#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"

namespace connectdialog::hosts {

namespace {

constexpr char16_t kConnectKeys[] =
    u"选择会话后按“连接”打开。\n\n"
    u"Alt+N 新建会话    Alt+F 新建文件夹    Alt+R 属性\n"
    u"F2 重命名    Del 删除    Ctrl+X/C/V 剪切、复制、粘贴\n"
    u"Ctrl+F 查找    F3 查找下一个    Alt+E 桌面快捷方式\n"
    u"Shift+F10 菜单    Alt+A 切换排列方式";

constexpr std::size_t kShortcutsInALine = 3;

/// Without its mnemonic, and without the dots behind one that is no letter of the label.
std::u16string PlainLabel(std::u16string_view label) {
    std::u16string plain(label.substr(0, label.find(u"(&")));
    std::erase(plain, u'&');
    return plain;
}

void CollectShortcuts(const std::vector<VPopupMenu::Entry>& entries, std::vector<std::u16string>& shortcuts) {
    for (const VPopupMenu::Entry& entry : entries) {
        CollectShortcuts(entry.children, shortcuts);
        const std::u16string_view text = entry.text.View();
        const std::size_t tab = text.find(u'\t');
        if (tab == text.npos) continue;
        shortcuts.push_back(std::u16string(text.substr(tab + 1)) + u" " + PlainLabel(text.substr(0, tab)));
    }
}

}  // namespace

void ShowKeys(VWindow* parent, const VUnicodeString& text) {
    VUnicodeString program = VGetAppName();
    program.MakeLower();
    VMessageBox(parent, text + u"\n\n详细说明：man " + program, kBoxInformation);
}

void ShowConnectKeys(VWindow* parent, unsigned, unsigned long) {
    ShowKeys(parent, kConnectKeys);
}

VUnicodeString DescribeShortcuts(const VPopupMenu& menu) {
    std::vector<std::u16string> shortcuts;
    CollectShortcuts(menu.GetEntries(), shortcuts);
    VUnicodeString text;
    for (std::size_t i = 0; i < shortcuts.size(); ++i) {
        if (i != 0) text += i % kShortcutsInALine == 0 ? u"\n"_v : u"    "_v;
        text += VUnicodeString(shortcuts[i]);
    }
    return text;
}

}  // namespace connectdialog::hosts
