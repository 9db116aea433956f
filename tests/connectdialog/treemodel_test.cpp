// What the tree shows: folders that fill when they open, filters, selection, and what is kept for the next time; and
// what other tools and other processes do to the store.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

#include "foundation/vreportmessageparams.h"
#include "frame/connectdialogapi.h"
#include "imports/dialogkit/appname.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "support/childprocess.h"
#include "support/connectdialogtest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

using TreeModel = ConnectDialogTest;

TEST_F(TreeModel, AHostHidesWhatIsOnlyForTheOther) {
    AddSession(u"f\\both", u"SSH2", u"SFTP");
    AddSession(u"f\\terminal", u"SSH2", u"None");
    AddSession(u"f\\transfer", u"None", u"SFTP");
    const std::tuple<const char16_t*, int, std::string> rows[] = {
        {u"NorHalden", ConnectCommands::kShowTransferSessions, "     both\n     terminal\n"},
        {u"Tessaly", ConnectCommands::kShowTerminalSessions, "     both\n     transfer\n"}};
    for (const auto& [host, toggle, left] : rows) {
        SetAppName(host);
        panels.global->lastSessionPath.Set(u""_v);
        Open();
        Expand(u"f");
        EXPECT_EQ(Tree().Read(), "-*Sessions <\n  -f\n     both\n     terminal\n     transfer\n");
        Command(toggle);
        Expand(u"f");
        EXPECT_EQ(Tree().Read(), "-*Sessions <\n  -f\n" + left);
        Command(toggle);
    }
}

TEST_F(TreeModel, TheSelectionAndTheOpenFoldersComeBack) {
    AddSessions({u"a\\b\\s", u"c\\t", u"c\\d\\u"});
    Open();
    Expand(u"c");
    Click(u"a\\b\\s");
    EXPECT_TRUE(Window().CloseByFrame());
    dialog->Destroy();
    EXPECT_EQ(panels.global->lastSessionPath.Get(), u"a\\b\\s");
    EXPECT_EQ(panels.global->saves, 1);
    Open();
    EXPECT_EQ(Tree().Read(), "-Sessions\n  -a\n    -b\n       *s <\n  -c\n    +d\n     t\n");
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
    Expand(u"");
    const int saves = panels.global->saves;
    dialog->Destroy();
    EXPECT_EQ(panels.global->saves, saves);
    Open();
    EXPECT_EQ(Tree().Read(), "-*Sessions <\n  +a\n  +c\n") << "the open root too";
    Expand(u"c");
    Click(u"c");
    Open();
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +a\n  -*c <\n    +d\n     t\n");
    EXPECT_TRUE(ReadIsExpanded(u"a")) << "what was remembered stays";
}

TEST_F(TreeModel, BrowsingBeginsAtThePathThatIsGiven) {
    AddSessions({u"a\\b\\s", u"a\\b\\Default", u"default"});
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"\\a\\b", "-Sessions\n  -a\n    +*b <\n"},
        {u"a\\b\\Default", "-Sessions\n  -a\n    -b\n       *Default <\n       s\n"},
        {u"A\\b", "-*Sessions <\n  +a\n"},
        {nullptr, "+Sessions\n"}};
    for (const auto& [given, shown] : rows) {
        const VUnicodeString path = given != nullptr ? VUnicodeString(given) : VUnicodeString();
        Open({false, false, true, true, given != nullptr ? &path : nullptr});
        EXPECT_EQ(Tree().Read(), shown);
    }
    options.edit = [](ISessionConfig&) {};
    Command(ConnectCommands::kNewSession);
    EXPECT_EQ(Selected(), "New");
}

TEST_F(TreeModel, ButtonsFollowTheSelection) {
    AddSession(u"f\\s", u"SSH2", u"None");
    AddSession(u"transfer", u"None", u"SFTP");
    MakeFolder(u"empty");
    struct Row {
        std::initializer_list<std::u16string_view> selected;
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
                        {{u"", u"transfer"}, "CcP", "P", "CP"},
                        {{u"f\\s", u"transfer", u"transfer", u"f\\s"}, "", "", ""}};
    const VUnicodeString path = u"f\\s"_v;
    for (const ConnectDialogOptions& mode :
         {ConnectDialogOptions{}, ConnectDialogOptions{false, true, true, true, &path},
          ConnectDialogOptions{false, true, true, true, nullptr}}) {
        Open(mode);
        for (const Row& row : rows) {
            Click(row.selected);
            const char* expected = !mode.browseMode ? row.enabled : mode.initialPath ? row.browsing : row.picking;
            EXPECT_EQ(dialog->GetEnabled(), expected) << Escape(*row.selected.begin());
        }
    }
}

TEST_F(TreeModel, ClicksAndKeysSelectOneSeveralOrARange) {
    AddSessions({u"a", u"b", u"c", u"d"});
    MakeFolder(u"f");
    Open();
    const KeyModifiers shift = Accelerator::kShift;
    const KeyModifiers control = Accelerator::kControl;
    // What is clicked (null: a key), the key, the modifiers, and what is selected then.
    const std::tuple<const char16_t*, std::uint16_t, KeyModifiers, const char*> rows[] = {
        {u"b", 0, 0, "b"},           {u"d", 0, shift, "b c d"},       {u"c", 0, shift, "b c"},  // from the same end
        {u"f", 0, shift, "f a b"},   {u"d", 0, control, "f a b d"},   {u"a", 0, control, "f b d"},
        {u"c", 0, 0, "c"},           {u"c", 0, control, ""},          {u"b", 0, 0, "b"},
        {nullptr, kKeyDown, 0, "c"}, {nullptr, kKeyUp, shift, "b c"}, {nullptr, kKeyUp, shift, "a b c"},
        {nullptr, kKeyDown, 0, "b"}};
    for (const auto& [clicked, key, modifiers, selected] : rows) {
        if (clicked != nullptr)
            Click(clicked, modifiers);
        else
            Window().PressKey(key, modifiers);
        EXPECT_EQ(Selected(), selected) << (clicked != nullptr ? Escape(clicked) : "key");
    }
    kit.ExpectMenu([](const VPopupMenu&) { return 0; });
    Tree().RightClick(At(u"a"));
    EXPECT_EQ(Selected(), "a");
}

TEST_F(TreeModel, ClosingAFolderTakesTheSelectionBelowIt) {
    AddSessions({u"f\\a", u"f\\b", u"s"});
    Open();
    Click({u"s", u"f\\a", u"f\\b"});
    EXPECT_TRUE(Tree().ClickExpander(At(u"f")));
    EXPECT_EQ(Selected(), "f s") << "the caret stood in it";
    Expand(u"f");
    EXPECT_EQ(Selected(), "f s");
}

TEST_F(TreeModel, TipsDescribeSessionsWhileDescriptionsAreShown) {
    AddSession(u"f\\s", u"SSH2", u"None", u"h.example");
    AddSession(u"long", u"SSH2", u"", std::u16string(2000, u'h').c_str());
    Open();
    Click(u"f\\s");
    EXPECT_EQ(Tree().GetTip(At(u"f")), u"");
    EXPECT_NE(Tree().GetTip(At(u"f\\s")).View().find(u"h.example"), std::u16string_view::npos);
    const VUnicodeString tip = Tree().GetTip(At(u"long"));
    EXPECT_EQ(tip.GetLength(), 1023U);
    EXPECT_EQ(tip.Right(4), u"h...");
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
    /// The user clicks an item and connects, or gives up.
    const auto choose = [&](const char16_t* path, KeyModifiers modifiers) {
        kit.ExpectDialog(ConnectDialogIds::kDialog, [=](HeadlessDialog& shown) {
            HeadlessTree& tree = *shown.GetTree(ConnectDialogIds::kTree);
            if (path == nullptr) return;
            tree.Click(tree.Find(path), modifiers);
            EXPECT_TRUE(shown.Press(ConnectDialogIds::kConnect));
        });
    };
    bool openInTab = false;
    choose(u"f\\b", Accelerator::kControl);
    EXPECT_EQ(ShowConnectDialog(u"Connect", true, false, true, nullptr, openInTab), kDialogAccepted);
    EXPECT_TRUE(openInTab);
    ASSERT_EQ(GetConnectDialogSessionConfigCount(), 2U);
    auto second = VRef<ISessionConfig>::Adopt(GetConnectDialogSessionConfig(1));
    EXPECT_EQ(GetConnectDialogSessionConfig(2), nullptr);
    CleanupConnectDialogSessionConfigs();
    EXPECT_EQ(second->GetPath(), u"f\\b") << "the caller's reference holds";
    openInTab = false;
    choose(nullptr, 0);
    EXPECT_EQ(ShowConnectDialog(u"Connect", true, false, true, nullptr, openInTab), kDialogCancelled);
    EXPECT_FALSE(openInTab);
    VUnicodeString path = u"f\\b"_v;
    panels.global->lastSessionPath.Set(u"kept"_v);
    choose(u"f\\a", 0);
    EXPECT_EQ(ShowConnectDialogBrowseMode(u"Pick", path, nullptr), kDialogAccepted);
    EXPECT_EQ(path, u"f\\a");
    EXPECT_EQ(panels.global->lastSessionPath.Get(), u"kept");
    EXPECT_EQ(GetConnectDialogSessionConfigCount(), 0U);
    VArray<VUnicodeString> paths;
    choose(u"f", 0);
    EXPECT_EQ(ShowConnectDialogMultiSelectBrowseMode(u"Pick", paths, nullptr), kDialogAccepted);
    ASSERT_EQ(paths.GetCount(), 1U) << "a folder stands for what is in it";
    EXPECT_EQ(paths[0], u"f");
}

using namespace ConnectCommands;
namespace fs = std::filesystem;

using BadInput = ConnectDialogTest;

TEST_F(BadInput, WhatAnotherDialogChangedIsNotLostAndWhatItDeletedDoesNotComeBack) {
    AddSessions({u"f\\a", u"f\\b", u"g\\c"});
    Arrange(SessionArrangement::kManual);
    Open();
    Click(u"f\\a");
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

/// The store is a file, which other processes open and change too.
class StoreInFile : public ConnectDialogTest {
  protected:
    ~StoreInFile() override {
        dialog.reset();
        stored.reset();
    }
    void OpenFile() {
        VReportMessageParams report;
        stored = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + (folder / "store.db")).c_str()), report);
        ASSERT_NE(stored, nullptr);
        SetProfileFactoryGetter([] { return stored.get(); });
    }
    /// Makes ten sessions in f, renames every second one and deletes every third.
    void Work(const std::string& name) {
        kit.AnswerBoxes(
            [](const VUnicodeString&, unsigned flags) { return (flags & 7U) == kBoxYesNo ? kAnswerYes : kAnswerOk; });
        Open();
        for (int i = 0; i < 10; ++i) {
            const VUnicodeString made((name + std::to_string(i)).c_str());
            const VUnicodeString renamed = i % 2 == 0 ? made + u"r" : made;
            options.edit = [&](ISessionConfig& config) { config.SetName(made); };
            Click(u"f");
            Command(kNewSession);
            if (renamed != made) Rename((u"f\\" + made).View(), renamed);
            if (i % 3 != 0) continue;
            Click((u"f\\" + renamed).View());
            Command(kDelete);
        }
        std::string told;
        for (const auto& box : kit.GetBoxes()) told += platform::ToNarrow(box.text) + "|";
        EXPECT_EQ(kit.GetBoxes().size(), 4U) << told;
    }

    TemporaryFolder folder;
    static inline std::unique_ptr<VProfileStoreFactory> stored;
};

TEST_F(StoreInFile, DialogsOfTwoProcessesChangeOneFolderAndLoseNothing) {
    Arrange(SessionArrangement::kManual);
    ChildProcess other([this](ChildProcess& parent) {
        parent.WaitForGo();
        OpenFile();
        Work("c");
        dialog->Destroy();
        return HasFailure() ? 1 : 0;
    });
    OpenFile();
    MakeFolder(u"f");
    other.LetGo();
    Work("p");
    EXPECT_EQ(other.Wait(), 0);
    Open();
    Click(u"f");
    const std::string list = StoredIn(u"f");
    std::vector<std::string> names;
    for (std::size_t at = 0; at < list.size(); at += names.back().size() + 1)
        names.push_back(list.substr(at, list.find(' ', at) - at));
    std::ranges::sort(names);
    EXPECT_EQ(names,
              (std::vector<std::string>{"c1", "c2r", "c4r", "c5", "c7", "c8r", "p1", "p2r", "p4r", "p5", "p7", "p8r"}));
}

}  // namespace
}  // namespace connectdialog::test
