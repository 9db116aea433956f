// Find, find next, shortcuts to what is selected, and the small dialogs.
#include "config/sessionconfig.h"
#include "connectdialog/findsessiondialog.h"
#include "connectdialog/shortcutnamedialog.h"
#include "foundation/vunicodestringi.h"
#include "quickconnect/hostnameprompt.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;

class Finding : public ConnectDialogTest {
  protected:
    Finding() {
        AddSession(u"web\\prod\\alpha", u"SSH2", u"SFTP", u"one.example");
        AddSession(u"web\\beta", u"SSH2", u"None", u"two.example");
        AddSession(u"x");
        AddSession(u"Webster", u"None", u"SFTP", u"three.example");
        WithKey(u"Sessions\\web\\beta", [](VProfileKey& key) {
            VStringArray lines;
            lines.Add(u"first line"_v);
            lines.Add(u"Second needle"_v);
            key.WriteMultiString(u"Description", lines);
        });
        Open();
    }
};

TEST_F(Finding, EachPlaceIsLookedAtWhenItIsSwitchedOn) {
    // The text, the places, and what is found (null: nothing).
    const std::tuple<const char16_t*, const char*, const char*> rows[] = {
        {u"Sessions", "f", "Sessions"}, {u"web", "f", "web"},          {u"web", "s", "Webster"},
        {u"web", "sc", nullptr},        {u"Web", "sfc", "Webster"},    {u"ALPH", "sf", "alpha"},
        {u"one.EX", "h", "alpha"},      {u"three", "h", "Webster"},    {u"needle", "d", "beta"},
        {u"needle", "sfh", nullptr},    {u"line\r\nsec", "d", "beta"}, {u"one", "sfd", nullptr}};
    kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
    for (const bool isFirst : {true, false}) {  // the second time from what the first one kept
        for (const auto& [text, places, found] : rows) {
            const std::size_t boxes = kit.GetBoxes().size();
            Find(text, places);
            EXPECT_EQ(kit.GetBoxes().size() == boxes, found != nullptr) << Escape(text) << isFirst;
            EXPECT_TRUE(found == nullptr || Selected() == found) << Escape(text) << isFirst;
        }
    }
    EXPECT_EQ(kit.GetBoxes().back().text, u"\"one\" 未找到。");
    EXPECT_TRUE(dialog->Items().HasState(At(u"web\\prod"), kTreeExpanded)) << "what was found is in sight";
    EXPECT_FALSE(dialog->DataOf(At(u"x")).config) << "whole sessions are not kept for a search";
}

TEST_F(Finding, ASearchReadsNoSessionTwiceAndSeesWhatTheUserEdits) {
    Find(u"example", "h");
    Find(u"nowhere", "dh");
    kit.TakeFaults();
    WithKey(u"Sessions\\Webster", [](VProfileKey& key) { key.WriteString(u"SFTP Host", u"changed"); });
    Find(u"three", "h");
    EXPECT_EQ(Selected(), "Webster") << "what was read stays as it was";
    Click(u"web\\beta");
    options.edit = [](ISessionConfig& config) { config.GetConnectConfig()->SetHostName(u"edited"_v); };
    Command(kProperties);
    Click(u"");
    Find(u"edited", "h");
    EXPECT_EQ(Selected(), "beta");
}

TEST_F(Finding, NothingFoundIsToldOnceAndTheQuestionRemembered) {
    kit.ExpectDialog(FindSessionIds::kDialog, [](HeadlessDialog& find) {
        find.Type(FindSessionIds::kText, u"given up"_v);
        find.PressKey(kKeyEscape);
    });
    Command(kFindNext);
    EXPECT_EQ(Selected(), "Sessions");
    kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
    Find(u"no such text", "sfdh", kFindNext);
    Command(kFindNext);
    EXPECT_EQ(kit.GetBoxes().size(), 1U);
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(dialog->Items().GetCaret(), TreeItem::kNone);
    Open();
    kit.ExpectDialog(FindSessionIds::kDialog, [](HeadlessDialog& find) {
        EXPECT_EQ(find.GetText(FindSessionIds::kText), u"no such text");
        find.PressKey(kKeyEscape);
    });
    EXPECT_TRUE(Window().PressKey(kKeyF3));
}

TEST_F(Finding, FindNextGoesOnAfterWhatWasRenamedDeletedOrReloaded) {
    Find(u"e", "sf");
    Command(kFindNext);
    Rename(u"web", u"server"_v);
    Command(kFindNext);
    EXPECT_EQ(Selected(), "beta") << "in the folder that was found";
    options.edit = [](ISessionConfig& config) { config.SetName(u"best"_v); };
    Command(kProperties);
    Delete();
    Command(kFindNext);
    EXPECT_EQ(Selected(), "Webster");
    EXPECT_TRUE(Window().PressKey(u'A', Accelerator::kAlt)) << "arranges in the next order";
    Command(kFindNext);
    EXPECT_EQ(Selected(), "Sessions") << "from the top again";
}

TEST_F(Finding, SelectedSessionsAndFoldersBecomeTheArgumentsOfAShortcut) {
    AddSessions({u"A\\B", u"A\\C", u"s t", u"say \"hi\"", u"a\" /S \"b"});
    Open();
    const auto make = [&](int button) {
        kit.ExpectDialog(ShortcutNameIds::kDialog, [=](HeadlessDialog& name) { EXPECT_TRUE(name.Press(button)); });
        Command(kShortcut);
    };
    struct Row {
        std::initializer_list<std::u16string_view> selected;
        const char16_t* shortcut;
    };
    const Row rows[] = {{{u"A\\B"}, u"/S \"A\\B\" |B"},
                        {{u"say \"hi\""}, u"/S \"say \"hi\"\" |say \"hi\""},
                        {{u""}, u"/SESSION_FOLDER \\ |NorHalden sessions"},
                        {{u"s t", u"A", u"A\\C"}, u"/S \"A\\C\" /S \"s t\" /SESSION_FOLDER \"A\" |NorHalden sessions"}};
    for (const Row& row : rows) {
        Click(row.selected);
        make(kIdOk);
        EXPECT_EQ(dialog->shortcuts.back(), row.shortcut);
    }
    make(kIdCancel);
    dialog->makesShortcuts = false;
    for (const char16_t* path : {u"a\" /S \"b", u"s t"}) {  // the first would name others, and is not even tried
        Click(path);
        kit.ExpectDialog(ShortcutNameIds::kDialog, [](HeadlessDialog& name) { EXPECT_TRUE(name.Press(kIdOk)); });
        kit.ExpectBox(u"ERROR: creation of shortcut failed"_v, kAnswerOk);
        Command(kBarShortcut);
    }
    EXPECT_EQ(dialog->shortcuts.size(), std::size(rows) + 1);
    Click({u"s t", u"s t"});
    Command(kShortcut);  // nothing is selected
}

using SmallDialogs = ConnectDialogTest;

TEST_F(SmallDialogs, FindLooksEverywhereAtFirstAndNeedsATextAndAPlace) {
    kit.ExpectDialog(FindSessionIds::kDialog, [](HeadlessDialog& find) {
        EXPECT_FALSE(find.IsEnabled(kIdOk));
        find.Type(FindSessionIds::kText, u"web"_v);
        for (int id = FindSessionIds::kSessionNames; id <= FindSessionIds::kHostnames; ++id) {
            EXPECT_TRUE(find.IsChecked(id)) << id;
            EXPECT_TRUE(find.IsEnabled(kIdOk)) << id;
            find.Tick(id, false);
        }
        EXPECT_FALSE(find.IsChecked(FindSessionIds::kMatchCase));
        find.Tick(FindSessionIds::kMatchCase, true);
        EXPECT_FALSE(find.IsEnabled(kIdOk)) << "nowhere to look";
        find.PressKey(kKeyEscape);
    });
    EXPECT_EQ(FindSessionDialog(FindOptions(), nullptr).DoModal(), kDialogCancelled);
}

TEST_F(SmallDialogs, AShortcutGetsALabelThatIsNotBlank) {
    struct Row {
        const char16_t* path;
        bool multiple;
        const char16_t* name;
        const char16_t* shownPath;
        const char16_t* target;
    };
    for (const Row& row : {Row{u"A\\B & C", false, u"B & C", u"A\\B && C", u"following session or folder:"},
                           {u"A\\B", true, u"NorHalden sessions", u"", u"selected sessions."},
                           {u"", false, u"NorHalden sessions", u"", u"selected sessions."}}) {
        kit.ExpectDialog(ShortcutNameIds::kDialog, [&](HeadlessDialog& dialog) {
            EXPECT_EQ(dialog.GetText(ShortcutNameIds::kName), row.name);
            EXPECT_EQ(dialog.GetText(ShortcutNameIds::kPath), row.shownPath);
            EXPECT_EQ(dialog.GetText(ShortcutNameIds::kIntro),
                      u"NorHalden will create a shortcut on the\nDesktop to the "_v + row.target);
            dialog.Type(ShortcutNameIds::kName, u" \t "_v);
            kit.ExpectBox(u"Shortcut name error.\n\nShortcut name must be non-empty."_v, kAnswerOk);
            dialog.Press(kIdOk);
            EXPECT_FALSE(dialog.IsClosed());
            EXPECT_EQ(dialog.GetFocus(), ShortcutNameIds::kName);
            dialog.Type(ShortcutNameIds::kName, u"  my box "_v);
            dialog.PressKey(kKeyReturn);
        });
        ShortcutNameDialog dialog(row.path, row.multiple, nullptr);
        EXPECT_EQ(dialog.DoModal(), kDialogAccepted);
        EXPECT_EQ(dialog.GetShortcutName(), u"my box");
    }
}

TEST_F(SmallDialogs, AHostNameIsAskedForUntilItIsATextOrGivenUp) {
    const auto answer = [&] {
        kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& dialog) {
            dialog.Type(HostnamePromptIds::kHostname, u"x"_v);
            dialog.Type(HostnamePromptIds::kHostname, u""_v);
            EXPECT_FALSE(dialog.Press(kIdOk));
            dialog.Type(HostnamePromptIds::kHostname, u" "_v);
            EXPECT_TRUE(dialog.Press(kIdOk)) << "blanks are a text";
        });
    };
    const auto config = VRef<FakeProtocol>::Adopt(new FakeProtocol(nullptr, MakeRow(AppKind::kNorHalden, u"SSH2")));
    answer();
    EXPECT_TRUE(UpdateHostnameForConfig(config.Get(), u"web & co"));
    EXPECT_TRUE(UpdateHostnameForConfig(config.Get(), u"s")) << "complete: no dialog";
    EXPECT_EQ(config->host.Get(), u" ");
    VUnicodeStringI host(u"before");
    kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& dialog) { dialog.CloseByFrame(); });
    EXPECT_EQ(LaunchHostnamePromptDialog(u"s", &host, nullptr), kDialogCancelled);
    EXPECT_EQ(host, u"before");
    answer();
    EXPECT_EQ(LaunchHostnamePromptDialog(u"s", &host, nullptr), kDialogAccepted);
    EXPECT_EQ(host, u" ");
}

}  // namespace
}  // namespace connectdialog::test
