// The main window's menus by description, and the user's button bar.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

#include "hosts/common/builtinmenus.h"
#include "hosts/common/hostcommands.h"
#include "hosts/common/mainwindow.h"
#include "keymap/keynames.h"
#include "menutoolbar/standardcommands.h"
#include "resources/storenames.h"
#include "suite/buttonbar/buttonbardialog.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlessframe.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"
#include "support/suitetest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::hosts {
namespace {

using namespace std::chrono_literals;

class HostMenusTest : public test::SuiteTest {
  protected:
    HostMenusTest() {
        setenv("XDG_CONFIG_HOME", scratch.GetPath().c_str(), 1);
        setenv("XDG_RUNTIME_DIR", scratch.GetPath().c_str(), 1);
        std::filesystem::create_directory(scratch / "brennmark");
        kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
    }
    ~HostMenusTest() override {
        unsetenv("XDG_CONFIG_HOME");
        unsetenv("XDG_RUNTIME_DIR");
        EXPECT_EQ(kit.TakeFaults(), "");
    }

    void WriteMenus(std::string_view text) const { scratch.Write("brennmark/menus.txt", text); }
    void Play(const std::function<void(MainWindow& window, HeadlessFrame& frame)>& script) {
        MainWindow window(run);
        ASSERT_TRUE(window.Create(nullptr));
        kit.ExpectFrame([&](HeadlessFrame& frame) { script(window, frame); });
        window.Run([] {});
    }
    /// The text of the box that came since the last call; empty: none.
    VUnicodeString TakeBox() {
        const VUnicodeString text = told < kit.GetBoxes().size() ? kit.GetBoxes()[told].text : VUnicodeString();
        EXPECT_LE(kit.GetBoxes().size(), told + 1);
        told = kit.GetBoxes().size();
        return text;
    }
    static bool Has(const VUnicodeString& text, std::u16string_view part) {
        return text.View().find(part) != std::u16string_view::npos;
    }
    /// The command of the first entry with that label.
    static int Find(const std::vector<VPopupMenu::Entry>& entries, std::u16string_view label) {
        for (const VPopupMenu::Entry& entry : entries) {
            if (entry.text.View() == label) return entry.command;
            if (const int found = Find(entry.children, label)) return found;
        }
        return 0;
    }
    bool Appears(const std::string& file) const {
        for (int i = 0; i < 250 && !std::filesystem::exists(scratch / file); ++i) std::this_thread::sleep_for(20ms);
        return std::filesystem::exists(scratch / file);
    }

    test::TemporaryFolder scratch;
    HostRun run{kNorHalden, "memory:", true};
    HeadlessDialogKit kit;
    std::size_t told = 0;
};

TEST_F(HostMenusTest, TheBuiltInDescriptionHasNoMistakesAndNothingThatTheHostCannotDo) {
    VMenuToolbarTextRep rep;
    rep.SetCommandTable(&GetStandardMenuCommands());
    EXPECT_EQ(rep.ParseText(GetBuiltInMenus()), MenuParseResult::kClean);
    rep.SetFileName(VUnicodeString(HOSTS_DATA "/menus.txt"));
    EXPECT_EQ(rep.Parse(), MenuParseResult::kClean) << "as a file it is the same";
    Play([&](MainWindow&, HeadlessFrame& frame) {
        EXPECT_EQ(TakeBox(), u"");
        EXPECT_EQ(frame.GetMenuBar().GetEntries().size(), 5U);
        for (const VPopupMenu::Entry& menu : frame.GetMenuBar().GetEntries())
            for (const VPopupMenu::Entry& entry : menu.children) {
                const bool needsRows =
                    entry.command == HostCommands::kOpenAgain || entry.command == HostCommands::kRemove ||
                    entry.command == HostCommands::kRemoveEnded || entry.command == HostCommands::kProperties;
                EXPECT_EQ(entry.isEnabled, !needsRows) << entry.command;
                EXPECT_TRUE(entry.command == 0 || !entry.prompt.IsEmpty()) << entry.command;
            }
        EXPECT_EQ(frame.GetToolbar(0).GetButtons()[0].tip, u"连接");
        EXPECT_TRUE(frame.Choose(HostCommands::kToggleToolbar));
        EXPECT_TRUE(frame.GetToolbar(0).GetButtons().empty());
        EXPECT_FALSE(frame.GetMenuBar().Find(HostCommands::kToggleToolbar)->isChecked);
    });
}

TEST_F(HostMenusTest, AUsersDescriptionReshapesTheWindowAndItsMistakesAreToldOnce) {
    const std::string script = scratch.WriteProgram("script", "touch " + (scratch / "ran") + "\n");
    scratch.Write("plain", "touch x\n");
    WriteMenus(
        "ACCELERATOR\nrun, R, CTRL|SHIFT\nmine, m, ALT\nEND\nSTRINGTABLE\ns,\"Runs it\\nRun\"\nEND\nMENU "
        "main\nMENUITEM Quit, "
        "MENU_EXIT\n"
        "POPUPMENU &Mine && &Mo&re\nMENUITEM Script, RUN, ../script, s, run\nMENUITEM Plain, RUN, \"" +
        (scratch / "plain") + "\"\nMENUITEM Nobody, OPEN_SESSION, no\\such" + std::string(200'000, '\\') +
        "x, , mine\nMENUITEM Send, SEND, ls\nMENUITEM Up, SB_LINE_UP\n"
        "MENUITEM Bad, NO_SUCH\nEND\nEND\nTOOLBAR extra\nTOOLBARITEM MENU_FIND, RUN, \"" +
        script + "\", s\nEND\n");
    Play([&](MainWindow&, HeadlessFrame& frame) {
        frame.AwaitWake(0s);
        const VUnicodeString warnings = TakeBox();
        EXPECT_TRUE(Has(warnings, u"第 16 行")) << "the line of the mistake";
        EXPECT_TRUE(Has(warnings, u"NO_SUCH"));
        const std::vector<VPopupMenu::Entry>& menus = frame.GetMenuBar().GetEntries();
        ASSERT_EQ(menus.size(), 2U);
        EXPECT_EQ(menus[1].text, u"Mine && Mo&re") << "Alt+M is another entry's key";
        EXPECT_EQ(frame.GetToolbar(0).GetButtons()[0].tip, u"Run");
        EXPECT_FALSE(frame.GetToolbar(1).GetButtons().empty()) << "the built-in bar, which has another name";
        EXPECT_FALSE(frame.Choose(Find(menus, u"Up"))) << "what only a terminal does";
        EXPECT_TRUE(frame.PressKey('R', Accelerator::kControl | Accelerator::kShift));
        EXPECT_TRUE(Appears("ran"));
        EXPECT_EQ(TakeBox(), u"");
        EXPECT_TRUE(frame.Choose(Find(menus, u"Plain")));
        EXPECT_TRUE(Has(TakeBox(), u"plain")) << "no shell reads it";
        EXPECT_TRUE(frame.Choose(Find(menus, u"Nobody\tAlt+m")));
        const VUnicodeString absent = TakeBox();
        EXPECT_TRUE(Has(absent, u"no\\such"));
        EXPECT_LT(absent.GetLength(), 3000U) << "a box for a screen, however long the path";
        EXPECT_TRUE(frame.Choose(Find(menus, u"Send")));
        EXPECT_TRUE(Has(TakeBox(), u"无法发送“ls”"));
        EXPECT_TRUE(frame.Choose(HostCommands::kExit));
    });
}

TEST_F(HostMenusTest, WhatIsNotShownDoesNothingAndWhatIsShownTwiceIsMarkedTwice) {
    std::string text =
        "ACCELERATOR\na, A, CTRL\nb, B, CTRL\nEND\nSTRINGTABLE\ns, s\nEND\n"
        "MENU main\nMENUITEM one, MENU_TOGGLE_TOOLBAR\nPOPUPMENU p\nMENUITEM two, MENU_TOGGLE_TOOLBAR\nEND\nEND\n"
        "POPUPMENU list\nMENUITEM three, MENU_TOGGLE_TOOLBAR\nEND\n";
    for (int i = 1; i <= HostMenus::kMostBars + 1; ++i)
        text += "TOOLBAR " + std::to_string(i) + "\nTOOLBARITEM SEND, SEND, x, s, " +
                (i <= HostMenus::kMostBars ? "a" : "b") + "\nEND\n";
    WriteMenus(text);
    Play([&](MainWindow&, HeadlessFrame& frame) {
        EXPECT_TRUE(frame.PressKey('A', Accelerator::kControl));
        EXPECT_FALSE(TakeBox().IsEmpty());
        EXPECT_FALSE(frame.PressKey('B', Accelerator::kControl)) << "of a bar beyond the last";
        for (const bool isShown : {true, false}) {
            const std::vector<VPopupMenu::Entry>& menus = frame.GetMenuBar().GetEntries();
            EXPECT_EQ(menus[0].isChecked, isShown);
            EXPECT_EQ(menus[1].children[0].isChecked, isShown);
            kit.ExpectMenu([&](const VPopupMenu& menu) {
                EXPECT_EQ(menu.GetEntries()[0].isChecked, isShown);
                return isShown ? HostCommands::kToggleToolbar : 0;
            });
            EXPECT_TRUE(frame.AskListMenu());
        }
    });
}

TEST_F(HostMenusTest, AFileThatCannotBeUsedLeavesTheBuiltInMenus) {
    std::string many = "MENU m\n";
    for (int i = 0; i < 40; ++i) many += "MENUITEM a, NO_SUCH\n";
    for (const auto& [text, part] : {std::pair<std::string, const char16_t*>{"MENU main\n", u"第 1 行"},
                                     {"MENU main\nEND\nstray\n", u"第 3 行"},
                                     {many + "END\n", u"…… 共 40 处"}}) {
        WriteMenus(text);
        Play([&, text = text, part = part](MainWindow&, HeadlessFrame& frame) {
            const VUnicodeString box = TakeBox();
            EXPECT_TRUE(Has(box, part)) << text;
            EXPECT_FALSE(Has(box, u"第 12 行")) << "not all of many";
            EXPECT_EQ(frame.GetMenuBar().GetEntries().size(), 5U);
        });
    }
}

UserButton MakeButton(const char16_t* function, const char16_t* text, const VUnicodeString& argument1 = {},
                      const VUnicodeString& argument2 = {}) {
    UserButton button;
    button.function = GetKeyFunctionID(function);
    button.text = text;
    button.argument1 = argument1;
    button.argument2 = argument2;
    return button;
}

TEST_F(HostMenusTest, TheBarOfTheSelectedSessionIsShownAndItsButtonsRun) {
    const VUnicodeString touch(
        scratch.WriteProgram("mark", "touch \"" + scratch.GetPath().string() + "/$1\"\n").c_str());
    UserButtonBar bar;
    ASSERT_TRUE(bar.Load(VUnicodeString(kDefaultButtonBar)));
    ASSERT_TRUE(bar.Insert(0, MakeButton(u"RUN", u"Mark\r\nit", touch, u"\"a b\" ; x"_v)));
    ASSERT_TRUE(bar.Insert(1, MakeButton(u"MENU_EXIT", u"Quit")));
    ASSERT_TRUE(bar.Insert(2, MakeButton(u"VT_F6", u"F6")));
    ASSERT_TRUE(bar.Insert(3, MakeButton(u"MENU_RECONNECT", u"Again")));
    ASSERT_TRUE(bar.Save());
    constexpr int kFirst = HostCommands::kFirstButton;
    Play([&](MainWindow&, HeadlessFrame& frame) {
        EXPECT_EQ(frame.GetToolbar(HostButtons::kBar).GetButtons()[0].text, u"Mark\nit");
        EXPECT_TRUE(frame.Press(kFirst));
        EXPECT_TRUE(Appears("a b")) << "words, and no shell";
        EXPECT_TRUE(frame.Press(kFirst + 2));
        EXPECT_TRUE(Has(TakeBox(), u"VT_F6"));
        EXPECT_FALSE(frame.Press(kFirst + 3)) << "no session has ended";
        EXPECT_TRUE(frame.Choose(HostCommands::kToggleButtonBar));
        EXPECT_TRUE(frame.GetToolbar(HostButtons::kBar).GetButtons().empty());
        EXPECT_TRUE(frame.Choose(HostCommands::kToggleButtonBar));
        EXPECT_TRUE(frame.Press(kFirst + 1));
        EXPECT_TRUE(frame.IsClosed());
    });
    run.isOwnStore = false;
    std::filesystem::remove(scratch / "a b");
    Play([&](MainWindow&, HeadlessFrame& frame) {
        EXPECT_TRUE(frame.Press(kFirst));
        EXPECT_TRUE(Has(TakeBox(), u"mark")) << "somebody else's store starts nothing";
    });
    EXPECT_FALSE(std::filesystem::exists(scratch / "a b"));
}

TEST_F(HostMenusTest, ButtonsAreEditedAndSaved) {
    using namespace ButtonBarIds;
    const auto edit = [&](HeadlessDialog& dialog) {
        EXPECT_FALSE(dialog.Press(kRemove)) << "there is none yet";
        for (const char16_t* text : {u"one", u"two\nlines", u"three"}) {
            EXPECT_TRUE(dialog.Press(kAdd));
            EXPECT_TRUE(dialog.Type(kText, text));
        }
        HeadlessTree& list = *dialog.GetTree(kButtons);
        EXPECT_EQ(list.Read(), " one  (MENU_CONNECT)\n twolines  (MENU_CONNECT)\n *three  (MENU_CONNECT) <\n");
        EXPECT_FALSE(dialog.Press(kDown));
        EXPECT_TRUE(dialog.Press(kUp));
        EXPECT_TRUE(dialog.Pick(kFunction, u"SEND"));
        list.ClickAt({40, 5});
        EXPECT_TRUE(Has(TakeBox(), u"参数 1")) << "what does not work is not left";
        EXPECT_EQ(dialog.GetText(kText), u"three");
        EXPECT_TRUE(dialog.Type(kFirstArgument, u"ls, \\r"));
        for (const int field : {kText, kFirstArgument, kFirstArgument + 1}) {
            const VUnicodeString before = dialog.GetText(field);
            EXPECT_TRUE(dialog.Type(field, u"a\x07"));
            list.ClickAt({40, 5});
            EXPECT_TRUE(Has(TakeBox(), u"控制字符"));
            EXPECT_EQ(dialog.GetFocus(), field) << "the one at fault";
            EXPECT_TRUE(dialog.Type(field, before));
        }
        list.ClickAt({40, 5});
        EXPECT_EQ(dialog.GetText(kText), u"one");
        EXPECT_TRUE(dialog.Press(kRemove));
        EXPECT_TRUE(dialog.Press(kIdOk));
    };
    Play([&](MainWindow&, HeadlessFrame& frame) {
        kit.ExpectDialog(kDialog, edit);
        EXPECT_TRUE(frame.Choose(HostCommands::kEditButtons));
        const auto buttons = frame.GetToolbar(HostButtons::kBar).GetButtons();
        ASSERT_EQ(buttons.size(), 2U);
        EXPECT_EQ(buttons[0].text, u"three");
        EXPECT_EQ(buttons[1].text, u"two\nlines");
    });
    UserButtonBar bar;
    ASSERT_TRUE(bar.Load(VUnicodeString(kDefaultButtonBar)));
    ASSERT_EQ(bar.GetCount(), 2U);
    EXPECT_EQ(bar.GetButtons()[0].argument1, u"ls, \\r");
    EXPECT_EQ(bar.GetButtons()[1].text, u"two\r\nlines");
}

TEST_F(HostMenusTest, ButtonsThatAnotherProgramAddedMeanwhileAreNotOverwrittenUnasked) {
    const auto edit = [](HeadlessDialog& dialog) {
        UserButtonBar other;
        EXPECT_TRUE(other.Load(VUnicodeString(kDefaultButtonBar)));
        EXPECT_TRUE(other.Insert(other.GetCount(), MakeButton(u"MENU_FIND", u"theirs")));
        EXPECT_TRUE(other.Save());
        EXPECT_TRUE(dialog.Press(ButtonBarIds::kAdd));
        EXPECT_TRUE(dialog.Press(kIdOk));
    };
    for (const int answer : {kAnswerNo, kAnswerYes}) {
        kit.AnswerBoxes([answer](const VUnicodeString&, unsigned) { return answer; });
        Play([&](MainWindow&, HeadlessFrame& frame) {
            kit.ExpectDialog(ButtonBarIds::kDialog, edit);
            EXPECT_TRUE(frame.Choose(HostCommands::kEditButtons));
            EXPECT_TRUE(Has(TakeBox(), u"替换"));
            const auto buttons = frame.GetToolbar(HostButtons::kBar).GetButtons();
            ASSERT_EQ(buttons.size(), answer == kAnswerNo ? 1U : 2U);
            EXPECT_EQ(buttons.back().text, answer == kAnswerNo ? u"theirs" : u"新按钮");
        });
    }
}

}  // namespace
}  // namespace connectdialog::hosts
