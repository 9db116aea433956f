// The main window without a screen: its list with real windows behind it, and the way from its commands to dialogs.
#include "hosts/common/mainwindow.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "hosts/common/hostcommands.h"
#include "hosts/common/quickstart.h"
#include "hosts/common/sessionreport.h"
#include "resources/dialogids.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlessframe.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/sessionoptions/optiontemplate.h"
#include "support/suitetest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::hosts {
namespace {

using namespace std::chrono_literals;
using test::TemporaryFolder;

class MainWindowTest : public test::SuiteTest {
  protected:
    MainWindowTest() {
        setenv("PATH", (scratch.GetPath().string() + ":/usr/bin:/bin").c_str(), 1);
        setenv("XDG_RUNTIME_DIR", scratch.GetPath().c_str(), 1);
        setenv("XDG_CONFIG_HOME", scratch.GetPath().c_str(), 1);  // no menus of whoever runs this
        VReportMessageParams report;
        sessions = stores::OpenProfileStoreFactory(VUnicodeString(run.storeUrl.c_str()), report);
        InstallReferenceSuite(u"NorHalden"_v, *sessions);
        for (const auto& [name, host] : {std::pair{u"web", u"web.example"}, {u"odd", u"-oProxyCommand=x"}}) {
            const auto session = Make(u"SSH2");
            session->GetConnectConfig()->SetHostName(host);
            EXPECT_TRUE(StoreSessionEntry(u"", name, *session, u"", false));
        }
        scratch.WriteProgram("x-terminal-emulator", "echo $$ > " + (scratch / "pid") + "\nshift 2\neval exec " +
                                                        NORHALDEN_PROGRAM + " \"$*\"\n");
    }
    ~MainWindowTest() override {
        setenv("PATH", path.c_str(), 1);
        unsetenv("XDG_RUNTIME_DIR");
        unsetenv("XDG_CONFIG_HOME");
        InstallReferenceSuite(u"NorHalden"_v, *factory);
        EXPECT_EQ(kit.TakeFaults(), "");
    }

    /// Plays the user in a main window.
    void Play(const std::function<void(MainWindow& window, HeadlessFrame& frame)>& script) {
        MainWindow window(run);
        ASSERT_TRUE(window.Create(nullptr));
        std::string order;
        kit.ExpectFrame([&](HeadlessFrame& frame) {
            order += "played";
            script(window, frame);
        });
        window.Run([&] { order += "begun "; });
        EXPECT_EQ(order, "begun played");
    }
    static void Await(HeadlessFrame& frame, std::size_t row, std::u16string_view state) {
        for (int i = 0; i < 20 && frame.GetRows()[row].texts[3].View() != state; ++i)
            if (!frame.AwaitWake(5s)) break;
        EXPECT_EQ(frame.GetRows()[row].texts[3], state);
    }

    TemporaryFolder scratch;
    const std::string path = getenv("PATH");
    const HostRun run{kNorHalden, "sqlite:" + (scratch / "sessions.db"), true};
    std::unique_ptr<VProfileStoreFactory> sessions;
    HeadlessDialogKit kit;
};

TEST_F(MainWindowTest, AMissingHostIsAskedForAndKeptAndTheRowHasTheStoredName) {
    scratch.WriteProgram("ssh", "exit 0\n");
    EXPECT_TRUE(StoreSessionEntry(u"", u"bare", *Make(u"SSH2"), u"", false));
    Play([&](MainWindow& window, HeadlessFrame& frame) {
        kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& dialog) { dialog.Press(kIdCancel); });
        window.OpenAt(u"bare"_v, false);
        EXPECT_TRUE(frame.GetRows().empty());
        kit.ExpectDialog(HostnamePromptIds::kDialog, [](HeadlessDialog& dialog) {
            EXPECT_TRUE(dialog.Type(HostnamePromptIds::kHostname, u"bare.example"));
            EXPECT_TRUE(dialog.Press(kIdOk));
        });
        window.OpenAt(u"\\BARE"_v, false);
        ASSERT_EQ(frame.GetRows().size(), 1U);
        EXPECT_EQ(frame.GetRows()[0].texts[0], u"bare");
        EXPECT_EQ(frame.GetRows()[0].texts[2], u"bare.example");
        Await(frame, 0, u"已结束");
    });
}

TEST_F(MainWindowTest, ASessionOfTheOtherSideOpensInTheSisterApplication) {
    const auto files = Make(u"None");
    files->SetTransferProtocolName(u"SFTP");
    files->GetTransferConnectConfig()->SetHostName(u"files.example");
    EXPECT_TRUE(StoreSessionEntry(u"", u"files", *files, u"", false));
    scratch.WriteProgram("tessaly", "echo \"$*\" > " + (scratch / "new") + "\nmv " + (scratch / "new") + " " +
                                        (scratch / "opened") + "\n");
    Play([&](MainWindow& window, HeadlessFrame& frame) {
        window.OpenAt(u"FILES"_v, false);
        EXPECT_TRUE(frame.GetRows().empty());
    });
    for (int i = 0; i < 250 && scratch.Read("opened").empty(); ++i) std::this_thread::sleep_for(20ms);
    EXPECT_TRUE(scratch.Read("opened").ends_with("/S files\n"));
}

TEST_F(MainWindowTest, TheListTellsHowSessionsFare) {
    scratch.WriteProgram("ssh", "exit 7\n");
    Play([&](MainWindow& window, HeadlessFrame& frame) {
        EXPECT_FALSE(frame.Choose(HostCommands::kRemoveEnded)) << "nothing is there to remove";
        window.OpenAt(u"web"_v, false);
        ASSERT_EQ(frame.GetRows().size(), 1U);
        EXPECT_EQ(frame.GetRows()[0].texts[0], u"web");
        EXPECT_EQ(frame.GetRows()[0].texts[1], u"SSH2");
        EXPECT_EQ(frame.GetRows()[0].texts[2], u"web.example");
        EXPECT_EQ(frame.GetRows()[0].texts[3], u"正在启动");
        Await(frame, 0, u"已结束（退出代码 7）");

        // The same row once more, and this time the window is killed.
        scratch.WriteProgram("ssh", "while [ ! -e " + (scratch / "stop") + " ]; do sleep 0.02; done\n");
        EXPECT_TRUE(frame.Activate(0));
        Await(frame, 0, u"已打开");
        EXPECT_EQ(frame.GetStatus(), u"1 个会话已打开，列表中共 1 个");
        EXPECT_FALSE(frame.Press(HostCommands::kRemove)) << "an open one stays";
        kill(std::stoi(test::ReadFile(scratch / "pid")), SIGKILL);
        Await(frame, 0, u"已结束");
        scratch.Write("stop", "");

        scratch.WriteProgram("x-terminal-emulator", "exit 3\n");
        kit.ExpectMenu([](const VPopupMenu&) { return HostCommands::kOpenAgain; });
        EXPECT_TRUE(frame.AskListMenu());
        EXPECT_EQ(frame.GetRows()[0].texts[3], u"正在启动");
        kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
        Await(frame, 0, u"无法启动");
        ASSERT_EQ(kit.GetBoxes().size(), 1U);
        EXPECT_NE(kit.GetBoxes()[0].text.View().find(u"x-terminal-emulator"), std::u16string_view::npos);
        EXPECT_TRUE(frame.PressKey(kKeyDelete));
        EXPECT_TRUE(frame.GetRows().empty());
    });
}

TEST_F(MainWindowTest, CommandsLeadToTheDialogs) {
    const auto giveUp = [](HeadlessDialog& dialog) { EXPECT_TRUE(dialog.CloseByFrame()); };
    Play([&](MainWindow& window, HeadlessFrame& frame) {
        for (const auto& [command, dialog] : {std::pair{HostCommands::kConnect, ConnectDialogIds::kDialog},
                                              {HostCommands::kQuickConnect, QuickConnectIds::kDialog},
                                              {HostCommands::kNewSession, WizardIds::kSheet},
                                              {HostCommands::kOptions, OptionIds::kDialog}}) {
            kit.ExpectDialog(dialog, giveUp);
            EXPECT_TRUE(frame.Choose(command)) << command;
            EXPECT_EQ(kit.TakeFaults(), "") << command;
        }
        kit.ExpectDialog(ConnectDialogIds::kDialog, [](HeadlessDialog& dialog) { dialog.Elapse(1); });
        kit.ExpectDialog(FindSessionIds::kDialog, giveUp);
        EXPECT_TRUE(frame.PressKey('F', Accelerator::kControl));
        scratch.WriteProgram("telnet", "");
        QuickAddress address;
        VUnicodeString fault;
        ASSERT_TRUE(ReadQuickAddress("telnet://quick.example:2323", true, address, fault) && FillQuickConnect(address));
        kit.ExpectDialog(QuickConnectIds::kDialog, [](HeadlessDialog& dialog) { EXPECT_TRUE(dialog.Press(kIdOk)); });
        window.AskQuickConnect();
        for (const bool isAgain : {false, true}) {
            if (isAgain) window.OpenAgain();
            Await(frame, 0, u"已结束");
            EXPECT_EQ(frame.GetRows()[0].texts[0], u"quick.example") << "by its host, as it has no name";
            EXPECT_TRUE(frame.Select({0}));
            EXPECT_FALSE(window.IsEnabled(HostCommands::kProperties));
        }
        kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerOk; });
        EXPECT_TRUE(frame.PressKey(kKeyF1));
        EXPECT_NE(kit.GetBoxes().back().text.View().find(u"\nCtrl+O 连接    Alt+Q 快速连接    "),
                  std::u16string_view::npos);
        window.OpenAt(u"odd"_v, false);
        EXPECT_NE(kit.GetBoxes().back().text.View().find(u"Hostname"), std::u16string_view::npos)
            << "a host name is never an option";
        EXPECT_EQ(frame.GetRows().size(), 1U);
    });
}

TEST_F(MainWindowTest, ItComesBackWhereItWasClosed) {
    const VRectangle place{100, 80, 740, 480};
    Play([&](MainWindow&, HeadlessFrame& frame) {
        EXPECT_TRUE(frame.Move(place));
        EXPECT_TRUE(frame.Choose(HostCommands::kExit));
        EXPECT_TRUE(frame.IsClosed());
    });
    InstallReferenceSuite(u"NorHalden"_v, *sessions);
    Play([&](MainWindow&, HeadlessFrame& frame) { EXPECT_EQ(frame.GetPlacement().normal, place); });
}

TEST_F(MainWindowTest, WordsThatNameNoMainWindowAreToldNothing) {
    const platform::HostAnnouncement window(u"c", [](const platform::HostMessage&) { return 0; });
    for (const std::string& word : {std::string(), std::string("-"), "x/../" + window.GetName() + "-1",
                                    window.GetName() + "-", window.GetName() + "-1x", window.GetName() + "0-1"}) {
        SessionReport report(word);
        EXPECT_FALSE(report.IsHeard()) << word;
        report.Open();
    }
    EXPECT_TRUE(SessionReport(MakeReportWord(window.GetName(), 1)).IsHeard());
}

}  // namespace
}  // namespace connectdialog::hosts
