// A user's ways through the connect dialog and the session's options on real widgets: each part of the back end takes
// part in one.
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include "config/protocolchoice.h"
#include "config/settingwalk.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/dialogkit/vpopupmenu.h"
#include "layoutcheck.h"
#include "qtconnectdialogtest.h"
#include "qtuser.h"
#include "resources/accelerators.h"
#include "suite/dialogkit/qt/qtdialogframe.h"
#include "suite/dialogkit/qt/qttree.h"
#include "suite/sessionoptions/optiontemplate.h"
#include "suite/sessionoptions/sessionoptions.h"
#include "support/suitetest.h"

namespace connectdialog::test {
namespace {

using namespace ConnectDialogIds;

using QtConnectDialog = QtConnectDialogTest;

TEST_F(QtConnectDialog, IsWorkedInWithTheKeyboardAlone) {
    AddSessions({u"f\\s1", u"f\\s2", u"web"});
    Open();
    EXPECT_EQ(Window().GetFocus(), kTree);
    const auto press = [&](std::uint16_t key, KeyModifiers modifiers = 0) {
        Window().PressKey(key, modifiers);
        QApplication::processEvents();
    };
    for (const std::uint16_t key : {kKeyRight, kKeyDown, kKeyReturn, kKeyDown}) press(key);
    EXPECT_EQ(Selected(), "s1");
    press(kKeyDown, Accelerator::kShift);
    EXPECT_EQ(Selected(), "s1 s2");
    press(u'W');
    EXPECT_EQ(Selected(), "web") << "typed";
    press(kKeyF2);
    ASSERT_TRUE(Tree().IsEditing());
    for (const std::uint16_t key : {kKeyF2, kKeyDelete, static_cast<std::uint16_t>(u'X')}) press(key);
    press(u'C', Accelerator::kAlt);
    press(kKeyReturn);
    EXPECT_EQ(StoredIn(u""), "f/ x") << "keys were the edit box's";
    qt.ExpectMenu([](const VPopupMenu&) { return ConnectCommands::kCopy; });
    press(kKeyMenu);
    press(u'V', Accelerator::kControl);
    EXPECT_EQ(StoredIn(u""), "f/ x x (1)");
    qt.ExpectBox(u"确定删除选中项？"_v, kAnswerYes);
    press(kKeyDelete);
    EXPECT_EQ(StoredIn(u""), "f/ x");
    press(kKeyTab);
    EXPECT_EQ(Window().GetFocus(), kShowOnStartup);
    press(kKeySpace);
    EXPECT_TRUE(panels.global->connectDialogOnStartup.Get());
    press(u'O', Accelerator::kAlt);
    EXPECT_TRUE(panels.global->openInTab.Get());
    press(u'C', Accelerator::kAlt);
    EXPECT_EQ(dialog->GetResult(), kDialogAccepted);
    EXPECT_EQ(dialog->GetChosenConfigs().GetCount(), 1U);
}

TEST_F(QtConnectDialog, IsWorkedInWithTheMouseAlone) {
    AddSessions({u"f\\s1", u"f\\s2", u"web"});
    Open();
    Expand(u"");
    Expand(u"f");
    Click(u"f\\s1");
    Click(u"web", Accelerator::kShift);
    EXPECT_EQ(Selected(), "s1 s2 web");
    Click(u"f\\s2", Accelerator::kControl);
    EXPECT_EQ(Selected(), "s1 web");
    Click(u"web");
    EXPECT_TRUE(Window().Press(ConnectCommands::kBarCut));
    EXPECT_NE(Tree().Read().find("*xweb"), std::string::npos);
    Click(u"f");
    EXPECT_TRUE(Window().Press(ConnectCommands::kBarPaste));
    EXPECT_EQ(StoredIn(u"f"), "s1 s2 web");
    EXPECT_FALSE(Window().Press(ConnectCommands::kBarPaste)) << "what was cut is pasted once";
    Click(u"f\\s2");
    qt.ExpectMenu([](const VPopupMenu&) { return ConnectCommands::kNewFolder; });
    QWidget& rows = *Tree().GetWidget().viewport();
    ClickWidget(rows, {rows.width() - 4, Tree().PointOn(At(u"f")).y}, 0, Qt::RightButton);  // beside the label
    ASSERT_TRUE(Tree().IsEditing());
    Click(u"f\\s1");
    EXPECT_EQ(StoredIn(u"f"), "New Folder/ s1 s2 web") << "the click elsewhere took the name";
    EXPECT_TRUE(Tree().DoubleClick(At(u"f\\web")));
    EXPECT_EQ(dialog->GetResult(), kDialogAccepted);
    EXPECT_EQ(dialog->GetChosenConfigs()[0]->GetPath(), u"f\\web");
}

TEST_F(QtConnectDialog, DragsMoveCopyAndOpenFolders) {
    if (QGuiApplication::platformName() == QStringLiteral("offscreen")) GTEST_SKIP() << "no drags on this screen";
    AddSessions({u"f\\g\\x", u"s", u"t"});
    Open();
    Expand(u"");
    EXPECT_TRUE(Tree().Drag(At(u"s"), [&](QtUserDrag& drag) {
        drag.MoveTo(Tree().PointOn(At(u"f")));
        EXPECT_NE(Tree().Read().find("+>f"), std::string::npos);
        drag.Wait(1200);  // rests until the folder opens
        EXPECT_EQ(drag.MoveTo(Tree().PointOn(At(u"f\\g"))), DropEffect::kMove);
        EXPECT_TRUE(drag.Drop());
    }));
    EXPECT_EQ(StoredIn(u"f\\g"), "s x");
    panels.global->sessionArrangementMode.Set(2);
    Open();
    Expand(u"");
    EXPECT_TRUE(Tree().Drag(At(u"t"), [&](QtUserDrag& drag) {
        drag.MoveTo(Tree().PointOn(At(u"")));
        drag.MoveTo(Tree().PointOn(At(u"f")));
        dialog->EndDialog(kDialogCancelled);
    })) << "closed in the middle of a drag";
    EXPECT_EQ(StoredIn(u""), "f/ t");
}

TEST_F(QtConnectDialog, ControlsFollowTheSizeThatTheUserGives) {
    Open();
    const QRect before = Window().GetControl(kTree)->geometry();
    const QRect button = Window().GetControl(kConnect)->geometry();
    const QSize inside = Window().GetFrame().size();
    Window().Resize(inside.width() + 120, inside.height() + 80);
    EXPECT_EQ(Window().GetControl(kTree)->geometry(), before.adjusted(0, 0, 120, 80));
    EXPECT_EQ(Window().GetControl(kConnect)->geometry(), button.translated(120, 80));
    Window().CloseByFrame();
    EXPECT_EQ(dialog->GetResult(), kDialogCancelled);
    Open();
    EXPECT_EQ(Window().GetFrame().size(), inside + QSize(120, 80)) << "the last size comes back";
    Window().Resize(1, 1);
    EXPECT_GE(Window().GetFrame().width(), Window().GetControl(kTerminalToolbar)->sizeHint().width());
}

TEST_F(QtConnectDialog, ItIsClosedInTheMiddleOfARenameOrOfFinding) {
    AddSessions({u"alpha", u"beta"});
    Open();
    EXPECT_TRUE(Window().Press(ConnectCommands::kBarNewFolder));
    ASSERT_TRUE(Tree().IsEditing());
    Window().CloseByFrame();
    dialog->Destroy();
    EXPECT_EQ(StoredIn(u""), "New Folder/ alpha beta");
    Open();
    Expand(u"");
    qt.ExpectDialog(FindSessionIds::kDialog, [&](QtUserDialog& find) {
        Window().CloseByFrame();
        find.Type(FindSessionIds::kText, u"bet"_v);
        find.PressKey(kKeyReturn);
    });
    Window().PressKey(u'F', Accelerator::kControl);
    EXPECT_EQ(dialog->GetResult(), kDialogCancelled);
}

TEST_F(QtConnectDialog, AProgramThatHoldsTheClipboardAndDoesNotAnswerIsWaitedForAWhileOnly) {
    if (QGuiApplication::platformName() != QStringLiteral("xcb")) GTEST_SKIP() << "no clipboard of others here";
    AddSessions({u"alpha"});
    Open();
    Expand(u"");
    Click(u"alpha");
    Window().PressKey(u'C', Accelerator::kControl);
    QProcess owner;
    owner.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--hold-clipboard")});
    ASSERT_TRUE(owner.waitForReadyRead());
    QElapsedTimer timer;
    timer.start();
    Window().PressKey(u'V', Accelerator::kControl);
    EXPECT_LT(timer.elapsed(), 20000);
    EXPECT_EQ(StoredIn(u""), "alpha");
    Window().PressKey(u'C', Accelerator::kControl);
    Window().PressKey(u'V', Accelerator::kControl);
    EXPECT_EQ(StoredIn(u""), "alpha alpha (1)") << "who copies owns the clipboard";
    owner.kill();
    owner.waitForFinished();
}

class QtSessionOptions : public SuiteTest {
  protected:
    ~QtSessionOptions() override { EXPECT_EQ(kit.TakeFaults(), ""); }

    std::int64_t Run(ISessionConfig& session, const QtPlayedKit::DialogScript& script) {
        kit.ExpectDialog(OptionIds::kDialog, script);
        return ShowSessionOptions(&session, 0, false, false, nullptr);
    }
    static int At(std::u16string_view setting) {
        for (const OptionControl& known : GetOptionControls())
            if (known.field.setting == setting) return known.control;
        return kNoId;
    }
    static void Focus(QtUserDialog& dialog, int id) { dialog.GetControl(id)->setFocus(); }

    QtPlayedKit kit;
};

TEST_F(QtSessionOptions, AUserEditsASessionByKeyboardAndMouse) {
    const VRef<SessionConfig> session = Make(u"SSH2");
    EXPECT_EQ(Run(*session,
                  [&](QtUserDialog& dialog) {
                      EXPECT_EQ(dialog.GetFocus(), At(u""));
                      EXPECT_TRUE(dialog.Type(At(u"Hostname"), u"typed.example"_v));
                      EXPECT_TRUE(dialog.Pick(At(u"Transfer Protocol Name"), u"None"_v));
                      EXPECT_TRUE(dialog.Pick(At(u"Protocol Name"), u"Telnet"_v));
                      EXPECT_FALSE(dialog.IsShown(At(u"SSH Port")));
                      EXPECT_TRUE(dialog.Type(At(u"Telnet Port"), u"0"_v));
                      kit.ExpectBox(u"“Telnet 端口”必须是 1 到 65535 之间的整数。"_v, 1);
                      Focus(dialog, OptionIds::kPages);
                      dialog.PressKey(kKeyDown);
                      EXPECT_EQ(dialog.GetFocus(), At(u"Telnet Port")) << "it stays with what was refused";
                      EXPECT_TRUE(dialog.Type(At(u"Telnet Port"), u"2323"_v));
                      EXPECT_TRUE(dialog.Type(At(u"Description"), u"one\ntwo"_v));
                      Focus(dialog, OptionIds::kPages);
                      dialog.PressKey(kKeyEnd);
                      EXPECT_TRUE(dialog.Type(OptionIds::kFilter, u"jump scroll"_v));
                      EXPECT_TRUE(dialog.Pick(OptionIds::kSettingChoice, u"否"_v));
                      dialog.Press(kIdOk);
                  }),
              1);
    VUnicodeString text;
    session->GetConnectConfig()->GetHostName(text);
    EXPECT_EQ(Escape(text), "typed.example");
    EXPECT_EQ(session->GetConnectConfig()->GetPort(), 2323);
    session->description.GetText(text, false);
    EXPECT_EQ(text, u"one\ntwo");
    EXPECT_FALSE(session->terminal.jumpScroll.Get());
}

TEST_F(QtSessionOptions, NoPageHasTextsCutOffOrControlsOnEachOther) {
    FetchGlobalConfig()->optionsPagePath.Set(u"Connection"_v);
    for (const VUnicodeString& protocol : ListProtocols(ProtocolSide::kTerminal)) {
        const VRef<SessionConfig> session = Make(protocol.GetData());
        Run(*session, [](QtUserDialog& dialog) {
            Focus(dialog, OptionIds::kPages);
            for (const OptionPage& page : GetOptionPages()) {
                EXPECT_EQ(dialog.GetText(OptionIds::kPageFrame), page.title);
                CheckLayout(dialog.GetFrame(), Escape(page.path));
                dialog.PressKey(kKeyDown);
            }
        });
        FetchGlobalConfig()->optionsPagePath.Set(u"Connection"_v);
    }
}

}  // namespace
}  // namespace connectdialog::test
