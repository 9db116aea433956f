// Find, find next, and shortcuts on the desktop.
#include "config/sessionconfig.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;

class Find : public ConnectDialogTest {
  protected:
    Find() {
        // The remembered query outlives a dialog and a test: each begins with everything switched on.
        AddSession(u"web\\prod\\alpha", u"SSH2", u"SFTP", u"one.example");
        AddSession(u"web\\beta", u"SSH2", u"None", u"two.example");
        AddSession(u"Webster", u"None", u"SFTP", u"three.example");
        WithKey(u"Sessions\\web\\beta", [](VProfileKey& key) {
            VStringArray lines;
            lines.Add(u"first line"_v);
            lines.Add(u"Second needle"_v);
            key.WriteMultiString(u"Description", lines);
        });
    }
    /// The user asks for a text in these places: letters of "sfdhc".
    void Ask(const char16_t* text, std::string_view places, int command = kFind) {
        kit.ExpectDialog(FindSessionIds::kDialog, [=](HeadlessDialog& find) {
            using namespace FindSessionIds;
            const std::pair<int, char> boxes[] = {
                {kSessionNames, 's'}, {kFolderNames, 'f'}, {kDescriptions, 'd'}, {kHostnames, 'h'}, {kMatchCase, 'c'}};
            for (const auto& [id, letter] : boxes) find.Tick(id, places.find(letter) != places.npos);
            find.Type(kText, text);
            EXPECT_TRUE(find.Press(kIdOk));
        });
        Command(command);
    }
};

TEST_F(Find, EachPlaceIsLookedAtWhenItIsSwitchedOn) {
    struct Row {
        const char16_t* text;
        const char* places;
        const char* found;  ///< null: nothing
    };
    const Row rows[] = {{u"Sessions", "f", "Sessions"}, {u"web", "f", "web"},          {u"web", "s", "Webster"},
                        {u"web", "sc", nullptr},        {u"Web", "sfc", "Webster"},    {u"ALPH", "sf", "alpha"},
                        {u"one.EX", "h", "alpha"},      {u"three", "h", "Webster"},    {u"needle", "d", "beta"},
                        {u"needle", "sfh", nullptr},    {u"line\r\nsec", "d", "beta"}, {u"one", "sfd", nullptr}};
    for (const Row& row : rows) {
        Open();
        Ask(row.text, row.places);
        if (row.found == nullptr) {
            VUnicodeString text;
            text.Format(u"\"%1\" 未找到。", row.text);
            ASSERT_FALSE(kit.GetBoxes().empty());
            EXPECT_EQ(kit.GetBoxes().back().text, text);
            kit.TakeFaults();
        } else {
            EXPECT_EQ(Selected(), row.found) << Escape(row.text) << " in " << row.places;
        }
        dialog.reset();
    }
}

TEST_F(Find, FindNextGoesRoundAndAFoundItemIsInSight) {
    Open();
    Ask(u"e", "sfh", kFindNext);
    std::string hits = Selected();
    for (int i = 0; i < 6; ++i) {
        EXPECT_TRUE(Window().PressKey(kKeyF3));
        hits += ' ' + Selected();
    }
    EXPECT_EQ(hits, "Sessions web alpha beta Webster Sessions web");
    EXPECT_TRUE(Window().PressKey(kKeyF3));
    VRectangle row;
    EXPECT_TRUE(Tree().GetItemRectangle(At(u"web\\prod\\alpha"), false, row));
    EXPECT_TRUE(dialog->Items().HasState(At(u"web\\prod"), kTreeExpanded));
}

TEST_F(Find, NothingFoundIsToldOnce) {
    Open();
    kit.ExpectDialog(FindSessionIds::kDialog, [](HeadlessDialog& find) { find.PressKey(kKeyEscape); });
    Command(kFind);
    EXPECT_EQ(Selected(), "Sessions");
    kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
    Ask(u"no such text", "sfdh");
    EXPECT_EQ(kit.GetBoxes().size(), 1U);
    Command(kFindNext);
    EXPECT_EQ(kit.GetBoxes().size(), 1U);
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(dialog->Items().GetCaret(), TreeItem::kNone);
    // The next dialog remembers what was asked.
    Open();
    kit.ExpectDialog(FindSessionIds::kDialog, [](HeadlessDialog& find) {
        EXPECT_EQ(find.GetText(FindSessionIds::kText), u"no such text");
        find.PressKey(kKeyEscape);
    });
    Command(kFindNext);
}

TEST_F(Find, FindNextGoesOnAfterWhatWasDeletedOrReloaded) {
    Open();
    Ask(u"e", "sf");
    Command(kFindNext);
    Command(kFindNext);
    EXPECT_EQ(Selected(), "beta");
    kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
    Command(kDelete);
    Command(kFindNext);
    EXPECT_EQ(Selected(), "Webster");
    Command(kRotateArrangement);
    Command(kFindNext);
    EXPECT_EQ(Selected(), "Sessions") << "from the top again";
}

TEST_F(Find, ASecondSearchReadsNothingAgain) {
    Open();
    Ask(u"needle", "sfdh");
    EXPECT_EQ(Selected(), "beta");
    WithKey(u"Sessions\\web\\beta", [](VProfileKey& key) { key.WriteMultiString(u"Description", VStringArray()); });
    Ask(u"needle", "sfdh");
    EXPECT_EQ(Selected(), "beta") << "what is open stays as it is";
}

class Shortcut : public ConnectDialogTest {
  protected:
    void Make(const std::function<void(HeadlessDialog&)>& answer) {
        kit.ExpectDialog(ShortcutNameIds::kDialog, answer);
        Command(kShortcut);
    }
};

TEST_F(Shortcut, SelectedSessionsAndFoldersBecomeArguments) {
    AddSessions({u"A\\B", u"A\\C", u"s t"});
    Open();
    Expand(u"");
    Expand(u"A");
    struct Row {
        std::vector<std::u16string_view> selected;
        const char16_t* shortcut;
    };
    const Row rows[] = {{{u"A\\B"}, u"/S \"A\\B\" |B"},
                        {{u""}, u"/SESSION_FOLDER \\ |NorHalden sessions"},
                        {{u"A"}, u"/SESSION_FOLDER \"A\" |A"},
                        {{u"s t", u"A"}, u"/S \"s t\" /SESSION_FOLDER \"A\" |NorHalden sessions"},
                        {{u"s t", u"A", u"A\\C"}, u"/S \"A\\C\" /S \"s t\" /SESSION_FOLDER \"A\" |NorHalden sessions"}};
    for (const Row& row : rows) {
        Click(row.selected[0]);
        for (std::size_t i = 1; i < row.selected.size(); ++i) Click(row.selected[i], Accelerator::kControl);
        Make([](HeadlessDialog& name) { EXPECT_TRUE(name.Press(kIdOk)); });
        EXPECT_EQ(dialog->shortcuts.back(), row.shortcut);
    }
    EXPECT_EQ(dialog->shortcuts.size(), std::size(rows));
    Make([](HeadlessDialog& name) { name.PressKey(kKeyEscape); });
    EXPECT_EQ(dialog->shortcuts.size(), std::size(rows)) << "given up";
    dialog->shortcutFails = true;
    kit.ExpectDialog(ShortcutNameIds::kDialog, [](HeadlessDialog& name) { EXPECT_TRUE(name.Press(kIdOk)); });
    kit.ExpectBox(u"ERROR: creation of shortcut failed"_v, kAnswerOk);
    Command(kBarShortcut);
    Click(u"s t");
    Click(u"s t", Accelerator::kControl);
    Command(kShortcut);
}

}  // namespace
}  // namespace connectdialog::test
