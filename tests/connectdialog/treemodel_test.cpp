// What the tree shows: order, folders that fill when they open, filters, selection, and what is kept for the next time.
#include "frame/connectdialogapi.h"
#include "imports/dialogkit/appname.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using TreeModel = ConnectDialogTest;

TEST_F(TreeModel, AnEmptyStoreShowsTheRootAlone) {
    Open();
    EXPECT_EQ(Tree().Read(), " *Sessions <\n");
    EXPECT_EQ(dialog->GetEnabled(), "Cc") << "a folder could have sessions";
    EXPECT_EQ(Window().GetTitle(), u"Title");
}

TEST_F(TreeModel, FoldersAreThereFromTheStartAndSessionsWhenTheirFolderOpens) {
    AddSessions({u"web\\prod\\s1", u"web\\s2", u"Alpha\\s3", u"zeta", u"Default"});
    MakeFolder(u"empty");
    Open();
    EXPECT_EQ(Tree().Read(), "+*Sessions <\n");
    EXPECT_NE(Tree().Find(u"web\\prod"), TreeItem::kNone);
    EXPECT_EQ(Tree().Find(u"web\\s2"), TreeItem::kNone) << "not asked for yet";
    Expand(u"");
    Expand(u"web");
    EXPECT_EQ(Tree().Read(),
              "-*Sessions <\n"
              "  +Alpha\n"
              "   empty\n"
              "  -web\n"
              "    +prod\n"
              "     s2\n"
              "   zeta\n");
}

TEST_F(TreeModel, DefaultIsNoSessionAtTheTopLevelAndOneInAFolder) {
    AddSessions({u"Default", u"f\\Default", u"x"});
    Open();
    Expand(u"");
    Expand(u"f");
    EXPECT_EQ(Tree().Find(u"Default"), TreeItem::kNone);
    EXPECT_NE(Tree().Find(u"f\\Default"), TreeItem::kNone);
}

TEST_F(TreeModel, EachArrangementHasItsOrder) {
    AddSessions({u"item10", u"item9", u"item1"});
    MakeFolder(u"f10");
    MakeFolder(u"f9");
    SetList(u"", u"Session List", u"item9:item1:item10:");
    SetList(u"", u"Folder List", u"f9:f10:");
    const std::pair<SessionArrangement, const char*> rows[] = {
        {SessionArrangement::kAlphabetical, "f10 f9 item1 item10 item9"},
        {SessionArrangement::kLogical, "f10 f9 item1 item9 item10"},
        {SessionArrangement::kManual, "f9 f10 item9 item1 item10"}};
    Open();
    for (const auto& [arrangement, order] : rows) {
        Expand(u"");
        EXPECT_EQ(static_cast<int>(arrangement), panels.global->sessionArrangementMode.Get());
        std::string shown;
        for (TreeItem item = dialog->Items().GetFirstChild(At(u"")); item != TreeItem::kNone;
             item = dialog->Items().GetNextSibling(item))
            shown += (shown.empty() ? "" : " ") + Escape(dialog->Items().GetText(item));
        EXPECT_EQ(shown, order);
        EXPECT_TRUE(Window().PressKey(u'A', Accelerator::kAlt));
    }
    EXPECT_EQ(panels.global->sessionArrangementMode.Get(), 0) << "three turns are a round";
    Command(ConnectCommands::kArrangeManually);
    EXPECT_EQ(panels.global->sessionArrangementMode.Get(), 2);
    Command(ConnectCommands::kArrangeLogically);
    EXPECT_EQ(panels.global->sessionArrangementMode.Get(), 1);
    Command(ConnectCommands::kArrangeAlphabetically);
    EXPECT_EQ(panels.global->sessionArrangementMode.Get(), 0);
}

TEST_F(TreeModel, AHostHidesWhatIsOnlyForTheOther) {
    AddSession(u"f\\both", u"SSH2", u"SFTP");
    AddSession(u"f\\terminal", u"SSH2", u"None");
    AddSession(u"f\\transfer", u"None", u"SFTP");
    struct Row {
        const char16_t* host;
        int toggle;
        std::string hidden;
    };
    for (const Row& row : {Row{u"NorHalden", ConnectCommands::kShowTransferSessions, "     both\n     terminal\n"},
                           {u"Tessaly", ConnectCommands::kShowTerminalSessions, "     both\n     transfer\n"}}) {
        SetAppName(row.host);
        panels.global->lastSessionPath.Set(u""_v);
        Open();
        Expand(u"");
        Expand(u"f");
        EXPECT_EQ(Tree().Read(), "-*Sessions <\n  -f\n     both\n     terminal\n     transfer\n");
        Command(row.toggle);
        Expand(u"");
        Expand(u"f");
        EXPECT_EQ(Tree().Read(), "-*Sessions <\n  -f\n" + row.hidden);
        EXPECT_TRUE(dialog->DataOf(At(u"f")).sessionsLoaded);
        Command(row.toggle);
    }
}

TEST_F(TreeModel, TheSelectionAndTheOpenFoldersComeBack) {
    AddSessions({u"a\\b\\s", u"c\\t", u"c\\d\\u"});
    Open();
    Expand(u"");
    Expand(u"a");
    Expand(u"a\\b");
    Expand(u"c");
    Click(u"a\\b\\s");
    EXPECT_TRUE(Window().CloseByFrame());
    dialog->Destroy();
    EXPECT_EQ(panels.global->lastSessionPath.Get(), u"a\\b\\s");
    EXPECT_EQ(panels.global->saves, 1);
    Open();
    EXPECT_EQ(Tree().Read(),
              "-Sessions\n"
              "  -a\n"
              "    -b\n"
              "       *s <\n"
              "  -c\n"
              "    +d\n"
              "     t\n");
    Click(u"c\\d");
    dialog->Destroy();
    EXPECT_FALSE(panels.global->lastSessionExpanded.Get());
    panels.global->rememberFolderExpansion.Set(false);
    panels.global->lastSessionExpanded.Set(true);
    Open();
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +a\n  -c\n    -*d <\n       u\n     t\n");
    dialog->Destroy();
    panels.global->lastSessionPath.Set(u"c\\gone"_v);
    panels.global->saveConfigOnClose.Set(false);
    Open();
    EXPECT_EQ(Selected(), "Sessions") << "what is gone gives way to the root";
}

TEST_F(TreeModel, BrowseModeBeginsWithTheGivenPathAndKeepsNothing) {
    AddSessions({u"A\\B", u"A\\C"});
    struct Row {
        const char16_t* path;
        const char* selected;
    };
    for (const Row& row : {Row{u"A\\B", "B"}, {u"\\A\\B", "B"}, {u"a\\B", "Sessions"}, {u"A\\D", "Sessions"}}) {
        const VUnicodeString path = row.path;
        Open({false, true, true, true, &path});
        EXPECT_EQ(Selected(), row.selected) << Escape(path);
        EXPECT_EQ(Window().GetText(ConnectDialogIds::kConnect), u"OK");
        EXPECT_FALSE(Window().IsShown(ConnectDialogIds::kShowOnStartup));
        EXPECT_FALSE(Window().IsShown(ConnectDialogIds::kOpenInTab)) << "always a tab";
        dialog->Destroy();
    }
    Open({false, true, true, true, nullptr});
    EXPECT_EQ(Selected(), "");
    EXPECT_EQ(dialog->GetEnabled(), "");
    dialog->Destroy();
    EXPECT_EQ(panels.global->saves, 0);
    EXPECT_EQ(panels.global->lastSessionPath.Get(), u"");
}

TEST_F(TreeModel, ButtonsFollowTheSelection) {
    AddSession(u"f\\s", u"SSH2", u"None");
    AddSession(u"transfer", u"None", u"SFTP");
    MakeFolder(u"empty");
    panels.global->lastSessionPath.Set(u"f\\s"_v);
    struct Row {
        std::vector<std::u16string_view> selected;
        const char* enabled;
        const char* browsing;
        const char* picking;
    };
    const Row rows[] = {{{u""}, "CcP", "P", "CP"},
                        {{u"f"}, "CcPXD", "PXD", "CPXD"},
                        {{u"empty"}, "CcXD", "XD", "CXD"},
                        {{u"f\\s"}, "CcPXD", "CPXD", "CPXD"},
                        {{u"transfer"}, "PXD", "PXD", "PXD"},
                        {{u"f\\s", u"transfer"}, "CcPD", "PD", "CPD"},
                        {{u"", u"transfer"}, "CcP", "P", "CP"}};
    const VUnicodeString path = u"f\\s"_v;
    for (const ConnectDialogOptions& mode :
         {ConnectDialogOptions{}, ConnectDialogOptions{false, true, true, true, &path},
          ConnectDialogOptions{false, true, true, true, nullptr}}) {
        Open(mode);
        Tree().Click(At(u""));
        Expand(u"");
        Expand(u"f");
        for (const Row& row : rows) {
            Click(row.selected[0]);
            for (std::size_t i = 1; i < row.selected.size(); ++i) Click(row.selected[i], Accelerator::kControl);
            const char* expected = !mode.browseMode ? row.enabled : mode.initialPath ? row.browsing : row.picking;
            EXPECT_EQ(dialog->GetEnabled(), expected) << Escape(row.selected.back());
        }
    }
    Click(u"transfer", Accelerator::kControl);
    Click(u"", Accelerator::kControl);
    EXPECT_EQ(dialog->GetEnabled(), "") << "nothing is selected";
}

TEST_F(TreeModel, ClicksAndKeysSelectOneSeveralOrARange) {
    AddSessions({u"a", u"b", u"c", u"d"});
    MakeFolder(u"f");
    Open();
    Expand(u"");
    Click(u"b");
    Click(u"d", Accelerator::kShift);
    EXPECT_EQ(Selected(), "b c d");
    Click(u"c", Accelerator::kShift);
    EXPECT_EQ(Selected(), "b c") << "from the same end";
    Click(u"f", Accelerator::kShift);
    EXPECT_EQ(Selected(), "f a b");
    Click(u"d", Accelerator::kControl);
    EXPECT_EQ(Selected(), "f a b d");
    Click(u"a", Accelerator::kControl);
    EXPECT_EQ(Selected(), "f b d");
    Click(u"c");
    EXPECT_EQ(Selected(), "c");
    Click(u"c", Accelerator::kControl);
    EXPECT_EQ(Selected(), "");
    Click(u"b");
    Window().PressKey(kKeyDown);
    EXPECT_EQ(Selected(), "c");
    Window().PressKey(kKeyUp, Accelerator::kShift);
    Window().PressKey(kKeyUp, Accelerator::kShift);
    EXPECT_EQ(Selected(), "a b c");
    Window().PressKey(kKeyDown);
    EXPECT_EQ(Selected(), "b");
    Click(u"d");
    kit.ExpectMenu([](const VPopupMenu&) { return 0; });
    Tree().RightClick(At(u"a"));
    EXPECT_EQ(Selected(), "a");
}

TEST_F(TreeModel, ClosingAFolderTakesTheSelectionBelowIt) {
    AddSessions({u"f\\a", u"f\\b", u"s"});
    Open();
    Expand(u"");
    Expand(u"f");
    Click(u"s");
    Click(u"f\\a", Accelerator::kControl);
    Click(u"f\\b", Accelerator::kControl);
    EXPECT_TRUE(Tree().ClickExpander(At(u"f")));
    EXPECT_EQ(Selected(), "f s") << "the caret stood in it";
    Expand(u"f");
    EXPECT_EQ(Selected(), "f s");
}

TEST_F(TreeModel, ReturnOpensAndClosesAFolderAndConnectsASession) {
    AddSessions({u"f\\s"});
    Open();
    Expand(u"");
    Click(u"f");
    EXPECT_TRUE(Window().PressKey(kKeyReturn));
    EXPECT_EQ(Tree().Read(), "-Sessions\n  -*f <\n     s\n");
    EXPECT_TRUE(Window().PressKey(kKeyReturn));
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +*f <\n");
    EXPECT_FALSE(Window().IsClosed());
    Expand(u"f");
    Click(u"f\\s");
    EXPECT_TRUE(Window().PressKey(kKeyReturn));
    EXPECT_TRUE(Window().IsClosed());
    EXPECT_EQ(dialog->GetResult(), kDialogAccepted);
}

TEST_F(TreeModel, TipsDescribeSessionsWhileDescriptionsAreShown) {
    AddSession(u"f\\s", u"SSH2", u"None", u"h.example");
    panels.global->lastSessionPath.Set(u"f\\s"_v);
    Open();
    EXPECT_EQ(Tree().GetTip(At(u"f")), u"");
    EXPECT_NE(Tree().GetTip(At(u"f\\s")).View().find(u"h.example"), std::u16string_view::npos);
    Command(ConnectCommands::kShowDescriptions);
    EXPECT_FALSE(panels.global->showDescriptions.Get());
    EXPECT_EQ(Tree().GetTip(At(u"f\\s")), u"");
}

TEST_F(TreeModel, TheTwoDialogsAtStartExcludeEachOtherAndForcedTabsCannotBeLeft) {
    panels.global->quickConnectOnStartup.Set(true);
    Open();
    EXPECT_TRUE(Window().Tick(ConnectDialogIds::kOpenInTab, true));
    EXPECT_TRUE(panels.global->openInTab.Get());
    EXPECT_TRUE(Window().Tick(ConnectDialogIds::kShowOnStartup, true));
    EXPECT_TRUE(panels.global->connectDialogOnStartup.Get());
    EXPECT_FALSE(panels.global->quickConnectOnStartup.Get());
    panels.global->openInTab.Set(false);
    panels.global->tabMode.Set(1);
    panels.global->tabsForced.Set(true);
    Open({false, false, false, false, nullptr});
    EXPECT_FALSE(Window().IsEnabled(ConnectDialogIds::kOpenInTab));
    EXPECT_TRUE(Window().IsChecked(ConnectDialogIds::kOpenInTab));
    EXPECT_EQ(Window().GetText(ConnectDialogIds::kOpenInTab), u"&Open in a tiled window");
}

TEST_F(TreeModel, TheEntryPointsHandOutWhatWasChosen) {
    AddSessions({u"f\\a", u"f\\b"});
    panels.global->lastSessionPath.Set(u"f\\a"_v);
    panels.global->openInTab.Set(true);
    const auto treeOf = [](HeadlessDialog& shown) -> HeadlessTree& { return *shown.GetTree(ConnectDialogIds::kTree); };
    bool openInTab = false;
    kit.ExpectDialog(ConnectDialogIds::kDialog, [&](HeadlessDialog& shown) {
        EXPECT_EQ(shown.GetTitle(), u"Connect");
        treeOf(shown).Click(treeOf(shown).Find(u"f\\b"), Accelerator::kControl);
        EXPECT_TRUE(shown.Press(ConnectDialogIds::kConnect));
    });
    EXPECT_EQ(ShowConnectDialog(u"Connect", true, false, true, nullptr, openInTab), kDialogAccepted);
    EXPECT_TRUE(openInTab);
    ASSERT_EQ(GetConnectDialogSessionConfigCount(), 2U);
    auto second = VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(1));
    EXPECT_EQ(GetConnectDialogSessionConfig(2), nullptr);
    CleanupConnectDialogSessionConfigs();
    EXPECT_EQ(second->GetPath(), u"f\\b") << "the caller's reference holds";

    openInTab = false;
    kit.ExpectDialog(ConnectDialogIds::kDialog, [](HeadlessDialog& shown) { shown.PressKey(kKeyEscape); });
    EXPECT_EQ(ShowConnectDialog(u"Connect", true, false, true, nullptr, openInTab), kDialogCancelled);
    EXPECT_FALSE(openInTab);

    VUnicodeString path = u"f\\b"_v;
    kit.ExpectDialog(ConnectDialogIds::kDialog, [&](HeadlessDialog& shown) {
        treeOf(shown).Click(treeOf(shown).Find(u"f\\a"));
        EXPECT_TRUE(shown.Press(ConnectDialogIds::kConnect));
    });
    EXPECT_EQ(ShowConnectDialogBrowseMode(u"Pick", path, nullptr), kDialogAccepted);
    EXPECT_EQ(path, u"f\\a");
    EXPECT_EQ(GetConnectDialogSessionConfigCount(), 0U);

    VArray<VUnicodeString> paths;
    kit.ExpectDialog(ConnectDialogIds::kDialog, [&](HeadlessDialog& shown) {
        treeOf(shown).Click(treeOf(shown).Find(u"f"));
        treeOf(shown).Click(treeOf(shown).Find(u"f\\b"), Accelerator::kControl);
        EXPECT_TRUE(shown.Press(ConnectDialogIds::kConnect));
    });
    EXPECT_EQ(ShowConnectDialogMultiSelectBrowseMode(u"Pick", paths, nullptr), kDialogAccepted);
    ASSERT_EQ(paths.GetCount(), 1U) << "a folder stands for what is in it";
    EXPECT_EQ(paths[0], u"f");
}

}  // namespace
}  // namespace connectdialog::test
