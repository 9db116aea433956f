#include "menutoolbar/vcustommenutoolbar.h"

#include <gtest/gtest.h>
#include <set>

#include "keymap/keynames.h"
#include "menutoolbar/standardcommands.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

class CustomMenuToolbarTest : public testing::Test {
  protected:
    /// Parses, registers the commands of all blocks and resets.
    void Register(std::string_view bytes) {
        folder.Write("m", bytes);
        VMenuToolbarTextRep& rep = menus.GetRep();
        rep.SetCommandTable(&GetStandardMenuCommands());
        rep.SetFileName(folder.Name("m"));
        ASSERT_EQ(rep.Parse(), MenuParseResult::kClean);
        for (const auto& block : rep.GetMenus()) menus.RegisterCommands(*block);
        rep.Reset();
    }

    test::TemporaryFolder folder;
    VCustomMenuToolbar menus;
    VMenuToolbarItem item;
    VUnicodeString text{u"before"};
};

TEST_F(CustomMenuToolbarTest, CommandsAndToolTipsOutliveTheDescription) {
    const std::uint32_t copy = GetStandardMenuCommands().GetCommandNumber(u"MENU_COPY");
    const std::uint32_t paste = GetStandardMenuCommands().GetCommandNumber(u"MENU_PASTE");
    EXPECT_FALSE(menus.FindToolTip(copy, text));
    EXPECT_EQ(text, u"");
    Register(
        "STRINGTABLE\ns,\"Prompt\\nTip\"\nt,Other\nEND\nMENU m\nPOPUPMENU p\nMENUITEM Copy,MENU_COPY\nEND\nSEPARATOR\n"
        "MENUITEM Paste,MENU_PASTE\nEND\nTOOLBAR b\nTOOLBARITEM MENU_COPY,MENU_COPY,,s\n"
        "TOOLBARITEM MENU_COPY,MENU_COPY,,t\nEND\n");
    EXPECT_TRUE(menus.FindToolTip(copy, text));
    EXPECT_EQ(text, u"Tip") << "the first that has one";
    EXPECT_TRUE(menus.FindToolTip(paste, text));
    EXPECT_EQ(text, u"");
    ASSERT_TRUE(menus.FindCommand(paste, item));
    item.GetText(text);
    EXPECT_EQ(text, u"Paste");
    EXPECT_FALSE(menus.FindCommand(0, item)) << "a separator is no command";
    EXPECT_FALSE(menus.FindCommand(copy + (1 << 16), item));
    item.GetText(text);
    EXPECT_EQ(text, u"Paste") << "what is not found leaves the item";
    menus.RemoveCommands();
    EXPECT_FALSE(menus.FindCommand(copy, item));
}

TEST_F(CustomMenuToolbarTest, ItemsWithAnArgumentHaveCommandsOfTheirOwn) {
    Register(
        "ACCELERATOR\na,A,CTRL\nb,B,CTRL\nEND\nMENU m\nMENUITEM x,SEND,one,,a\nMENUITEM y,SEND,two,,b\n"
        "MENUITEM z,MENU_COPY,,,a\nMENUITEM z,MENU_COPY\nEND\n");
    constexpr std::uint32_t kFirst = VCustomMenuToolbar::kFirstArgumentCommand;
    for (const auto& [command, argument] : {std::pair(kFirst, u"one"), std::pair(kFirst + 1, u"two")}) {
        ASSERT_TRUE(menus.FindCommand(command, item));
        item.GetArgument(text);
        EXPECT_EQ(text, argument);
        EXPECT_EQ(item.GetType(), kMenuTypeSend);
        EXPECT_EQ(item.GetAccelerator().command, command);
    }
    EXPECT_FALSE(menus.FindCommand(kMenuTypeSend, item));
    ASSERT_EQ(menus.GetAccelerators().GetCount(), 2U) << "a key fires one command";
    EXPECT_EQ(menus.GetAccelerators()[0], (VMenuAccelerator{10, u'A', static_cast<std::uint16_t>(kFirst)}));
    EXPECT_EQ(menus.GetAccelerators()[1].command, kFirst + 1);
}

TEST(MenuCommandIdTest, HashIsAStepOfTheMinimalStandardGenerator) {
    std::uint32_t value = 1;
    for (int i = 0; i < 10'000; ++i) value = VMapHash(MenuCommandId{value});
    EXPECT_EQ(value, 1043618065U) << "the value published with the generator";
}

TEST(StandardMenuCommandsTest, NumbersAreUniqueAndFitAnAccelerator) {
    const VMenuResourceData& commands = GetStandardMenuCommands();
    EXPECT_EQ(commands.GetCommandNumber(u"SEND"), 17U);
    EXPECT_EQ(commands.GetCommandNumber(u"OPEN_SESSION_TAB"), 20U);
    EXPECT_EQ(commands.GetCommandNumber(u"menu_copy"), 0U);
    EXPECT_EQ(commands.GetBitmapIndex(u"menu_copy"), -1);
    std::set<std::uint32_t> numbers{16, 17, 18, 19, 20, 2048};
    for (std::uint32_t function = kKeyFunctionLaunch + 2; function <= 184; ++function) {
        const VUnicodeString name = GetKeyFunctionName(function);
        const std::uint32_t number = commands.GetCommandNumber(name);
        EXPECT_EQ(number, kFirstKeyFunctionCommand + function);
        EXPECT_TRUE(numbers.insert(number).second);
        EXPECT_LT(number, VCustomMenuToolbar::kFirstArgumentCommand);
    }
}

}  // namespace
}  // namespace connectdialog
