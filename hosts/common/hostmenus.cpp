#include "hosts/common/hostmenus.h"

#include <algorithm>

#include "foundation/casefold.h"
#include "foundation/messagetable.h"
#include "foundation/textchecks.h"
#include "foundation/vpath.h"
#include "hosts/common/builtinmenus.h"
#include "hosts/common/hostcommands.h"
#include "imports/dialogkit/iframewindow.h"
#include "menutoolbar/menubuild.h"
#include "menutoolbar/standardcommands.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::hosts {

namespace {

constexpr std::u16string_view kMenuBarName = u"main";
constexpr std::u16string_view kListMenuName = u"list";
/// Of a warning: a box grows with its longest line.
constexpr std::size_t kLongestTold = 120;

/// Keys that a description has no name for.
constexpr Accelerator kHostKeys[] = {
    {Accelerator::kNone, kKeyDelete, HostCommands::kRemove},
    {Accelerator::kAlt, kKeyReturn, HostCommands::kProperties},
    {Accelerator::kNone, kKeyF1, HostCommands::kHelp},
};

bool IsToolbar(const VMenuToolbar& block) {
    return block.GetKind() == MenuBlockKind::kToolbar;
}

/// The keys of a block that nobody sees would act from nowhere.
bool IsShown(const VMenuToolbar& block, const VUnicodeString& name) {
    return IsToolbar(block) || name == kMenuBarName || name == kListMenuName;
}

VUnicodeString DescribeStrayLine(std::uint32_t line) {
    VUnicodeString text;
    text.Format(u"第 %1!u! 行：此行不属于任何菜单或工具栏。", line);
    return text;
}

/// The lines of the reports, as many as are told.
VUnicodeString DescribeWarnings(VArray<VReportMessageParams>& warnings) {
    VUnicodeString text;
    const std::size_t told = std::min<std::size_t>(warnings.GetCount(), HostMenus::kMostTold);
    for (std::size_t i = 0; i < told; ++i) {
        text += u"\n" + VUnicodeString(Shorten(warnings[i].GetTextOneLine(), kLongestTold));
    }
    if (told == warnings.GetCount()) return text;
    VUnicodeString more;
    more.Format(u"\n…… 共 %1!u! 处", static_cast<std::uint32_t>(warnings.GetCount()));
    return text + more;
}

VUnicodeString DescribeFailure(VMenuToolbarTextRep& rep) {
    if (rep.GetError().GetCode() == 0) return DescribeStrayLine(rep.GetStrayLine());
    return DescribeReport(rep.GetError());
}

/// Empty when all is well.
VUnicodeString Describe(VMenuToolbarTextRep& rep, MenuParseResult result) {
    VUnicodeString text;
    const VUnicodeString file(platform::ToNativePath(rep.GetFileName()).c_str());  // as the user writes it
    if (result == MenuParseResult::kWarnings)
        text.Format(u"菜单描述文件“%1”有错误，这些行没有生效：\n%2", file, DescribeWarnings(rep.GetWarnings()));
    if (result == MenuParseResult::kFailed)
        text.Format(u"菜单描述文件“%1”无法使用，因此显示内置的菜单。\n\n%2", file, DescribeFailure(rep));
    return text;
}

bool IsTaken(std::u16string_view mnemonic, const std::vector<Accelerator>& keys) {
    return std::ranges::any_of(keys, [&](const Accelerator& key) {
        const char16_t letter = key.key;
        const bool isCharacter = key.key <= u'Z';  // else a key whose number is that of another character
        return isCharacter && key.modifiers == Accelerator::kAlt && EqualsNoCase(mnemonic, {&letter, 1});
    });
}

/// Without the marks before mnemonics that are one of the keys.
VUnicodeString WithFreeMnemonics(std::u16string_view label, const std::vector<Accelerator>& keys) {
    std::u16string freed;
    for (std::size_t i = 0; i < label.size(); ++i) {
        const std::u16string_view behind = label.substr(i + 1, 1);
        if (label[i] == u'&' && behind == u"&")
            freed += label[i++];  // the two are a character of the label
        else if (label[i] == u'&' && IsTaken(behind, keys))
            continue;
        freed += label[i];
    }
    return VUnicodeString(freed);
}

/// Of an accelerator and a mnemonic of the bar that are one key, a toolkit would do neither: the accelerator has it.
VPopupMenu WithFreeMnemonics(const VPopupMenu& bar, const std::vector<Accelerator>& keys) {
    VPopupMenu freed;
    for (VPopupMenu::Entry entry : bar.GetEntries()) {
        entry.text = WithFreeMnemonics(entry.text, keys);
        freed.Add(entry);
    }
    return freed;
}

}  // namespace

VUnicodeString GetUserMenusFile() {
    return VGetConfigurationPath(u"menus.txt");
}

VUnicodeString HostMenus::Load(const VUnicodeString& userFile) {
    VCustomMenuToolbar& commands = VCustomMenuToolbar::Get();
    commands.RemoveCommands();
    *this = HostMenus();
    VMenuToolbarTextRep& users = commands.GetRep();
    users.SetCommandTable(&GetStandardMenuCommands());
    users.SetFileName(userFile);
    VSetDotPathBase(users.GetFolder());
    MenuParseResult result = userFile.IsEmpty() ? MenuParseResult::kClean : users.Parse();
    const std::uint32_t error = users.GetError().GetCode();
    const bool isAbsent = error == platform::kFileNotFound || error == platform::kPathNotFound;
    if (isAbsent) result = MenuParseResult::kClean;
    VUnicodeString notice = Describe(users, result);
    const bool isUsed = result != MenuParseResult::kFailed && !isAbsent && !userFile.IsEmpty();

    VMenuToolbarTextRep builtIn;
    builtIn.SetCommandTable(&GetStandardMenuCommands());
    builtIn.ParseText(GetBuiltInMenus());
    if (isUsed) AddBlocks(users, nullptr);
    AddBlocks(builtIn, isUsed ? &users : nullptr);
    keys = MakeAccelerators(commands);
    AddHostKeys();
    menuBar = WithFreeMnemonics(menuBar, keys);
    users.Reset();
    return notice;
}

/// Those that are shown and whose names `over` does not have. All are registered before any is built: a text of a later
/// one may serve an earlier one.
void HostMenus::AddBlocks(const VMenuToolbarRep& rep, const VMenuToolbarRep* over) {
    VCustomMenuToolbar& commands = VCustomMenuToolbar::Get();
    std::vector<VMenuToolbar*> blocks;
    std::size_t room = std::size_t{kMostBars} - bars.size();
    VUnicodeString name;
    for (const MenuEntryPtr<VMenuToolbar>& block : rep.GetMenus()) {
        block->GetText(name);
        const VMenuToolbar* const users = over != nullptr ? over->FindMenu(name) : nullptr;
        const bool isOver = users != nullptr && IsToolbar(*users) == IsToolbar(*block);
        if (isOver || !IsShown(*block, name) || (IsToolbar(*block) && room == 0)) continue;
        if (IsToolbar(*block)) --room;
        blocks.push_back(block.get());
    }
    for (VMenuToolbar* block : blocks) commands.RegisterCommands(*block);
    for (const VMenuToolbar* block : blocks) {
        block->GetText(name);
        if (IsToolbar(*block)) {
            bars.push_back(MakeToolbar(*block, commands));
        } else if (name == kMenuBarName) {
            menuBar = MakeMenuBar(*block, commands);
        } else if (name == kListMenuName) {
            listMenu = MakePopupMenu(*block, commands);
        }
    }
}

/// A description may have given the key to another command.
void HostMenus::AddHostKeys() {
    for (const Accelerator& key : kHostKeys) {
        const auto isSame = [&](const Accelerator& other) { return IsSameKey(other, key); };
        if (std::ranges::none_of(keys, isSame)) keys.push_back(key);
    }
}

void HostMenus::Show(IFrameWindow& window, const IsCommandEnabled& isEnabled) const {
    VPopupMenu menu = menuBar;
    menu.EnableEach(isEnabled);
    window.SetMenuBar(menu);
    for (std::size_t bar = 0; bar < bars.size(); ++bar) {
        VToolbarState shown;
        if (isWanted) shown = bars[bar];
        shown.EnableEach(isEnabled);
        window.SetToolbar(static_cast<int>(bar), shown);
    }
    window.SetAccelerators(keys);
}

void HostMenus::Check(int command, bool isChecked) {
    menuBar.Check(command, isChecked);
    listMenu.Check(command, isChecked);
}

VPopupMenu HostMenus::MakeListMenu(const IsCommandEnabled& isEnabled) const {
    VPopupMenu menu = listMenu;
    menu.EnableEach(isEnabled);
    return menu;
}

bool HostMenus::FindFunction(int command, VMenuToolbarItem& item) {
    return VCustomMenuToolbar::Get().FindCommand(static_cast<std::uint32_t>(command), item);
}

}  // namespace connectdialog::hosts
