// What other tools and other processes leave in the store.
#include "sessiondb/sessiontree.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectCommands;

using BadInput = ConnectDialogTest;

TEST_F(BadInput, NamesThatNobodyCouldTypeCanStillBeMovedCopiedRenamedAndDeleted) {
    const std::u16string longName(400, u'n');
    for (const std::u16string_view name :
         {std::u16string_view(u"a:b"), std::u16string_view(u"a\r\nb"), std::u16string_view(u"a & \"b\" "),
          std::u16string_view(u"\x202Eright"), std::u16string_view(u"\xD800"), std::u16string_view(longName)}) {
        for (const SessionArrangement arrangement : {SessionArrangement::kAlphabetical, SessionArrangement::kManual}) {
            SCOPED_TRACE(Escape(name));
            WithKey(u"", [](VProfileKey& root) { root.DeleteKey(u"Sessions"); });
            const std::u16string path(name);
            AddSession((u"f\\" + path).c_str());
            AddSession(u"f\\other");
            MakeFolder(u"g");
            Arrange(arrangement);
            Open();
            Expand(u"");
            Expand(u"f");
            EXPECT_TRUE(DragTo(u"f\\" + path, u"g"));
            EXPECT_FALSE(SessionKeyExists(VUnicodeString(u"f\\" + path)));
            CopyTo(u"g\\" + path, u"f", false);
            EXPECT_TRUE(SessionKeyExists(VUnicodeString(u"f\\" + path)));
            Rename(u"g\\" + path, u"plain"_v);
            EXPECT_TRUE(SessionKeyExists(u"g\\plain"_v));
            Click(u"f\\" + path);
            kit.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
            Command(kDelete);
            EXPECT_EQ(StoredIn(u"f"), "other");
        }
    }
}

TEST_F(BadInput, WithoutGlobalSettingsTheDialogWorksAllTheSame) {
    AddSession(u"f\\both", u"SSH2", u"SFTP");
    AddSession(u"f\\other", u"SSH2", u"SFTP");
    panels.global = nullptr;
    Open();
    Expand(u"");
    Expand(u"f");
    for (const int command :
         {kShowDescriptions, kShowTransferSessions, kShowTerminalSessions, kRotateArrangement, kArrangeManually})
        Command(command);
    Expand(u"");
    Expand(u"f");
    options.edit = [](ISessionConfig& config) { config.GetConnectConfig()->SetHostName(u"h"_v); };
    Click(u"f");
    Command(kProperties);
    Command(kNewSession);
    EXPECT_EQ(StoredIn(u"f"), "both New other");
    Click(u"f");
    Command(kConnect);
    EXPECT_EQ(dialog->GetChosenConfigs().GetCount(), 3U);
}

TEST_F(BadInput, AShortcutThatWouldNameOthersIsNotMade) {
    AddSessions({u"a\" /S \"b"});
    Open();
    Expand(u"");
    Click(u"a\" /S \"b");
    kit.ExpectDialog(ShortcutNameIds::kDialog, [](HeadlessDialog& name) { EXPECT_TRUE(name.Press(kIdOk)); });
    kit.ExpectBox(u"ERROR: creation of shortcut failed"_v, kAnswerOk);
    Command(kShortcut);
    EXPECT_TRUE(dialog->shortcuts.empty());
}

TEST_F(BadInput, AKeyNamedLikeTheFolderDataInOtherCaseIsNoEntry) {
    AddSession(u"f\\__folderdata__\\s");
    Open();
    Expand(u"");
    EXPECT_EQ(Tree().Read(), "-*Sessions <\n   f\n");
    Click(u"f");
    Command(kConnect);
    EXPECT_FALSE(Window().IsClosed());
}

TEST_F(BadInput, WhatAnotherDialogChangedIsNotLostAndWhatItDeletedDoesNotComeBack) {
    AddSessions({u"f\\a", u"f\\b", u"g\\c"});
    Arrange(SessionArrangement::kManual);
    Open();
    Expand(u"");
    Expand(u"f");
    AddSessions({u"f\\new", u"f\\h\\deep"});
    EXPECT_TRUE(DragTo(u"f\\b", u"f\\a", 0));
    EXPECT_EQ(StoredIn(u"f"), "h/ b a new");
    WithKey(u"Sessions", [](VProfileKey& key) {
        key.DeleteKey(u"g");
        key.DeleteKey(u"f\\a");
    });
    const std::string left = StoredIn(u"") + StoredIn(u"f");
    kit.AnswerBoxes(
        [](const VUnicodeString&, unsigned flags) { return (flags & kBoxYesNo) != 0 ? kAnswerYes : kAnswerOk; });
    Rename(u"f\\a", u"x"_v);
    Rename(u"g", u"x"_v);
    EXPECT_FALSE(DragTo(u"g", u"f"));
    CopyTo(u"f\\a", u"", true);
    Click(u"g");
    Command(kConnect);
    Command(kDelete);
    EXPECT_EQ(StoredIn(u"") + StoredIn(u"f"), left);
    dialog->Destroy();
    EXPECT_EQ(StoredIn(u"") + StoredIn(u"f"), left) << "not by keeping how the tree looked either";
}

}  // namespace
}  // namespace connectdialog::test
