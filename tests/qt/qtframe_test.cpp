// The main window on real widgets.
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QToolBar>
#include <gtest/gtest.h>
#include <limits>

#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "qtuser.h"
#include "resources/accelerators.h"
#include "resources/connectcommands.h"
#include "suite/dialogkit/qt/qtframewindow.h"

namespace connectdialog::test {
namespace {

constexpr int kFirst = ConnectCommands::kConnect;
constexpr int kSecond = 3001;
constexpr int kThird = 3002;

/// Writes down what it is told.
class QtFrames : public ::testing::Test, public IFrameEvents {
  protected:
    QtFrames() : window(kit.CreateFrameWindow(*this)), frame(dynamic_cast<QtFrameWindow&>(*window)) {
        window->SetTitle(u"主窗口"_v);
        const VUnicodeString headings[] = {u"名称"_v, u"状态"_v};
        window->SetColumns(headings);
        SetRows(3);
    }
    ~QtFrames() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    void SetRows(std::size_t count) {
        std::vector<FrameRow> rows(count);
        for (std::size_t i = 0; i < count; ++i) rows[i].texts = {u"<b>web</b>"_v, u"已打开"_v};
        window->SetRows(rows);
    }
    void ShowMenu(const VUnicodeString& first) {
        VPopupMenu entries;
        entries.Add(kFirst, first);
        entries.AddSeparator();
        entries.Add(kSecond, u"第二(&S)"_v);
        entries.Enable(kSecond, isSecondEnabled);
        VPopupMenu menu;
        menu.AddSubMenu(u"文件(&F)"_v, entries);
        window->SetMenuBar(menu);
    }
    /// Runs the window; `script` plays the user, then it is closed by its frame.
    void Play(const std::function<void()>& play) {
        script = play;
        window->Wake();
        window->Run();
    }
    void OnFrameWoken() override {
        (void)QTest::qWaitForWindowActive(&frame.GetWidget());
        script();
        frame.GetWidget().close();
    }
    void OnFrameCommand(int command) override {
        notes += std::to_string(command) + " ";
        if (onCommand) std::exchange(onCommand, nullptr)();
    }
    void OnRowActivated(std::size_t row) override { notes += "row" + std::to_string(row) + " "; }
    void OnListMenu(VPoint point) override {
        const QWidget& list = frame.GetList();
        const bool isInside = list.rect().contains(list.mapFromGlobal(ToQt(point)));
        notes += isInside ? "menu " : "menu outside ";
    }
    void OnSelectionChanged() override { notes += "selection "; }
    bool OnFrameClose() override { return ++closes > 1; }
    std::string TakeNotes() { return std::exchange(notes, {}); }
    void Key(std::uint16_t key, KeyModifiers modifiers = 0) { SendKey(frame.GetWidget(), key, modifiers); }

    QtPlayedKit kit;
    std::unique_ptr<IFrameWindow> window;
    QtFrameWindow& frame;
    std::function<void()> script;
    std::function<void()> onCommand;
    std::string notes;
    bool isSecondEnabled = false;
    int closes = 1;
};

TEST_F(QtFrames, MenusBarsAndKeysGiveTheirCommands) {
    ShowMenu(u"打开(&O)\tCtrl+O"_v);
    VToolbarState below;
    VToolbarState::Button third;
    third.command = kThird;
    third.text = u"两\n行"_v;
    below.Add(third);
    VToolbarState bar;
    bar.Add(kFirst, u"打开"_v);
    window->SetToolbar(2, below);
    window->SetToolbar(1, bar);
    const Accelerator keys[] = {{Accelerator::kControl, 'O', kFirst}, {0, kKeyDelete, kSecond}, {0, kKeyF1, kThird}};
    window->SetAccelerators(keys);
    Play([&] {
        EXPECT_LT(frame.GetBar(1)->y(), frame.GetBar(2)->y());
        Key('O', Accelerator::kControl);
        Key(kKeyDelete);
        Key(kKeyF1);
        EXPECT_EQ(TakeNotes(), "2000 3001 3002 ");
        Key(kKeyF10);
        for (const std::uint16_t key : {kKeyDown, kKeyDown, kKeyReturn}) {
            QApplication::processEvents();
            QTest::keyClick(QApplication::activePopupWidget() != nullptr ? QApplication::activePopupWidget()
                                                                         : frame.GetWidget().menuBar(),
                            key == kKeyDown ? Qt::Key_Down : Qt::Key_Return);
        }
        EXPECT_EQ(TakeNotes(), "2000 ") << "by F10 and arrows, past an entry that is disabled";
        // A command may make other menus and bars; what was clicked is at work still.
        onCommand = [&] {
            isSecondEnabled = true;
            ShowMenu(u"打开其他(&O)"_v);
            window->SetToolbar(2, bar);
            window->SetAccelerators({});
        };
        QWidget* button = frame.GetBar(2)->widgetForAction(frame.GetBar(2)->actions().first());
        EXPECT_GE(button->height(), 2 * button->fontMetrics().height());
        ClickWidget(*button, button->rect().center());
        EXPECT_EQ(TakeNotes(), "3002 ");
        Key('O', Accelerator::kControl);
        EXPECT_EQ(TakeNotes(), "") << "the keys are gone";
        EXPECT_TRUE(frame.GetWidget().menuBar()->actions().first()->menu()->actions().last()->isEnabled());
        EXPECT_FALSE(frame.GetBar(2)->accessibleName().isEmpty());
    });
}

TEST_F(QtFrames, TheListIsUsedByKeysAndMouse) {
    Play([&] {
        Key(kKeyDown);
        TakeNotes();
        Key(kKeyReturn);
        Key(kKeyMenu);
        EXPECT_EQ(TakeNotes(), "row1 menu ");
        Key(kKeyDown, Accelerator::kShift);
        EXPECT_EQ(window->GetSelectedRows(), (std::vector<std::size_t>{1, 2}));
        EXPECT_EQ(TakeNotes(), "selection ");
        SetRows(2);
        EXPECT_EQ(window->GetSelectedRows(), std::vector<std::size_t>{1});
        QtFrameList& list = frame.GetList();
        DoubleClickWidget(*list.viewport(), list.visualRect(list.model()->index(0, 1)).center());
        EXPECT_NE(TakeNotes().find("row0 "), std::string::npos);
        EXPECT_EQ(list.model()->index(0, 0).data(Qt::ToolTipRole), QStringLiteral("&lt;b&gt;web&lt;/b&gt;"));
        kit.BeforeBox([&](const QWidget& box) { EXPECT_EQ(box.parentWidget(), &frame.GetWidget()); });
        kit.ExpectBox(u"text"_v, kAnswerOk);
        VMessageBox(window.get(), u"text"_v, kBoxInformation);
        closes = 0;
        frame.GetWidget().close();
        EXPECT_TRUE(frame.GetWidget().isVisible()) << "the host did not want it";
    });
}

TEST_F(QtFrames, APlaceThatIsGoneComesBackIntoView) {
    const std::int32_t most = std::numeric_limits<std::int32_t>::max();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    VWindowPlacement placement = VWindowPlacement::Unplaced();
    const QRect usual = frame.GetWidget().geometry();
    window->SetPlacement(placement);
    EXPECT_EQ(frame.GetWidget().geometry(), usual);
    for (const VRectangle& place :
         {VRectangle{5000, 4000, 5600, 4400}, {-most, -most, most, most}, {-3000, 10, -2900, 20}}) {
        placement.normal = place;
        window->SetPlacement(placement);
        EXPECT_TRUE(screen.contains(frame.GetWidget().geometry())) << place.left;
    }
    placement.normal = {60, 70, 560, 470};
    window->SetPlacement(placement);
    EXPECT_EQ(window->GetPlacement(), placement);
}

TEST_F(QtFrames, AnEntryMayStandInTheBarItselfAndPromptsAreTold) {
    for (const char16_t* text : {u"Quit", u"&Close"}) {
        VPopupMenu::Entry entry;
        entry.command = kFirst;
        entry.text = text;
        entry.prompt = u"Ends it";
        VPopupMenu menu;
        menu.Add(entry);
        window->SetMenuBar(menu);
    }
    const QList<QAction*> entries = frame.GetWidget().findChild<QMenuBar*>()->actions();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0]->statusTip(), "Ends it");
    entries[0]->trigger();
    EXPECT_EQ(TakeNotes(), std::to_string(kFirst) + " ");

    VToolbarState bar;
    VToolbarState::Button button;
    button.command = kSecond;
    button.picture = kFirst;
    button.prompt = u"Does it";
    bar.Add(button);
    window->SetToolbar(0, bar);
    const QAction* shown = frame.GetWidget().findChild<QToolBar*>()->actions()[0];
    EXPECT_FALSE(shown->icon().isNull()) << "another command's";
    EXPECT_EQ(shown->statusTip(), "Does it");
}

}  // namespace
}  // namespace connectdialog::test
