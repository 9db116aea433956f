// New sessions and folders, renaming, properties, deleting: what the user is asked and told. Where things end up is
// the random user's matter.
#include "config/sessionconfig.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"
#include "support/faultystore.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;
using enum SessionArrangement;

class Editing : public ConnectDialogTest {
  protected:
    /// Opens the dialog over these sessions, with that one selected.
    void Begin(std::initializer_list<const char16_t*> sessions, std::u16string_view selected) {
        AddSessions(sessions);
        Open();
        Click(selected);
    }
};

TEST_F(Editing, ANewFolderIsStoredWhenItsNameIsFinal) {
    MakeFolder(u"Zoo");
    Begin({u"s"}, u"s");
    Command(kNewFolder);
    EXPECT_EQ(Tree().GetEditText(), u"New Folder");
    EXPECT_EQ(StoredIn(u""), "Zoo/ s") << "not yet";
    EXPECT_TRUE(Tree().TypeLabel(u" Apes "_v));
    EXPECT_EQ(Tree().Read(), "-Sessions\n   *Apes <\n   Zoo\n   s\n");
    // Given up, it keeps the name that was offered; the second one is counted.
    for (int i = 0; i < 2; ++i) {
        Click(u"s");
        EXPECT_TRUE(Window().Press(kBarNewFolder));
        EXPECT_TRUE(Window().PressKey(kKeyEscape));
        EXPECT_FALSE(Window().IsClosed()) << "the key ended the edit";
    }
    EXPECT_EQ(StoredIn(u""), "Apes/ New Folder/ New Folder (1)/ Zoo/ s");
    EXPECT_EQ(Selected(), "New Folder (1)");
    Open();
    Click(u"");
    Command(kNewFolder);
    AddSession(u"New Folder (2)");  // by somebody else
    EXPECT_TRUE(Tree().CancelLabel());
    EXPECT_EQ(Selected(), "New Folder (2) (1)");
    EXPECT_FALSE(AddFolderEntry(u"", u"s", VUnicodeString(), true)) << "a session stands there";
}

TEST_F(Editing, ANewSessionIsWhatTheOptionsMadeOfTheTemplate) {
    Begin({u"f\\b", u"x"}, u"f");
    panels.global->optionsPagePath.Set(u"Terminal"_v);
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u"f"), "b") << "given up";
    EXPECT_EQ(Selected(), "");
    for (const char16_t* name : {u"c", u"B", u"a\\b", u"a:b", u""}) {
        options.edit = [&](ISessionConfig& config) {
            EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Connection+");
            config.SetName(name);
            config.GetConnectConfig()->SetHostName(u"new.example"_v);
        };
        Click(u"f");
        Command(kBarNewSession);
    }
    EXPECT_EQ(Selected(), "New (3)");
    options.edit = [](ISessionConfig&) { AddSession(u"f\\New (4)"); };  // by somebody else
    Command(kNewSession);
    EXPECT_EQ(Selected(), "New (4) (1)");
    EXPECT_EQ(options.calls, "New 0 0 1;New 0 0 1;New 0 0 1;New (1) 0 0 1;New (2) 0 0 1;New (3) 0 0 1;New (4) 0 0 1;");
    EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Terminal");
    EXPECT_EQ(StoredIn(u"f"), "b c New New (1) New (2) New (3) New (4) New (4) (1)")
        << "a bad name costs the name and no session";
    EXPECT_EQ(HostOf(u"f\\c"), u"new.example");
    EXPECT_EQ(HostOf(u"f\\b"), u"host");
}

TEST_F(Editing, TheWizardReplacesTheOptionsUntilTheUserDeclinesIt) {
    Begin({u"x"}, u"x");
    panels.global->useNewSessionWizard.Set(true);
    options.edit = [](ISessionConfig& config) { config.SetName(u"by options"_v); };
    // The wizard's result, whether it is wanted from now on, and what is stored then.
    const std::tuple<std::int64_t, bool, const char*> rows[] = {
        {2, true, "x"},
        {12325, true, "by wizard x"},
        {12325, false, "by options by wizard x"},
        {2, true, "by options by wizard New x"}};  // declined: not asked any more
    for (const auto& [result, isWanted, stored] : rows) {
        dialog->wizardResult = result;
        dialog->wizardWanted = isWanted;
        Command(kNewSession);
        EXPECT_EQ(StoredIn(u""), stored);
    }
}

TEST_F(Editing, ANameThatIsRefusedKeepsTheUserInTheEdit) {
    Begin({u"s", u"t"}, u"s");
    Rename(u"s", u"T"_v);
    EXPECT_TRUE(Tree().TypeLabel(u"a:b"_v));
    EXPECT_EQ(Tree().GetEditText(), u"s");
    EXPECT_TRUE(Tree().TypeLabel(u"u"_v));
    EXPECT_EQ(StoredIn(u""), "t u");
    Command(kNewFolder);
    EXPECT_TRUE(Tree().TypeLabel(u"t"_v));
    Command(kNewFolder);
    Command(kNewSession);
    EXPECT_EQ(options.calls, "");
    EXPECT_TRUE(Tree().TypeLabel(u"f"_v));
    EXPECT_EQ(Tree().Read(), "-Sessions\n   *f <\n   t\n   u\n");
    EXPECT_EQ(StoredIn(u""), "f/ t u");
    for (const bool isRoot : {true, false}) {
        Click(isRoot ? u"" : u"t");
        if (!isRoot) Click(u"u", Accelerator::kControl);
        Command(kRename);
        EXPECT_FALSE(Tree().IsEditing()) << "neither the root nor several";
    }
}

TEST_F(Editing, NumbersInNamesCountInTheLogicalOrderOfSessions) {
    Arrange(kLogical);
    MakeFolder(u"item9");
    Begin({u"item 2", u"item 9", u"x"}, u"");
    options.edit = [](ISessionConfig& config) { config.SetName(u"item 10"_v); };
    Command(kNewSession);
    Command(kNewFolder);
    EXPECT_TRUE(Tree().TypeLabel(u"item10"_v));
    EXPECT_EQ(Tree().Read(), "-Sessions\n   *item10 <\n   item9\n   item 2\n   item 9\n   item 10\n   x\n");
}

TEST_F(Editing, ARenamedFolderLooksAsBefore) {
    panels.global->rememberFolderExpansion.Set(false);  // which is about the next time
    Begin({u"f\\g\\s", u"f\\h\\t", u"f\\u"}, u"f\\g\\s");
    Rename(u"f", u"e"_v);
    EXPECT_EQ(Tree().Read(), "-Sessions\n  -*e <\n    -g\n       s\n    +h\n     u\n");
}

TEST_F(Editing, ARenameKeepsItsPlaceAmongSessionsThatAreNotShown) {
    AddSession(u"a", u"SSH2", u"None", u"");
    AddSession(u"b", u"None", u"SFTP", u"");
    AddSession(u"c", u"SSH2", u"None", u"");
    SetList(u"", u"Session List", u"a:b:c:");
    Arrange(kManual);
    panels.global->showTransferSessions.Set(false);
    Open();
    Rename(u"c", u"z"_v);
    Rename(u"a", u"y"_v);
    EXPECT_EQ(StoredIn(u""), "y b z");
}

TEST_F(Editing, PropertiesChangeOneSession) {
    Begin({u"f\\s", u"f\\t"}, u"f\\s");
    panels.global->optionsPagePath.Set(u"Terminal"_v);
    options.edit = [](ISessionConfig& config) { config.GetConnectConfig()->SetHostName(u"edited"_v); };
    EXPECT_TRUE(Window().PressKey(kKeyReturn, Accelerator::kAlt));
    EXPECT_EQ(HostOf(u"f\\s"), u"edited");
    EXPECT_EQ(panels.global->optionsPagePath.Get(), u"Terminal");
    options.edit = nullptr;
    Command(kProperties);
    EXPECT_EQ(options.calls, "s 0 0 0;s 0 0 0;");
    // A protocol that goes takes the connect button with it.
    options.edit = [](ISessionConfig& config) { config.SetProtocolName(u"None"_v); };
    Command(kProperties);
    EXPECT_EQ(dialog->GetEnabled(), "PXD");
    EXPECT_FALSE(OpenSession(u"f\\s")->HasProtocol()) << "it was stored";
    WithKey(u"Sessions\\f", [](VProfileKey& key) { EXPECT_TRUE(key.DeleteKey(u"t")); });
    Click(u"f\\t");
    kit.ExpectBox(u"Unable to load the session configuration."_v, kAnswerOk);
    Command(kProperties);
}

TEST_F(Editing, PropertiesOfSeveralReachAllOfThemWithWhatChangedOnly) {
    AddSession(u"f\\b", u"SSH2", u"None", u"host-b");
    Begin({u"f\\a", u"c"}, u"f");
    Click(u"c", Accelerator::kControl);
    panels.global->optionsPagePath.Set(u"Terminal"_v);
    options.edit = [](ISessionConfig& config) { SetDelay(config, 77); };
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
    for (const char16_t* path : {u"f\\a", u"f\\b", u"c"}) EXPECT_EQ(DelayOf(path), 77) << Escape(path);
    EXPECT_EQ(HostOf(u"f\\b"), u"host-b");
    panels.optionalText = u"";
    panels.global->suppressMultiEditWarning.Set(1);
    options.edit = [](ISessionConfig& config) { config.SetProtocolName(u"None"_v); };
    Command(kProperties);
    EXPECT_EQ(panels.optionalText, u"") << "suppressed";
    for (const char16_t* path : {u"f\\a", u"f\\b", u"c"}) EXPECT_FALSE(OpenSession(path)->HasProtocol());
    Open();
    Click({u"f", u"c"});
    WithKey(u"Sessions\\f", [](VProfileKey& key) { key.DeleteKey(u"b"); });  // by somebody else
    options.edit = [](ISessionConfig& config) { SetDelay(config, 88); };
    Command(kProperties);
    EXPECT_TRUE(DelayOf(u"f\\a"_v) == 88 && DelayOf(u"c"_v) == 88) << "the others get it";
    EXPECT_EQ(StoredIn(u"f"), "a");
}

TEST_F(Editing, DeletingAsksLeavesTheRootAndSelectsWhatStandsBefore) {
    Begin({u"f\\s", u"a", u"b", u"c"}, u"b");
    Delete(kAnswerNo);
    EXPECT_EQ(kit.GetBoxes().back().flags, 52U);
    Delete();
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +f\n   *a <\n   c\n");
    Click(u"", Accelerator::kControl);
    Window().PressKey(kKeyDelete);
    EXPECT_EQ(kit.GetBoxes().size(), 2U) << "the key does nothing while the root is selected";
    Delete();
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +*f <\n   c\n") << "the command deletes the others";
    // A folder that is still named goes without a trace, and the next one is named as usual.
    Command(kNewFolder);
    Delete();
    EXPECT_EQ(StoredIn(u""), "f/ c");
    AddSession(u"f\\s");
    Click({u"f", u"f\\s", u"c"});
    kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
    Window().PressKey(kKeyDelete);
    EXPECT_EQ(Tree().Read(), " *Sessions <\n");
    Command(kNewFolder);
    EXPECT_TRUE(Tree().TypeLabel(u"g"_v));
    EXPECT_EQ(StoredIn(u""), "g/");
}

TEST_F(Editing, DeletingStopsAtWhatIsGone) {
    Begin({u"a", u"b", u"c"}, u"a");
    Click({u"a", u"a"});
    Command(kDelete);  // nothing is selected
    Click({u"a", u"b", u"c"});
    WithKey(u"Sessions", [](VProfileKey& key) { key.DeleteKey(u"b"); });  // by somebody else
    kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
    kit.ExpectBox(u"ERROR: Deletion of folder or session from the database failed"_v, kAnswerOk);
    Command(kDelete);
    EXPECT_EQ(StoredIn(u""), "c");
    EXPECT_EQ(Tree().Read(), "-*Sessions <\n   b\n   c\n");
}

TEST_F(Editing, SessionsInUseAreNotDeleted) {
    Begin({u"f\\a", u"b", u"c"}, u"b");
    for (const char16_t* path : {u"B", u"f\\a", u"c"}) dialog->running.paths.Add(path);
    Click(u"c", Accelerator::kShift);
    kit.ExpectBox(u"以下会话正在使用中，不能删除：\r\nB\nc"_v, kAnswerOk);
    Command(kDelete);
    dialog->running.isBusy = true;
    kit.ExpectBox(kRunningSessionsBusy, kAnswerOk);
    Command(kDelete);
    EXPECT_EQ(StoredIn(u""), "f/ b c");
    dialog->running.isBusy = false;
    dialog->running.silentHosts = 1;
    Click(u"f");
    kit.ExpectBox(u"Running applications that do not answer: 1\nWhat they have open is not known."_v, kAnswerOk);
    Delete();
    EXPECT_EQ(StoredIn(u""), "b c") << "what is open in a folder goes with it";
}

/// The store refuses every write while the dialog is open.
TEST_F(Editing, AStoreThatRefusesIsToldAndTreeAndStoreStayTheSame) {
    AddSessions({u"f\\a", u"g\\h\\x", u"b", u"c"});
    SetList(u"", u"Session List", u"c:b:");
    OpenSession(u"Default"_v);  // makes it
    FaultyStoreFactory wrapped(*factory);
    UseStore(wrapped);
    const ValueNames names = {u"Is Session", u"Session List", u"Folder List", u"SSH2 Host"};
    const auto edit = [&](int command, const char16_t* host) {
        options.edit = [=](ISessionConfig& config) {
            VUnicodeString before;
            config.GetConnectConfig()->GetHostName(before);
            EXPECT_NE(before, u"lost") << "what was refused is not what the next edit begins with";
            config.GetConnectConfig()->SetHostName(host);
        };
        Command(command);
    };
    const std::pair<const char16_t*, std::function<void()>> actions[] = {
        {u"ERROR: Could not create the folder in the database.",
         [&] {
             Command(kNewFolder);
             Tree().TypeLabel(u"new"_v);
         }},
        {u"ERROR: Could not save the session in the database.", [&] { edit(kNewSession, u"new"); }},
        {u"ERROR: Could not save the session in the database.", [&] { edit(kProperties, u"lost"); }},
        {u"ERROR: Could not save the session in the database.",
         [&] {
             wrapped.plan = {.failWrite = 1};  // of several sessions one
             Click({u"b", u"c"});
             edit(kProperties, u"lost");
         }},
        {u"ERROR: Could not rename the item in the database.",
         [&] {
             const FaultPlan plan = std::exchange(wrapped.plan, {});
             options.edit = [](ISessionConfig&) {};
             Command(kProperties);  // from now on it has nothing to save but its name
             wrapped.plan = plan;
             options.edit = [](ISessionConfig& config) {
                 EXPECT_EQ(config.GetName(), u"b");
                 config.SetName(u"z"_v);
             };
             Command(kProperties);
         }},
        {u"ERROR: Could not rename the item in the database.", [&] { Rename(u"b", u"z"_v); }},
        {u"ERROR: Could not rename the item in the database.", [&] { Rename(u"f", u"z"_v); }},
        {u"ERROR: Could not copy the item in the database.", [&] { CopyTo(u"b", u"f", true); }},
        {u"ERROR: Could not copy the item in the database.", [&] { EXPECT_FALSE(DragTo(u"g", u"f")); }},
        {u"ERROR: Deletion of folder or session from the database failed", [&] { Command(kDelete); }},
    };
    constexpr std::size_t kPropertiesAction = 2;  // tells why
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        Arrange(arrangement);
        Open();
        Expand(u"f");
        Click(u"b");
        const std::string tree = Tree().Read();
        const std::string store = DumpStore(*factory, names);
        for (const auto& [text, act] : actions) {
            for (const bool atCommit : {false, true}) {
                wrapped.plan = {0, atCommit, !atCommit};
                if (VUnicodeString(text).Find(u"Deletion") != VUnicodeString::kNotFound)
                    kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
                VUnicodeString told = text;
                if (atCommit && &act == &actions[kPropertiesAction].second)
                    told += u"\nThere is not enough space on the disk.";
                kit.ExpectBox(told, kAnswerOk);
                act();
                EXPECT_EQ(kit.TakeFaults(), "") << Escape(text) << atCommit;
                wrapped.plan = {};
                Click(u"b");
                EXPECT_EQ(DumpStore(*factory, names), store) << Escape(text);
                EXPECT_EQ(Tree().Read(), tree) << Escape(text);
            }
        }
        dialog.reset();
    }
    UseStore(*factory);
}

/// Between a check of the dialog's and the store's lock another process changes the store.
TEST_F(Editing, WhatAnotherProcessChangedMeanwhileStays) {
    FaultyStoreFactory wrapped(*factory);
    UseStore(wrapped);
    Begin({u"f\\s", u"g\\t", u"a"}, u"a");
    for (const SessionArrangement arrangement : {kAlphabetical, kManual}) {
        const VUnicodeString name = arrangement == kManual ? u"y"_v : u"z"_v;
        Arrange(arrangement);
        Open();
        wrapped.plan.beforeLock = [&] { AddSession(name.GetData(), u"SSH2", u"", u"theirs"); };
        Rename(u"a", name);
        EXPECT_EQ(kit.TakeFaults(), "");
        EXPECT_EQ(panels.refusedNames, std::vector<VUnicodeString>{name}) << "told like a name that was taken before";
        EXPECT_EQ(HostOf(name.GetData()), u"theirs");
        EXPECT_EQ(HostOf(u"a"), u"host");
        panels.refusedNames.clear();
    }
    Open();
    Expand(u"f");
    Expand(u"g");
    wrapped.plan.beforeLock = [] { EXPECT_TRUE(DeleteEntry(u"f")); };
    dialog.reset();
    EXPECT_FALSE(wrapped.plan.beforeLock);
    EXPECT_FALSE(SessionKeyExists(u"f"));
    EXPECT_TRUE(ReadIsExpanded(u"g"));
    UseStore(*factory);
}

}  // namespace
}  // namespace connectdialog::test
