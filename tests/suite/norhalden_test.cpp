// norhalden as a user runs it, with clients of the test's own in PATH.
#include <csignal>
#include <cstdlib>
#include <thread>

#include "sessiondb/runningsessions.h"
#include "sessiondb/sessiontree.h"
#include "support/processrunner.h"
#include "support/suitetest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

class NorHaldenTest : public SuiteTest {
  protected:
    NorHaldenTest() {
        VReportMessageParams report;
        const VUnicodeString url((StoreUrl()).c_str());
        const auto store = stores::OpenProfileStoreFactory(url, report);
        InstallReferenceSuite(u"NorHalden"_v, *store);
        AddSession(u"web \u540D", u"SSH2", u"host.example");
        AddSession(u"second", u"SSH2", u"second.example");
        AddSession(u"third", u"SSH2", u"third.example");
        AddSession(u"hostile", u"SSH2", u"-oProxyCommand=touch x");
        AddSession(u"files", u"None", u"host.example");
        AddSession(u"line", u"Serial", u"/dev/ttyS9");
        AddFolderEntry(u"", u"Servers", u"", false);
        InstallReferenceSuite(u"NorHalden"_v, *factory);
        // Writes each argument on a line of its own, in angle brackets.
        scratch.Write("ssh", "#!/bin/sh\nprintf '<%s>\\n' \"$@\"\nexit 7\n");
        std::filesystem::permissions(scratch / "ssh", std::filesystem::perms::owner_all);
    }

    static void AddSession(const char16_t* name, const char16_t* protocol, const char16_t* target) {
        const auto session = Make(protocol);
        ConnectConfig* config = session->GetConnectConfig();
        (config != nullptr ? config : session->GetTransferConnectConfig())->SetHostName(target);
        ASSERT_TRUE(StoreSessionEntry(u"", name, *session, u"", false));
    }

    std::string StoreUrl() const { return "sqlite:" + (scratch / "sessions.db"); }

    ProcessResult Run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), NORHALDEN_PROGRAM);
        const std::string folder = scratch.GetPath().string();
        return RunProcess(arguments, {"PATH=" + folder, "XDG_RUNTIME_DIR=" + folder, "BRENNMARK_STORE=" + StoreUrl()});
    }

    TemporaryFolder scratch;
};

TEST_F(NorHaldenTest, TheClientTakesOverWithExactlyTheseArguments) {
    const std::string expected = "<-p>\n<22>\n<-->\n<host.example>\n";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"/S", "web \u540D"}, {"--store", StoreUrl(), "/s", "WEB \u540D"}}) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.output, expected);
        EXPECT_EQ(result.errors, "");
        EXPECT_EQ(result.exitCode, 7);
    }
}

TEST_F(NorHaldenTest, SeveralSessionsOpenOneAfterTheOther) {
    scratch.Write("ssh", "#!/bin/sh\necho \"$4\"\n[ \"$4\" != third.example ] || kill $$\n");
    EXPECT_EQ(Run({"/S", "web \u540D", "/S", "second", "/s", "web \u540D"}).output,
              "host.example\nsecond.example\nhost.example\n");
    const ProcessResult ended = Run({"/S", "third", "/S", "second"});
    EXPECT_EQ(ended.output, "third.example\n") << "a client that is killed ends the row";
    EXPECT_EQ(ended.exitCode, 128 + SIGTERM);
    EXPECT_EQ(Run({"/S", "second", "/S", "absent"}).output, "") << "all or none";
}

TEST_F(NorHaldenTest, OthersAreToldWhatIsOpenWhileItRuns) {
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

TEST_F(NorHaldenTest, WhatCannotBeOpenedIsToldInOneLine) {
    const std::pair<std::vector<std::string>, std::string> rows[] = {
        {{"/S", "hostile"}, "\"Hostname\""},
        {{"/S", "files"}, "tessaly"},
        {{"/S", "line"}, "Debian package picocom"},
        {{"/S", "Servers"}, "is a folder"},
        {{"/S", "second", "/session_folder", "\\"}, "\"\\\" is a folder"},
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

TEST_F(NorHaldenTest, WrongUsageIsExplained) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>(), {"/S"}, {"web"}, {"--wrong"}}) {
        const ProcessResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, 2);
        EXPECT_NE(result.errors.find("usage: norhalden"), std::string::npos);
    }
    EXPECT_EQ(Run({"--help"}).exitCode, 0);
    EXPECT_TRUE(Run({"--version"}).output.starts_with("norhalden "));
}

}  // namespace
}  // namespace connectdialog::test
