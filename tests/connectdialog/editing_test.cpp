// New sessions and folders, renaming, properties, deleting.
#include "config/sessionconfig.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"
#include "support/faultystore.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;
using enum SessionArrangement;

class Editing : public ConnectDialogTest {
  protected:
    void Select(std::u16string_view path) {
        Open();
        Expand(u"");
        Click(path);
    }
    static VUnicodeString HostOf(const char16_t* path) {
        VUnicodeString host;
        if (const VRef<ISessionConfig> config = OpenSession(path)) config->GetConnectConfig()->GetHostName(host);
        return host;
    }
    void DeleteAnswering(int answer) {
        kit.ExpectBox(u"确定删除选中项？"_v, answer);
        Command(kDelete);
    }
};

TEST_F(Editing, ANewFolderIsStoredWhenItsNameIsFinal) {
    MakeFolder(u"Zoo");
    AddSessions({u"s"});
    Select(u"s");
    Command(kNewFolder);
    EXPECT_TRUE(Tree().IsEditing());
    EXPECT_EQ(Tree().GetEditText(), u"New Folder");
    EXPECT_EQ(StoredIn(u""), "Zoo/ s") << "not yet";
    EXPECT_TRUE(Tree().TypeLabel(u" Apes "_v));
    EXPECT_EQ(Tree().Read(), "-Sessions\n   *Apes <\n   Zoo\n   s\n");
    EXPECT_EQ(StoredIn(u""), "Apes/ Zoo/ s");
    // Given up, it keeps the name that was offered; the second one is counted.
    Click(u"s");
    Command(kBarNewFolder);
    EXPECT_TRUE(Tree().CancelLabel());
    Click(u"s");
    Command(kNewFolder);
    Window().PressKey(kKeyEscape);
    EXPECT_FALSE(Window().IsClosed()) << "the key ended the edit";
    EXPECT_EQ(StoredIn(u""), "Apes/ New Folder/ New Folder (1)/ Zoo/ s");
    EXPECT_EQ(Selected(), "New Folder (1)");
    Command(kNewFolder);
    EXPECT_TRUE(Tree().TypeLabel(u"inner"_v));
    EXPECT_EQ(StoredIn(u"New Folder (1)"), "inner/");
}

TEST_F(Editing, ANewFolderGoesBehindTheLastOneWhereTheUserOrders) {
    Arrange(kManual);
    MakeFolder(u"Zoo");
    AddSessions({u"s"});
    Select(u"Zoo");
    Click(u"");
    Command(kNewFolder);
    EXPECT_TRUE(Tree().TypeLabel(u"Apes"_v));
    EXPECT_EQ(Tree().Read(), "-Sessions\n   Zoo\n   *Apes <\n   s\n");
    EXPECT_EQ(StoredIn(u""), "Zoo/ Apes/ s");
}

TEST_F(Editing, ANameThatCannotStandKeepsTheUserInTheEdit) {
    MakeFolder(u"taken");
    AddSessions({u"s"});
    Select(u"s");
    Command(kNewFolder);
    const std::u16string tooLong(300, u'x');
    for (const std::u16string_view bad :
         {std::u16string_view(u""), std::u16string_view(u"  "), std::u16string_view(u"a\\b"),
          std::u16string_view(u"a:b"), std::u16string_view(u"TAKEN"), std::u16string_view(u"s"),
          std::u16string_view(u"a\nb"), std::u16string_view(u"__folderdata__"), std::u16string_view(u"DEFAULT"),
          std::u16string_view(u"a\x202E"
                              u"b"),
          std::u16string_view(tooLong)}) {
        panels.refusedNames.clear();
        EXPECT_TRUE(Tree().TypeLabel(VUnicodeString(bad)));
        EXPECT_EQ(panels.refusedNames.size(), 1U) << Escape(bad);
        ASSERT_TRUE(Tree().IsEditing()) << Escape(bad);
        EXPECT_EQ(StoredIn(u""), "taken/ s");
    }
    const std::u16string longest(255, u'x');
    EXPECT_TRUE(Tree().TypeLabel(VUnicodeString(longest)));
    EXPECT_TRUE(SessionKeyExists(VUnicodeString(longest)));
    Rename(longest, u"Q & A"_v);
    EXPECT_EQ(StoredIn(u""), "Q & A/ taken/ s");
}

TEST_F(Editing, ANewSessionStandsInItsPlaceAndIsSelected) {
    AddSessions({u"f\\b", u"f\\d", u"x"});
    SetList(u"f", u"Session List", u"d:b:");
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        Arrange(arrangement);
        Select(u"f");
        panels.global->optionsPagePath.Set(u"Terminal"_v);
        options.calls.clear();
        options.edit = [&](ISessionConfig& config) {
            EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Connection+");
            config.SetName(arrangement == kManual ? u"a"_v : u"c"_v);
            config.GetConnectConfig()->SetHostName(u"new.example"_v);
        };
        Command(arrangement == kManual ? kBarNewSession : kNewSession);
        EXPECT_EQ(options.calls, "New 0 0 1;");
        EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Terminal");
        EXPECT_EQ(StoredIn(u"f"), arrangement == kManual ? "d b c a" : "b c d");
        EXPECT_EQ(Tree().Read(), arrangement == kManual ? "-Sessions\n  -f\n     d\n     b\n     c\n     *a <\n   x\n"
                                                        : "-Sessions\n  -f\n     b\n     *c <\n     d\n   x\n");
    }
    EXPECT_EQ(HostOf(u"f\\c"), u"new.example");
}

TEST_F(Editing, ANewSessionInAnEmptyFolderIsShown) {
    MakeFolder(u"f");
    Select(u"f");
    options.edit = [](ISessionConfig&) {};
    Command(kNewSession);
    EXPECT_EQ(Tree().Read(), "-Sessions\n  -f\n     *New <\n");
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u"f"), "New New (1)");
}

TEST_F(Editing, ANewSessionThatIsGivenUpLeavesNothing) {
    AddSessions({u"x"});
    Select(u"x");
    panels.global->optionsPagePath.Set(u"Terminal"_v);
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u""), "x");
    EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Terminal");
}

TEST_F(Editing, ANewSessionNeverOverwritesAnother) {
    AddSession(u"x", u"SSH2", u"None", u"keep.example");
    Select(u"x");
    for (const char16_t* name : {u"X", u"a\\b", u"a:b", u""}) {
        options.edit = [&](ISessionConfig& config) { config.SetName(name); };
        Command(kNewSession);
    }
    EXPECT_EQ(panels.refusedNames.size(), 4U);
    EXPECT_EQ(StoredIn(u""), "New New (1) New (2) New (3) x");
    EXPECT_EQ(HostOf(u"x"), u"keep.example");
}

TEST_F(Editing, TheWizardReplacesTheOptionsUntilTheUserDeclinesIt) {
    AddSessions({u"x"});
    panels.global->useNewSessionWizard.Set(true);
    Select(u"x");
    options.edit = [](ISessionConfig& config) { config.SetName(u"by options"_v); };
    dialog->wizardResult = 2;
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u""), "x") << "cancelled";
    dialog->wizardResult = 12325;
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u""), "by wizard x");
    EXPECT_TRUE(panels.global->useNewSessionWizard.Get());
    EXPECT_EQ(options.calls, "");
    dialog->wizardWanted = false;
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u""), "by options by wizard x");
    EXPECT_FALSE(panels.global->useNewSessionWizard.Get());
    dialog->wizardResult = 2;
    options.edit = [](ISessionConfig& config) { config.SetName(u"last"_v); };
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u""), "by options by wizard last x") << "declined: not asked any more";
}

TEST_F(Editing, RenamingMovesToTheSortedPlaceOrKeepsTheUsersOwn) {
    AddSessions({u"a", u"b", u"c", u"g\\in"});
    MakeFolder(u"f");
    MakeFolder(u"h");
    struct Row {
        SessionArrangement arrangement;
        const char16_t* from;
        const char16_t* to;
        const char* stored;
    };
    const Row rows[] = {
        {kAlphabetical, u"a", u"bb", "f/ g/ h/ b bb c"},     {kAlphabetical, u"f", u"gg", "g/ gg/ h/ b bb c"},
        {kAlphabetical, u"gg", u"GG", "g/ GG/ h/ b bb c"},   {kAlphabetical, u"bb", u"BB", "g/ GG/ h/ b BB c"},
        {kAlphabetical, u"b", u"z10", "g/ GG/ h/ BB c z10"}, {kLogical, u"c", u"z9", "g/ GG/ h/ BB z9 z10"}};
    for (const Row& row : rows) {
        Arrange(row.arrangement);
        Select(row.from);
        Rename(row.from, row.to);
        EXPECT_EQ(StoredIn(u""), row.stored) << Escape(row.to);
        const std::string now = Tree().Read();
        dialog->ReloadTree();
        Expand(u"");
        Click(row.to);
        EXPECT_EQ(Tree().Read(), now) << "the store agrees with what was shown";
    }
}

TEST_F(Editing, ARenamedFolderLooksAsBefore) {
    panels.global->rememberFolderExpansion.Set(false);  // which is about the next time
    AddSessions({u"f\\g\\s", u"f\\h\\t", u"f\\u"});
    Select(u"f");
    Expand(u"f");
    Expand(u"f\\g");
    Rename(u"f", u"e"_v);
    EXPECT_EQ(Tree().Read(), "-Sessions\n  -*e <\n    -g\n       s\n    +h\n     u\n");
}

TEST_F(Editing, ARenameThatChangesNothingDoesNothing) {
    AddSessions({u"s"});
    Select(u"s");
    const TreeItem item = At(u"s");
    Command(kRename);
    EXPECT_TRUE(Tree().TypeLabel(u"  s "_v));
    Command(kRename);
    EXPECT_TRUE(Tree().CancelLabel());
    EXPECT_EQ(At(u"s"), item) << "the item was not even made anew";
    Click(u"");
    Command(kRename);
    EXPECT_FALSE(Tree().IsEditing()) << "the root has no name to change";
    Click(u"s", Accelerator::kControl);
    Command(kRename);
    EXPECT_FALSE(Tree().IsEditing());
}

TEST_F(Editing, WhileALabelIsEditedKeysAreText) {
    AddSessions({u"s"});
    Select(u"s");
    EXPECT_TRUE(Window().PressKey(kKeyF2));
    EXPECT_TRUE(Tree().IsEditing());
    Window().PressKey(kKeyDelete);
    Window().PressKey(u'C', Accelerator::kControl);
    EXPECT_TRUE(Tree().IsEditing());
    EXPECT_EQ(kit.GetBoxes().size(), 0U);
    EXPECT_EQ(dialog->GetEnabled(), "CcPXD");
    // A click elsewhere keeps what was typed so far.
    Click(u"");
    EXPECT_FALSE(Tree().IsEditing());
}

TEST_F(Editing, PropertiesChangeOneSession) {
    AddSessions({u"f\\s", u"f\\t"});
    Select(u"f");
    Expand(u"f");
    Click(u"f\\s");
    panels.global->optionsPagePath.Set(u"Terminal"_v);
    options.edit = [](ISessionConfig& config) { config.GetConnectConfig()->SetHostName(u"edited"_v); };
    EXPECT_TRUE(Window().PressKey(kKeyReturn, Accelerator::kAlt));
    EXPECT_EQ(options.calls, "s 0 0 0;");
    EXPECT_EQ(HostOf(u"f\\s"), u"edited");
    EXPECT_EQ(HostOf(u"f\\t"), u"host");
    EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Terminal");
    options.edit = nullptr;
    Command(kProperties);
    EXPECT_EQ(options.calls, "s 0 0 0;s 0 0 0;");
    // A protocol that goes takes the connect button with it.
    options.edit = [](ISessionConfig& config) { config.SetProtocolName(u"None"_v); };
    Command(kProperties);
    EXPECT_EQ(dialog->GetEnabled(), "PXD");
    EXPECT_FALSE(OpenSession(u"f\\s")->HasProtocol()) << "it was stored";
}

TEST_F(Editing, PropertiesOfSeveralReachAllOfThemWithWhatChangedOnly) {
    AddSession(u"f\\a", u"SSH2", u"None", u"host-a");
    AddSession(u"f\\b", u"SSH2", u"None", u"host-b");
    AddSession(u"c", u"SSH2", u"None", u"host-c");
    Select(u"f");
    Click(u"c", Accelerator::kControl);
    panels.global->optionsPagePath.Set(u"Terminal"_v);
    const auto setDelay = [](ISessionConfig& config) {
        dynamic_cast<VProfile<int>&>(*config.FindValue(u"Line Send Delay")).Set(77);
    };
    const auto delayOf = [](const char16_t* path) {
        return dynamic_cast<VProfile<int>&>(*OpenSession(path)->FindValue(u"Line Send Delay")).Get();
    };
    options.edit = setDelay;
    panels.optionalAnswer = 2;
    Command(kProperties);
    EXPECT_EQ(options.calls, "");
    EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Connection+") << "the page stays there";
    panels.optionalAnswer = 1;
    Command(kProperties);
    EXPECT_EQ(
        panels.optionalText,
        u"你将编辑 3 个会话的设置。\r\n第一个会话的设置将显示在会话属性对话框中。\r\n只有改变的设置才会被应用到\r\n"
        u"所选的 3 个会话。");
    EXPECT_EQ(options.calls, "a 4 1 0;");
    for (const char16_t* path : {u"f\\a", u"f\\b", u"c"}) EXPECT_EQ(delayOf(path), 77) << Escape(path);
    EXPECT_EQ(HostOf(u"f\\b"), u"host-b");
    panels.optionalText = u"";
    panels.global->suppressMultiEditWarning.Set(1);
    options.edit = [](ISessionConfig& config) { config.SetProtocolName(u"None"_v); };
    Command(kProperties);
    EXPECT_EQ(panels.optionalText, u"") << "suppressed";
    for (const char16_t* path : {u"f\\a", u"f\\b", u"c"}) EXPECT_FALSE(OpenSession(path)->HasProtocol());
}

TEST_F(Editing, ANameChangedInThePropertiesMovesTheSession) {
    AddSession(u"a", u"SSH2", u"None", u"host-a");
    AddSessions({u"b", u"c"});
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        Arrange(arrangement);
        const bool isManual = arrangement == kManual;
        Select(isManual ? u"bb" : u"a");
        options.edit = [&](ISessionConfig& config) { config.SetName(isManual ? u"z"_v : u"bb"_v); };
        Command(kProperties);
        EXPECT_EQ(Selected(), isManual ? "z" : "bb");
        const std::string now = StoredIn(u"");
        EXPECT_EQ(now, isManual ? "b c z" : "b bb c");
        EXPECT_EQ(HostOf(isManual ? u"z" : u"bb"), u"host-a");
        EXPECT_EQ(dialog->GetEnabled(), "CcPXD");
        dialog->ReloadTree();
        Expand(u"");
    }
    // A name that is taken is refused, and the session keeps its own.
    Click(u"z");
    options.edit = [](ISessionConfig& config) { config.SetName(u"C"_v); };
    Command(kProperties);
    EXPECT_EQ(StoredIn(u""), "b c z");
    EXPECT_EQ(panels.refusedNames.back(), u"C");
}

TEST_F(Editing, ASessionThatIsGoneHasNoProperties) {
    AddSessions({u"a", u"b"});
    Select(u"b");
    WithKey(u"Sessions", [](VProfileKey& key) { EXPECT_TRUE(key.DeleteKey(u"a")); });
    Click(u"a");
    kit.ExpectBox(u"Unable to load the session configuration."_v, kAnswerOk);
    Command(kProperties);
    EXPECT_EQ(dialog->GetEnabled(), "PXD");
}

TEST_F(Editing, DeletingAsksAndSelectsWhatStandsBefore) {
    AddSessions({u"f\\s", u"f\\g\\t", u"a", u"b", u"c"});
    Select(u"b");
    DeleteAnswering(kAnswerNo);
    EXPECT_EQ(StoredIn(u""), "f/ a b c");
    EXPECT_EQ(kit.GetBoxes().back().flags, 52U);
    DeleteAnswering(kAnswerYes);
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +f\n   *a <\n   c\n");
    Click(u"c", Accelerator::kControl);
    Click(u"f", Accelerator::kControl);
    DeleteAnswering(kAnswerYes);
    EXPECT_EQ(Tree().Read(), " *Sessions <\n");
    EXPECT_EQ(StoredIn(u""), "");
    EXPECT_FALSE(SessionKeyExists(u"f\\g\\t"_v));
}

TEST_F(Editing, TheDeleteKeyLeavesTheRootAlone) {
    AddSessions({u"a", u"b"});
    Select(u"a");
    Click(u"", Accelerator::kControl);
    Window().PressKey(kKeyDelete);
    EXPECT_EQ(kit.GetBoxes().size(), 0U) << "not while the root is selected";
    DeleteAnswering(kAnswerYes);
    EXPECT_EQ(Tree().Read(), "-*Sessions <\n   b\n") << "the command deletes the others";
    Click(u"b");
    kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
    Window().PressKey(kKeyDelete);
    EXPECT_EQ(StoredIn(u""), "");
}

TEST_F(Editing, SessionsInUseAreNotDeleted) {
    AddSessions({u"f\\a", u"b", u"c"});
    Select(u"b");
    for (const char16_t* path : {u"B", u"f\\a", u"c"}) dialog->running.paths.Add(path);
    kit.ExpectBox(u"以下会话正在使用中，不能删除：\r\nB"_v, kAnswerOk);
    Command(kDelete);
    Click(u"c", Accelerator::kShift);
    kit.ExpectBox(u"以下会话正在使用中，不能删除：\r\nB\nc"_v, kAnswerOk);
    Command(kDelete);
    EXPECT_EQ(StoredIn(u""), "f/ b c");
    dialog->running.silentHosts = 1;
    Click(u"f");
    kit.ExpectBox(u"Running applications that do not answer: 1\nWhat they have open is not known."_v, kAnswerOk);
    DeleteAnswering(kAnswerYes);
    EXPECT_EQ(StoredIn(u""), "b c") << "what is open in a folder goes with it";
    EXPECT_EQ(dialog->inUseQueries, 3);
}

TEST_F(Editing, AFolderThatIsStillNamedIsDeletedWithoutATrace) {
    AddSessions({u"a"});
    Select(u"a");
    Command(kNewFolder);
    DeleteAnswering(kAnswerYes);
    EXPECT_EQ(Tree().Read(), "-*Sessions <\n   a\n");
    EXPECT_EQ(StoredIn(u""), "a");
    Command(kNewFolder);
    EXPECT_TRUE(Tree().TypeLabel(u"f"_v)) << "and the next one is named as usual";
    EXPECT_EQ(StoredIn(u""), "f/ a");
}

TEST_F(Editing, ADeletionThatFailsIsToldAndStops) {
    AddSessions({u"a", u"b", u"c"});
    Select(u"a");
    Click(u"c", Accelerator::kShift);
    WithKey(u"Sessions", [](VProfileKey& key) { EXPECT_TRUE(key.DeleteKey(u"b")); });
    kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
    kit.ExpectBox(u"ERROR: Deletion of folder or session from the database failed"_v, kAnswerOk);
    Command(kDelete);
    EXPECT_EQ(StoredIn(u""), "c");
    EXPECT_NE(Tree().Find(u"c"), TreeItem::kNone);
}

TEST_F(Editing, ClosingTheDialogEndsAnEdit) {
    AddSessions({u"a"});
    Select(u"a");
    Command(kRename);
    dialog->Destroy();
    EXPECT_EQ(StoredIn(u""), "a");
    Open();
    Command(kNewFolder);
    dialog->Destroy();
    EXPECT_EQ(StoredIn(u""), "New Folder/ a");
    EXPECT_EQ(panels.global->lastSessionPath.Get(), u"New Folder");
}

/// The store refuses every write while the dialog is open.
TEST_F(Editing, AStoreThatRefusesIsToldAndTreeAndStoreStayTheSame) {
    AddSessions({u"f\\a", u"g\\h\\x", u"b", u"c"});
    SetList(u"", u"Session List", u"c:b:");
    OpenSession(u"Default"_v);  // makes it
    static FaultyStoreFactory* faulty = nullptr;
    FaultyStoreFactory wrapped(*factory);
    faulty = &wrapped;
    SetProfileFactoryGetter([]() -> VProfileStoreFactory* { return faulty; });
    const ValueNames names = {u"Is Session", u"Session List", u"Folder List", u"SSH2 Host"};
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        Arrange(arrangement);
        Select(u"b");
        Expand(u"f");
        Click(u"b");
        const auto seen = [&] { return Tree().Read().substr(0, Tree().Read().find('*')) + Tree().Read(); };
        const std::string tree = seen();
        const std::string store = DumpStore(*factory, names);
        const std::vector<std::pair<const char16_t*, std::function<void()>>> actions = {
            {u"ERROR: Could not create the folder in the database.",
             [&] {
                 Command(kNewFolder);
                 Tree().TypeLabel(u"new"_v);
                 Click(u"b");
             }},
            {u"ERROR: Could not save the session in the database.",
             [&] {
                 options.edit = [](ISessionConfig&) {};
                 Command(kNewSession);
                 Click(u"b");
             }},
            {u"ERROR: Could not rename the item in the database.", [&] { Rename(u"b", u"z"_v); }},
            {u"ERROR: Could not rename the item in the database.",
             [&] {
                 Rename(u"f", u"z"_v);
                 Click(u"b");
             }},
            {u"ERROR: Could not copy the item in the database.",
             [&] {
                 CopyTo(u"b", u"f", true);
                 Click(u"b");
             }},
            {u"ERROR: Could not copy the item in the database.",
             [&] {
                 EXPECT_FALSE(DragTo(u"g", u"f"));
                 Click(u"b");
             }},
            {u"ERROR: Could not save the session in the database.",
             [&] {
                 options.edit = [](ISessionConfig& config) { config.GetConnectConfig()->SetHostName(u"lost"_v); };
                 Command(kProperties);
             }},
        };
        for (const auto& [text, act] : actions) {
            for (const bool atCommit : {false, true}) {
                wrapped.plan = {0, atCommit, !atCommit};
                VUnicodeString told = text;
                if (atCommit && &act == &actions.back().second) told += u"\nThere is not enough space on the disk.";
                kit.ExpectBox(told, kAnswerOk);
                act();
                EXPECT_EQ(kit.TakeFaults(), "") << Escape(text) << atCommit;
                wrapped.plan = {};
                EXPECT_EQ(DumpStore(*factory, names), store) << Escape(text);
                EXPECT_EQ(seen(), tree) << Escape(text);
            }
        }
        wrapped.plan = {0, false, true};
        kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
        kit.ExpectBox(u"ERROR: Deletion of folder or session from the database failed"_v, kAnswerOk);
        Command(kDelete);
        wrapped.plan = {};
        EXPECT_EQ(DumpStore(*factory, names), store);
        EXPECT_EQ(seen(), tree);
        dialog.reset();
    }
    SetProfileFactoryGetter(nullptr);
    faulty = nullptr;
}

}  // namespace
}  // namespace connectdialog::test
