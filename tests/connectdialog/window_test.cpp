// The window of the connect dialog: its toolbar, the menus over the tree, its size, and the keys that walk.
#include <functional>

#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "imports/hostcallbacks.h"
#include "support/connectdialogtest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectDialogIds;

class ConnectWindow : public ConnectDialogTest {
  protected:
    /// What can be pressed on the toolbar; "|" a separator, "-" before what cannot.
    std::string Bar() {
        std::string text;
        for (const VToolbarState::Button& button : Window().GetToolbar()->GetButtons()) {
            if (!text.empty()) text += ' ';
            if (!button.isEnabled) text += '-';
            text += button.command != 0 ? std::to_string(button.command) : "|";
        }
        return text;
    }

    /// The menu that the user gets for the selection by the keyboard: commands, "-" before what is disabled, "+" behind
    /// what is checked, and "(...)" a sub-menu.
    std::string Menu() {
        std::string text;
        kit.ExpectMenu([&](const VPopupMenu& menu) {
            text = Read(menu.GetEntries());
            return 0;
        });
        Window().PressKey(kKeyMenu);
        return text;
    }

    static std::string Read(const std::vector<VPopupMenu::Entry>& entries) {
        std::string text;
        for (const VPopupMenu::Entry& entry : entries) {
            if (!text.empty()) text += ' ';
            if (!entry.isEnabled) text += '-';
            text += !entry.children.empty() ? '(' + Read(entry.children) + ')'
                    : entry.command != 0    ? std::to_string(entry.command)
                                            : "|";
            if (entry.isChecked) text += '+';
        }
        return text;
    }

    std::int32_t WidthOf(int id) {
        const VRectangle place = Window().GetRectangle(id);
        return place.right - place.left;
    }
};

TEST_F(ConnectWindow, TheToolbarFollowsTheSelectionAndTheHost) {
    AddSessions({u"s"});
    Open();
    EXPECT_EQ(Bar(), "2000 2001 | 2008 | -2011 -2012 -2013 | -2006 2002 2014 | 2007 | 2009 | 2010");
    EXPECT_EQ(Window().GetToolbar()->GetButtons()[3].tip, u"新建会话");
    EXPECT_FALSE(Window().GetRectangle(kTerminalToolbar) == VRectangle());
    Expand(u"");
    Click(u"s");
    EXPECT_TRUE(Window().Press(ConnectCommands::kBarCopy));
    EXPECT_EQ(Bar(), "2000 2001 | 2008 | 2011 2012 2013 | 2006 2002 2014 | 2007 | 2009 | 2010");
    const VUnicodeString path = u"s"_v;
    Open({false, true, true, true, &path});
    EXPECT_EQ(Bar(), "2008 | 2011 2012 -2013 | 2006 2002 2014 | 2007 | 2009 | 2010");
    SetAppName(u"Tessaly"_v);
    Open();
    EXPECT_FALSE(Window().GetRectangle(kTransferToolbar) == VRectangle());
    EXPECT_TRUE(Window().GetRectangle(kTerminalToolbar) == VRectangle());
}

TEST_F(ConnectWindow, TheMenuFitsTheSelectionAndTheHost) {
    AddSession(u"f\\both", u"SSH2", u"SFTP");
    AddSession(u"s", u"SSH2", u"None");
    // The application (null: browsing), the selected items, whether there is a system menu, and the menu.
    const std::tuple<const char*, const char16_t*, const char16_t*, bool, const char*> rows[] = {
        {"NorHalden", u"s", nullptr, false,
         "32772 -32773 -32774 | 2103 2104 -2105 | 57636 32778 | 2106 32922 2109 | (32785+ 32787 32784) 32771+ 32775+ | "
         "2102"},
        {"Tessaly", u"f", nullptr, false,
         "32777 32924 | 2101 2107 | 2103 2104 -2105 | 57636 32778 | 2106 32922 2109 | (32785+ 32787 32784) 32771+ "
         "32776+ | 2102"},
        {"NorHalden", u"", nullptr, true,
         "32777 32924 | 2101 2107 | -2103 -2104 -2105 | 57636 32778 | -2106 -32922 2109 | (32785+ 32787 32784) 32771+ "
         "| 2102"},
        {"NorHalden", u"", u"s", false,
         "32777 | 2101 2107 | 57636 32778 | -2106 2109 | (32785+ 32787 32784) 32771+ | 2102"},
        // Browsing leaves out what connects.
        {nullptr, u"f", u"s", false, "2101 2107 | 57636 32778 | 2106 2109 | (32785+ 32787 32784) 32771+ | 2102"}};
    for (const auto& [app, first, second, systemMenu, expected] : rows) {
        SetAppName(VUnicodeString(app != nullptr ? app : "NorHalden"));
        ConnectDialogOptions dialogOptions;
        dialogOptions.addSystemMenu = systemMenu;
        dialogOptions.browseMode = app == nullptr;
        Open(dialogOptions);
        Click(first);
        if (second != nullptr) Click(second, Accelerator::kControl);
        EXPECT_EQ(Menu(), expected) << Escape(first);
    }
    for (const bool isTerminal : {true, false}) {
        SetAppName(isTerminal ? u"NorHalden"_v : u"Tessaly"_v);
        Open();
        const int filter = isTerminal ? ConnectCommands::kShowTransferSessions : ConnectCommands::kShowTerminalSessions;
        Command(filter);
        Click(u"f");
        EXPECT_NE(Menu().find(std::to_string(filter) + " |"), std::string::npos) << "not checked any more";
    }
    kit.ExpectMenu([](const VPopupMenu& menu) {
        EXPECT_EQ(menu.Find(ConnectCommands::kOpenInTab)->text, u"连接会话(&C)\tAlt+C");
        return ConnectCommands::kArrangeManually;
    });
    SetAppName(u"Tessaly"_v);
    Open();
    Tree().RightClick(At(u""));
    EXPECT_EQ(panels.global->sessionArrangementMode.Get(), 2) << "the choice is carried out";
    kit.ExpectMenu([](const VPopupMenu&) { return 0; });
    Window().PressKey(kKeyF10, Accelerator::kShift);
    Click(u"", Accelerator::kControl);
    Window().PressKey(kKeyMenu);  // nothing is selected: no menu
}

TEST_F(ConnectWindow, HelpIsTheHosts) {
    static std::string asked;
    GetHostCallbacks().help = [](VWindow*, unsigned topic, unsigned long) { asked += std::to_string(topic) + ' '; };
    Open();
    Window().PressKey(kKeyF1);
    Command(ConnectCommands::kHelp);
    EXPECT_EQ(asked, "11 11 ");
}

TEST_F(ConnectWindow, TheFirstSizeIsTheTemplatesAndLaterTheLast) {
    Open();
    IDialogWindow& window = *dialog->GetWindow();
    EXPECT_EQ(window.GetInside(), window.ToPixels({0, 0, 250, 215}));
    EXPECT_EQ(window.GetRectangle(kSeparator).top, window.GetRectangle(kTerminalToolbar).bottom + 2);
    const VRectangle before = window.GetInside();
    EXPECT_EQ(window.GetRectangle(kSeparator).right, before.right);
    // Which edges of a control follow those of the window.
    const struct {
        int id;
        VRectangle follows;
    } rows[] = {{kTree, {0, 0, 1, 1}},
                {kIdCancel, {1, 1, 1, 1}},
                {kShowOnStartup, {0, 1, 0, 1}},
                {kTerminalToolbar, {0, 0, 1, 0}},
                {kSeparator, {0, 0, 1, 0}}};
    std::vector<VRectangle> places;
    for (const auto& row : rows) places.push_back(window.GetRectangle(row.id));
    ASSERT_TRUE(Window().Resize(before.right + 100, before.bottom + 30));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        const auto& [left, top, right, bottom] = rows[i].follows;
        const VRectangle& was = places[i];
        EXPECT_EQ(window.GetRectangle(rows[i].id), (VRectangle{was.left + 100 * left, was.top + 30 * top,
                                                               was.right + 100 * right, was.bottom + 30 * bottom}));
    }
    Open();
    EXPECT_EQ(dialog->GetWindow()->GetInside(), (VRectangle{0, 0, before.right + 100, before.bottom + 30}));
    Window().Resize(1, 1);
    EXPECT_EQ(Window().GetInside().bottom, 125);
    EXPECT_EQ(Window().GetInside().right, 12 * 24 + 6 * 8 + 30) << "the toolbar's width and some room";
}

TEST_F(ConnectWindow, AStoredSizeThatIsNoneIsNotTaken) {
    for (const VRectangle stored : {VRectangle{5, 5, 5, 400}, VRectangle{400, 300, 5, 5}, VRectangle{0, 0, 2, 2},
                                    VRectangle{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}}) {
        VWindowPlacement placement = VWindowPlacement::Unplaced();
        placement.normal = stored;
        panels.global->connectDialogPlacement.Set(placement);
        Open();
        const VRectangle inside = Window().GetInside();
        EXPECT_GE(inside.right, WidthOf(kTerminalToolbar));
        EXPECT_GE(inside.bottom, 125);
        EXPECT_LE(inside.right, INT16_MAX);
    }
}

TEST_F(ConnectWindow, TheTreeHasTheFontOfTheSettings) {
    const std::pair<const char16_t*, const char16_t*> rows[] = {{u"", u""},
                                                                {u"Mono,12", u"Mono,12"},
                                                                {u"Mono", u"Mono,10"},
                                                                {u"Mono,", u"Mono,10"},
                                                                {u"Mono,-7", u"Mono,0"},
                                                                {u"Mono,99999999999999999999", u"Mono,200"}};
    for (const auto& [stored, font] : rows) {
        panels.global->sessionTreeFont.Set(VUnicodeString(stored));
        Open();
        EXPECT_EQ(Window().GetFont(kTree), font);
    }
}

TEST_F(ConnectWindow, KeysWalkTheRowsAndTypedTextLeadsToAName) {
    AddSessions({u"beta", u"Berg", u"gamma", u"会话", u"f\\x"});
    Open();
    Expand(u"");
    const std::tuple<std::uint16_t, KeyModifiers, const char*> rows[] = {
        {kKeyEnd, 0, "会话"},      {kKeyHome, 0, "Sessions"},
        {kKeyPageDown, 0, "会话"}, {kKeyPageUp, 0, "Sessions"},
        {kKeyDown, 0, "f"},        {kKeyEnd, Accelerator::kShift, "f Berg beta gamma 会话"},
        {kKeyEnd, 0, "会话"},      {kKeyHome, 0, "Sessions"},
        {kKeyDown, 0, "f"},        {kKeyAdd, 0, "f"},
        {kKeyDown, 0, "x"},        {kKeyBack, 0, "f"},
        {kKeySubtract, 0, "f"}};
    for (const auto& [key, modifiers, selected] : rows) {
        Window().PressKey(key, modifiers);
        EXPECT_EQ(Selected(), selected) << key;
    }
    EXPECT_EQ(Tree().Read(), "-Sessions\n  +*f <\n   Berg\n   beta\n   gamma\n   会话\n");
    dialog->Items().ClearSelection();
    dialog->Items().SetCaret(TreeItem::kNone);
    Window().PressKey(kKeyUp);
    EXPECT_EQ(Selected(), "Sessions") << "without a caret from the first row";

    const auto type = [&](const VUnicodeString& text) {
        Tree().TypeText(text);
        return Selected();
    };
    EXPECT_EQ(type(u"b"_v), "Berg");
    EXPECT_EQ(type(u"e"_v), "Berg");
    EXPECT_EQ(type(u"T"_v), "beta");
    EXPECT_EQ(type(u"q"_v), "beta") << "there is none";
    Window().Elapse(1000);
    EXPECT_EQ(type(u"b"_v), "Berg") << "a new text, and round";
    EXPECT_EQ(type(u"b"_v), "beta") << "the next one";
    Window().Elapse(1000);
    EXPECT_EQ(type(u"会"_v), "会话");
    Window().Elapse(1000);
    EXPECT_EQ(type(u" "_v), "会话");
}

TEST_F(ConnectWindow, ALaterClickOnTheSelectedLabelRenamesUnlessTheUserGoesOn) {
    AddSessions({u"a", u"b"});
    Open();
    for (int i = 0; i < 2; ++i) Click(u"");
    Window().Elapse(1000);
    EXPECT_FALSE(Tree().IsEditing()) << "the root has no other name";
    Click(u"a");
    Window().Elapse(1000);
    EXPECT_FALSE(Tree().IsEditing()) << "that click selected it";
    Click(u"a");
    Window().Elapse(499);
    EXPECT_FALSE(Tree().IsEditing());
    Window().Elapse(1);
    EXPECT_TRUE(Tree().TypeLabel(u"c"_v));
    EXPECT_EQ(StoredIn(u""), "b c");
    // No edit opens under a box that a command brought up, nor behind it.
    kit.AnswerBoxes([&](const VUnicodeString&, unsigned) {
        Window().Elapse(1000);
        EXPECT_FALSE(Tree().IsEditing());
        return kAnswerNo;
    });
    const std::function<void()> others[] = {
        [&] { EXPECT_TRUE(Window().Press(ConnectCommands::kBarDelete)); }, [&] { Window().PressKey(kKeyDelete); },
        [&] { Command(ConnectCommands::kDelete); }, [&] { Window().PressKey(kKeyUp); },
        [&] { Click(u""); }};  // which has no other name
    for (const auto& act : others) {
        Click(u"");
        Click(u"c");
        Click(u"c");
        act();
        Window().Elapse(1000);
        EXPECT_FALSE(Tree().IsEditing()) << &act - others;
    }
    EXPECT_EQ(kit.GetBoxes().size(), 3U);
}

}  // namespace
}  // namespace connectdialog::test
