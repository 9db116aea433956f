// The hosts as a user runs them, with clients and a terminal emulator of the test's own in PATH.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "imports/globalconfig.h"
#include "platform/processlaunch.h"
#include "sessiondb/runningsessions.h"
#include "sessiondb/sessiontree.h"
#include "support/processrunner.h"
#include "support/suitetest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

/// A name that a shell would run, and an option for a client that took it for one.
constexpr char16_t kHostileName[] = u"-x '; touch bad; $(touch bad) `touch bad` \"&|";

class HostsTest : public SuiteTest {
  protected:
    HostsTest() {
        VReportMessageParams report;
        const VUnicodeString url((StoreUrl()).c_str());
        const auto store = stores::OpenProfileStoreFactory(url, report);
        InstallReferenceSuite(u"NorHalden"_v, *store);
        FetchGlobalConfig()->updateReminderSuppressed.Set(1);
        FetchGlobalConfig()->Save();
        AddSession(u"web \u540D", u"SSH2", u"host.example");
        AddSession(u"second", u"SSH2", u"second.example");
        AddSession(u"third", u"SSH2", u"third.example");
        AddSession(u"hostile", u"SSH2", u"-oProxyCommand=touch x");
        AddSession(u"files", u"None", u"files.example", u"SFTP");
        AddSession(u"line", u"Serial", u"/dev/ttyS9");
        AddFolderEntry(u"", u"Servers", u"", false);
        AddFolderEntry(u"", u"Nothing", u"", false);
        AddFolderEntry(u"Servers", u"Inner", u"", false);
        AddSession(kHostileName, u"SSH2", u"odd.example", u"None", u"Servers");
        AddSession(u"deep", u"SSH2", u"deep.example", u"None", u"Servers\\Inner");
        AddSession(u"files too", u"None", u"files.example", u"SFTP", u"Servers");
        InstallReferenceSuite(u"NorHalden"_v, *factory);
        // Writes each argument on a line of its own, in angle brackets.
        scratch.WriteProgram("ssh", "printf '<%s>\\n' \"$@\"\nexit 7\n");
        scratch.WriteProgram("sftp", "printf '<%s>\\n' \"$@\"\n");
    }

    static void AddSession(const char16_t* name, const char16_t* protocol, const char16_t* target,
                           const char16_t* transfer = u"None", const char16_t* folder = u"") {
        const auto session = Make(protocol);
        session->SetTransferProtocolName(transfer);
        ConnectConfig* config = session->GetConnectConfig();
        (config != nullptr ? config : session->GetTransferConnectConfig())->SetHostName(target);
        ASSERT_TRUE(StoreSessionEntry(folder, name, *session, u"", false));
    }
    /// A terminal emulator that reads the words behind "-e" as a shell would, as some do.
    void WriteTerminal() const {
        scratch.WriteProgram(
            "x-terminal-emulator",
            "cd " + scratch.GetPath().string() + "\n[ \"$1\" = -e ] || exit 3\nshift\neval \"$*\" >> opened\nexit 0\n");
    }
    std::string WaitForOpened(std::size_t lines) const {
        std::string text;
        for (int i = 0; i < 500; ++i) {
            text = std::filesystem::exists(scratch / "opened") ? ReadFile(scratch / "opened") : "";
            if (std::count(text.begin(), text.end(), '\n') >= static_cast<std::ptrdiff_t>(lines)) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return text;
    }

    std::string StoreUrl() const { return "sqlite:" + (scratch / "sessions.db"); }

    ProcessResult Run(std::vector<std::string> arguments, const char* program = NORHALDEN_PROGRAM,
                      const std::vector<std::string>& more = {}) const {
        arguments.insert(arguments.begin(), program);
        const std::string folder = scratch.GetPath().string();
        std::vector<std::string> environment = {"PATH=" + folder,   "XDG_RUNTIME_DIR=" + folder,
                                                "DISPLAY=",         "WAYLAND_DISPLAY=",
                                                "QT_QPA_PLATFORM=", "BRENNMARK_STORE=" + StoreUrl()};
        environment.insert(environment.end(), more.begin(), more.end());
        return RunProcess(arguments, environment);
    }

    TemporaryFolder scratch;
};

TEST_F(HostsTest, TheClientTakesOverWithExactlyTheseArguments) {
    const std::string expected = "<-p>\n<22>\n<-->\n<host.example>\n";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"/S", "web \u540D"}, {"--store", StoreUrl(), "/s", "WEB \u540D"}}) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.output, expected);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.exitCode, 7);
    }
}

TEST_F(HostsTest, SeveralSessionsOpenOneAfterTheOther) {
    scratch.Write("ssh", "#!/bin/sh\necho \"$4\"\n[ \"$4\" != third.example ] || kill $$\n");
    EXPECT_EQ(Run({"/S", "web \u540D", "/S", "second", "/s", "web \u540D"}).output,
              "host.example\nsecond.example\nhost.example\n");
    const ProcessResult ended = Run({"/S", "third", "/S", "second"});
    EXPECT_EQ(ended.output, "third.example\n") << "a client that is killed ends the row";
    EXPECT_EQ(ended.exitCode, 128 + SIGTERM);
    EXPECT_EQ(Run({"/S", "second", "/S", "absent"}).output, "") << "all or none";
    EXPECT_EQ(Run({"/session_folder", "Servers\\Inner", "/S", "second"}).output, "second.example\ndeep.example\n");
    EXPECT_EQ(Run({"/SESSION_FOLDER", "Servers"}).output, "odd.example\ndeep.example\n");
}

TEST_F(HostsTest, TheTransferHostOpensTheOtherSide) {
    const ProcessResult result = Run({"/S", "files"}, TESSALY_PROGRAM);
    EXPECT_EQ(result.output, "<-P>\n<22>\n<-->\n<files.example>\n") << result.errors;
    EXPECT_EQ(Run({"/SESSION_FOLDER", "\\"}, TESSALY_PROGRAM).exitCode, 0);
    const ProcessResult other = Run({"/S", "second"}, TESSALY_PROGRAM);
    EXPECT_NE(other.errors.find("norhalden opens it"), std::string::npos) << other.errors;
}

TEST_F(HostsTest, WindowsOpenEachSessionWhateverItsNameAndTheTerminalEmulator) {
    WriteTerminal();
    const ProcessResult result = Run({"--window", "/SESSION_FOLDER", "Servers"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    const std::string opened = WaitForOpened(8);
    EXPECT_NE(opened.find("<deep.example>"), std::string::npos) << opened;
    EXPECT_NE(opened.find("<odd.example>"), std::string::npos) << opened;
    EXPECT_FALSE(std::filesystem::exists(scratch / "bad"));

    std::filesystem::remove(scratch / "opened");
    scratch.WriteProgram("x-terminal-emulator",
                         "case \"$*\" in *Inner*) echo \"$2\" > " + (scratch / "opened") + ";; *) exit 3 ;; esac\n");
    EXPECT_EQ(Run({"--window", "/SESSION_FOLDER", "Servers"}).exitCode, 1);
    EXPECT_NE(WaitForOpened(1), "") << "a window that fails does not keep the next one from opening";

    scratch.WriteProgram("x-terminal-emulator", "exit 3\n");
    EXPECT_NE(Run({"--window", "/S", "second"}).errors.find("ended at once"), std::string::npos);
    std::filesystem::remove(scratch / "x-terminal-emulator");
    EXPECT_NE(Run({"--window", "/S", "second"}).errors.find("Debian package xterm"), std::string::npos);
    EXPECT_EQ(Run({"--terminal", "nowhere"}).exitCode, 1);
    scratch.WriteProgram("own term", "echo \"<$1>\" > " + (scratch / "kept") + "\n");
    EXPECT_EQ(Run({"--terminal", "\"own term\" --tab --"}).exitCode, 0);
    EXPECT_EQ(Run({"--window", "/S", "second"}).exitCode, 0);
    EXPECT_EQ(ReadFile(scratch / "kept"), "<--tab>\n") << "the command is remembered";
    const std::string foreign = "sqlite:" + (scratch / "foreign.db");
    std::filesystem::copy_file(scratch / "sessions.db", scratch / "foreign.db");
    EXPECT_EQ(Run({"--terminal", "sh", "--store", foreign}).exitCode, 1);
    EXPECT_NE(Run({"--window", "--store", foreign, "/S", "second"}).errors.find("xterm"), std::string::npos)
        << "a store from elsewhere names no programs";
}

TEST_F(HostsTest, WithoutAScreenTheDialogEndsWithAWayOut) {
    for (const char* display : {"DISPLAY=", "DISPLAY=:987", "WAYLAND_DISPLAY=none", "QT_QPA_PLATFORM=xcb"}) {
        const ProcessResult result = Run({}, NORHALDEN_PROGRAM, {display});
        EXPECT_EQ(result.exitCode, 1) << display;
        EXPECT_NE(result.errors.find("connectctl"), std::string::npos) << result.errors;
        EXPECT_NE(result.errors.find("/S PATH"), std::string::npos) << result.errors;
        EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    }
}

TEST_F(HostsTest, OthersAreToldWhatIsOpenWhileItRuns) {
    setenv("XDG_RUNTIME_DIR", scratch.GetPath().c_str(), 1);
    const std::string wait = "while [ ! -e " + (scratch / "stop") + " ]; do /bin/sleep 0.02; done\n";
    scratch.Write("ssh", "#!/bin/sh\n: > " + (scratch / "started") + '\n' + wait);
    std::thread host([this] { EXPECT_EQ(Run({"/S", "web \u540D", "/S", "second"}).exitCode, 0); });
    while (!std::filesystem::exists(scratch / "started")) std::this_thread::yield();
    const RunningSessions running = GetRunningSessionPaths();
    scratch.Write("stop", "");
    host.join();
    ASSERT_EQ(running.paths.GetCount(), 2U);
    EXPECT_EQ(running.paths[0], u"web \u540D");
    EXPECT_EQ(running.paths[1], u"second");
    EXPECT_TRUE(GetRunningSessionPaths().paths.IsEmpty());
    unsetenv("XDG_RUNTIME_DIR");
}

TEST_F(HostsTest, WhatCannotBeOpenedIsToldInOneLine) {
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"/S", "hostile"}, "\"Hostname\""},
        {{"/S", "files"}, "tessaly"},
        {{"/S", "line"}, "Debian package picocom"},
        {{"/S", "Servers"}, "is a folder"},
        {{"/SESSION_FOLDER", "Nothing"}, "no session"},
        {{"/SESSION_FOLDER", "line"}, "no folder"},
        {{"/S", "absent"}, "does not exist"},
        {{"/S", ""}, "\"\""},
        {{"/S", "x\x1B[31m"}, "does not exist"},
        {{"/S", std::string(100000, 'x')}, "does not exist"},
        {{"--store", "nothing:x", "/S", "line"}, ""},
        {{"--store", "sqlite:/", "/S", "line"}, ""},
    };
    const std::string before = ReadFile(scratch / "sessions.db");
    for (const auto& [arguments, part] : rows) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 1) << result.errors;
        EXPECT_NE(result.errors.find(part), std::string::npos) << result.errors.substr(0, 200);
        EXPECT_TRUE(result.errors.starts_with("norhalden: "));
        EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors.substr(0, 200);
        EXPECT_EQ(result.errors.find('\x1B'), std::string::npos);
        EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(ReadFile(scratch / "sessions.db"), before) << "opening a session changed the store";
}

TEST_F(HostsTest, AnAddressThatIsNoneEndsBeforeAnyWindow) {
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"--quick", ""}, "Address"},
        {{"--quick", "-oProxyCommand=touch bad"}, "Address"},
        {{"--link", "--terminal=x"}, "a link begins with"},
        {{"--link", "host.example"}, "a link begins with"},
        {{"--link", "ssh://-oProxyCommand=touch%20bad"}, "Hostname"},
        {{"--link", "ssh://-l%40h"}, "Username"},
        {{"--link", "ssh://$(touch bad)@h"}, "Username"},
        {{"--link", "ssh://u%3Bfp=1@h"}, "Username"},
        {{"--link", "ssh://h%0A-x"}, "Address"},
        {{"--link", "ssh://h%00"}, "Address"},
        {{"--link", "ssh://h%4"}, "percent-encoded"},
        {{"--link", "ssh://h/;touch bad"}, "Hostname"},
        {{"--link", "file:///etc/passwd"}, "\"file\""},
    };
    for (const auto& [arguments, part] : rows) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments[1];
        EXPECT_NE(result.errors.find(part), std::string::npos) << result.errors;
        EXPECT_EQ(result.errors.find('\n'), result.errors.size() - 1) << result.errors;
    }
}

TEST_F(HostsTest, AnAddressGoesToTheProgramThatHasItsProtocol) {
    EXPECT_TRUE(Run({"--quick", "sftp://h"}).errors.starts_with("tessaly: "));
    EXPECT_TRUE(
        Run({"--store", StoreUrl(), "--main", "--link", "SSH://h"}, TESSALY_PROGRAM).errors.starts_with("norhalden: "));
    EXPECT_TRUE(Run({"--quick", "h"}, TESSALY_PROGRAM).errors.starts_with("tessaly: "));
}

#ifdef HOST_PROBE

TEST_F(HostsTest, AnAddressOpensOnceItIsAcceptedInQuickConnect) {
    WriteTerminal();
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"--quick", "u@h.example:2222"}, "<-p>\n<2222>\n<-l>\n<u>\n<-->\n<h.example>\n"},
        {{"--link", "ssh://a%40b@[2001:db8::1]:22/"}, "<-p>\n<22>\n<-l>\n<a@b>\n<-->\n<2001:db8::1>\n"},
    };
    for (const auto& [arguments, expected] : rows)
        for (const bool isAccepted : {false, true}) {
            std::filesystem::remove(scratch / "opened");
            std::vector<std::string> words = {"--keys", isAccepted ? "Return" : "Escape"};
            words.insert(words.end(), arguments.begin(), arguments.end());
            const ProcessResult result = Run(words, HOST_PROBE, {"QT_QPA_PLATFORM=offscreen"});
            EXPECT_EQ(result.exitCode, 0) << result.errors;
            EXPECT_EQ(WaitForOpened(isAccepted ? 6 : 0), isAccepted ? expected : "");
        }
    EXPECT_EQ(Run({"--keys", "Escape", "--link"}, HOST_PROBE, {"QT_QPA_PLATFORM=offscreen"}).exitCode, 0);
}

TEST_F(HostsTest, TheFirstRunAsksForTheFolderOfTheStore) {
    const std::string home = scratch / "home";
    const std::string data = home + "/data/brennmark";
    const auto run = [&](const char* keys) {
        return Run({"--keys", keys}, HOST_PROBE,
                   {"QT_QPA_PLATFORM=offscreen", "BRENNMARK_STORE=", "HOME=" + home,
                    "XDG_CONFIG_HOME=" + home + "/conf", "XDG_DATA_HOME=" + home + "/data"});
    };
    EXPECT_EQ(run("Escape").exitCode, 1);
    for (const char* option : {"/S", "/SESSION_FOLDER"}) {
        const ProcessResult result = Run({option, "absent"}, NORHALDEN_PROGRAM,
                                         {"BRENNMARK_STORE=", "HOME=" + home, "XDG_CONFIG_HOME=" + home + "/conf",
                                          "XDG_DATA_HOME=" + home + "/data"});
        EXPECT_NE(result.errors.find("no store"), std::string::npos) << result.errors;
    }
    EXPECT_FALSE(std::filesystem::exists(home)) << "neither giving up nor a session makes anything";
    // The reminder is answered with No; a folder in the connect dialog makes the store.
    EXPECT_EQ(run("Return Escape Home Alt+F Return").exitCode, 0);
    EXPECT_EQ(ReadFile(home + "/conf/brennmark/store-folder"), data + '\n');
    EXPECT_TRUE(std::filesystem::exists(data + "/sessions.db"));
    const std::string other = scratch / "elsewhere";
    std::filesystem::create_directory(other);
    std::filesystem::rename(data + "/sessions.db", other + "/sessions.db");
    scratch.Write("home/conf/brennmark/store-folder", other + '\n');
    EXPECT_EQ(run("Escape").exitCode, 0) << "nothing is asked";
    EXPECT_FALSE(std::filesystem::exists(data + "/sessions.db"));
    for (const auto& [choice, told] : {std::pair{std::string("no path"), "store-folder"}, {other + "/gone", "/gone"}}) {
        scratch.Write("home/conf/brennmark/store-folder", choice + '\n');
        const ProcessResult refused = run("Escape");
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_NE(refused.errors.find(told), std::string::npos) << refused.errors;
    }
    EXPECT_FALSE(std::filesystem::exists(other + "/gone")) << "no empty store takes the place of one that is away";
}

TEST_F(HostsTest, WhatIsChosenInTheDialogOpens) {
    WriteTerminal();
    struct Row {
        const char* keys;
        std::vector<std::string> hosts;  ///< of the clients that run in windows
    };
    const Row rows[] = {
        {"Right Down", {}},
        {"S E C Return", {"second"}},
        {"S E C Shift+Down Return", {"second", "third"}},
        {"S E R V Alt+C", {"odd", "deep"}},
        {"F Alt+C", {"files"}},  // by the other host, which the dialog starts
        {"F Alt+X", {"files"}},
        {"H Return Return S E C Alt+C", {"second"}},  // a box told why not, and the dialog came back
    };
    for (const auto& [keys, hosts] : rows) {
        std::filesystem::remove(scratch / "opened");
        const ProcessResult result =
            Run({"--keys", std::string("Home Right ") + keys}, HOST_PROBE, {"QT_QPA_PLATFORM=offscreen"});
        EXPECT_EQ(result.exitCode, 0) << keys << result.errors;
        const std::string opened = WaitForOpened(4 * hosts.size());
        EXPECT_EQ(std::ranges::count(opened, '\n'), 4 * static_cast<std::ptrdiff_t>(hosts.size())) << keys << opened;
        for (const std::string& host : hosts) EXPECT_NE(opened.find(host + ".example"), std::string::npos) << keys;
    }
    EXPECT_FALSE(std::filesystem::exists(scratch / "bad"));
}

TEST_F(HostsTest, SessionsOpenFromTheMenusOfTheTray) {
    const ProcessResult none =
        Run({"--host", "wakestone", "--keys", "Escape"}, HOST_PROBE, {"QT_QPA_PLATFORM=offscreen"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_NE(none.errors.find("no tray"), std::string::npos) << none.errors;
    EXPECT_EQ(Run({"--window", "/S", "absent"}, WAKESTONE_PROGRAM).exitCode, 1) << "norhalden's";
    if (!std::filesystem::exists("/usr/bin/dbus-run-session") || !std::filesystem::exists("/usr/bin/xvfb-run") ||
        RunProcess({"/usr/bin/python3", "-c", "import dbus, gi"}).exitCode != 0)
        GTEST_SKIP() << "the Debian package xvfb, dbus or python3-dbus is not there";
    WriteTerminal();
    {
        VReportMessageParams report;
        const auto store = stores::OpenProfileStoreFactory(VUnicodeString(StoreUrl().c_str()), report);
        InstallReferenceSuite(u"NorHalden"_v, *store);
        for (int i = 100; i < 150; ++i)
            AddFolderEntry(u"Nothing", VUnicodeString(std::to_string(i).c_str()), u"", false);
        InstallReferenceSuite(u"NorHalden"_v, *factory);
    }
    // The third path tells the menus on its way; the last ones open a box and leave by the menu while it is there.
    const std::string paths = "Servers/Inner/deep,files,Nothing/100 \u2014 139/139/?,\u5173\u4E8E(_A),\u9000\u51FA(_X)";
    const ProcessResult result = Run(
        {"/usr/bin/xvfb-run", "-a", "/usr/bin/python3", std::string(HOSTS_DATA) + "/../../tests/hosts/faketray.py",
         paths, WAKESTONE_PROGRAM, "--store", StoreUrl()},
        "/usr/bin/dbus-run-session", {"QT_QPA_PLATFORM=xcb", "PATH=" + scratch.GetPath().string() + ":/usr/bin:/bin"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    for (const char* menu :
         {"Nothing | Servers | files", "Inner | -x", "100 \u2014 139 | 140 \u2014 149", "\uFF08\u7A7A\uFF09\n"})
        EXPECT_NE(result.output.find(menu), std::string::npos) << menu << result.output;
    const std::string opened = WaitForOpened(8);
    for (const char* host : {"<deep.example>", "<files.example>"})
        EXPECT_NE(opened.find(host), std::string::npos) << opened;
}

TEST_F(HostsTest, AStoreThatCannotBeOpenedIsToldInAWindow) {
    const ProcessResult result =
        Run({"--keys", "Return Return Escape", "--store", "sqlite:/"}, HOST_PROBE, {"QT_QPA_PLATFORM=offscreen"});
    EXPECT_EQ(result.exitCode, 1);
    const std::size_t last = result.errors.rfind("norhalden: ");
    EXPECT_NE(last, result.errors.find("norhalden: ")) << "tried again";
    EXPECT_NE(result.errors.find("it is a folder", last), std::string::npos) << result.errors;
}

#endif

TEST_F(HostsTest, TheDesktopEntriesAreWhatTheirStandardWants) {
    const std::string checker = platform::FindProgram("desktop-file-validate");
    if (checker.empty()) GTEST_SKIP() << "the Debian package desktop-file-utils is not there";
    for (const char* name : {"norhalden", "tessaly", "wakestone"}) {
        const ProcessResult result = RunProcess({checker, std::string(HOSTS_DATA "/") + name + ".desktop"});
        EXPECT_EQ(result.exitCode, 0) << result.output;
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(HostsTest, WrongUsageIsExplained) {
    const std::vector<std::vector<std::string>> lines = {{"/S"},
                                                         {"web"},
                                                         {"--store"},
                                                         {"--wrong"},
                                                         {"--encoded", "/S", "%4"},
                                                         {"--terminal", "x", "/S", "y"},
                                                         {"--quick"},
                                                         {"--quick", "h", "/S", "y"},
                                                         {"--main", "/S", "y"}};
    for (const std::vector<std::string>& arguments : lines) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_NE(result.errors.find("usage: norhalden"), std::string::npos);
    }
    EXPECT_EQ(Run({"--help"}).exitCode, 0);
    EXPECT_TRUE(Run({"--version"}).output.starts_with("norhalden "));
}

}  // namespace
}  // namespace connectdialog::test
