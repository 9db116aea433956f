#include "suite/importers/openssh/opensshimport.h"

#include <csignal>
#include <sys/resource.h>

#include "config/sessionconfig.h"
#include "importers/importtest.h"
#include "sessiondb/sessionpaths.h"
#include "suite/importers/openssh/importmessages.h"
#include "suite/importers/openssh/memorysshfiles.h"
#include "suite/importers/openssh/sshsession.h"
#include "support/faultystore.h"
#include "support/storetools.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

class OpenSshImportTest : public ImportTest {
  protected:
    SshImportRequest request{"/c", u"Im\\port", {"me", "/home/me"}, false};
    SshImportResult result;
    VReportMessageParams report;

    bool Run(const std::string& config) {
        MemorySshFiles files({{"/c", config}});
        return ImportOpenSshConfig(files, request, result, report);
    }
    /// `outcome path text` each; outcome M, U, L or S.
    std::string Told() const {
        std::string told;
        for (const SshImportEntry& entry : result.entries) {
            told += "MULS"[static_cast<int>(entry.outcome)];
            told += ' ' + (entry.path.IsEmpty() ? entry.alias : platform::ToNarrow(entry.path));
            told += (entry.text.empty() ? "" : ' ' + entry.text) + '\n';
        }
        return told;
    }
    std::string Dump() const {
        return DumpStore(*factory, {u"Hostname", u"Username", u"SSH Port", u"SSH Jump Host", u"SSH Identity File",
                                    u"Protocol Name", u"Description", u"Session List", u"Folder List"});
    }
};

constexpr char kConfig[] =
    "Host web\n HostName web.example.org\n User me2\n Port 2222\n IdentityFile ~/.ssh/k\n ProxyJump u@gw:22\n"
    "Host db *.lan\nHost *\n User all\n";

TEST_F(OpenSshImportTest, MakesASessionOfEachHostOnce) {
    request.isDryRun = true;
    for (int pass = 0; pass < 2; ++pass) {
        EXPECT_EQ(Dump(), "") << "the dry run wrote";
        ASSERT_TRUE(Run(kConfig));
        EXPECT_EQ(Told(), "M Im\\port\\web\nM Im\\port\\db\n");
        EXPECT_TRUE(result.diagnostics.All().empty());
        request.isDryRun = false;
    }
    EXPECT_EQ(ValuesAt(u"Im\\port\\web"), "web.example.org\t2222\tme2\tu@gw:22");
    EXPECT_EQ(ValuesAt(u"Im\\port\\db"), "db\t22\tall\t");
    const auto web = OpenSession(u"Im\\port\\web");
    VUnicodeString protocol;
    web->GetProtocolName(protocol);
    EXPECT_EQ(protocol, u"SSH2");
    EXPECT_EQ(Protocol(*web).GetSettings().sshIdentityFile.Get(), u"\\home\\me\\.ssh\\k");
    EXPECT_FALSE(web->IsChanged());
    ASSERT_TRUE(Run(kConfig));
    EXPECT_EQ(Told(), "L Im\\port\\web\nL Im\\port\\db\n");

    Protocol(*web).EditSettings().sshForwardAgent.Set(true);
    ASSERT_TRUE(SaveSession(*web));
    ASSERT_TRUE(Run("Host WEB\n HostName web2\n Port 2222\n IdentityFile ~/.ssh/k\nHost db\n User all\nHost new"));
    EXPECT_EQ(Told(), "U Im\\port\\WEB Hostname, Username, SSH Jump Host\nL Im\\port\\db\nM Im\\port\\new\n");
    EXPECT_EQ(ValuesAt(u"Im\\port\\web"), "web2\t2222\t\t");
    const auto updated = OpenSession(u"Im\\port\\web");
    EXPECT_TRUE(Protocol(*updated).GetSettings().sshForwardAgent.Get()) << "what the file does not say stays";
}

TEST_F(OpenSshImportTest, LeavesFoldersAndOtherProtocolsAlone) {
    ASSERT_TRUE(AddFolderEntry(u"", u"db", VUnicodeString(), true));
    auto telnet = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"web", nullptr));
    telnet->SetPath(u"web");
    telnet->SetProtocolName(u"Telnet");
    ASSERT_TRUE(SaveSession(*telnet));
    const std::string before = Dump();
    request.folder.Empty();
    ASSERT_TRUE(Run(kConfig));
    EXPECT_EQ(Told(),
              "S web there is a session of that name with the protocol 'Telnet'\n"
              "S db there is a folder of that name\n");
    EXPECT_EQ(Dump(), before);
}

TEST_F(OpenSshImportTest, GivesEachHostANameOfItsOwn) {
    ASSERT_TRUE(Run("Host a:b a\\\\b a%b Web web WEB \" x \" . .. __folderdata__ Default caf\xC3\xA9\n"));
    EXPECT_EQ(Told(),
              "M Im\\port\\a%3Ab\nM Im\\port\\a%5Cb\nM Im\\port\\a%25b\nM Im\\port\\Web\nM Im\\port\\web (2)\n"
              "M Im\\port\\WEB (3)\nM Im\\port\\%20x%20\nM Im\\port\\%2E\nM Im\\port\\%2E.\n"
              "M Im\\port\\%5F_folderdata__\nM Im\\port\\Default\nM Im\\port\\caf\xC3\xA9\n");
    EXPECT_EQ(ValuesAt(u"Im\\port\\web (2)"), "web\t22\t\t");
    EXPECT_EQ(MakeSshSessionName(u"default", true), u"%64efault");
    EXPECT_EQ(MakeSshSessionName(u"\u3000x", true), u"%u3000x");
    ASSERT_TRUE(Run("Host " + std::string(256, 'x')));
    EXPECT_EQ(result.Count(SshImportOutcome::kSkipped), 1U);
}

TEST_F(OpenSshImportTest, RefusesWhatAClientCouldTakeForSomethingElse) {
    constexpr const char* kCases[][2] = {
        {"Host -oProxyCommand=x", "the host's alias begins with a minus sign"},
        {"Host a\x1b[2Jb", "the host's alias has a control character"},
        {"Host h\n HostName -x", "the host name begins with a minus sign"},
        {"Host h\n HostName \"a\x7f\"", "the host name has a control character"},
        {"Host h\n HostName \"a\xE2\x80\xAE\"", "the host name has a control character"},
        {"Host h\n User -l", "the user's name begins with a minus sign"},
        {"Host h\n ProxyJump a,u@-x", "a jump host begins with a minus sign"},
        {"Host h\n ProxyJump -u@a", "a jump host's user begins with a minus sign"},
        {"Host h\n IdentityFile -k", "the identity file begins with a minus sign"},
    };
    for (const auto& [config, text] : kCases) {
        ASSERT_TRUE(Run(config));
        ASSERT_EQ(result.entries.size(), 1U) << config;
        EXPECT_EQ(result.entries[0].outcome, SshImportOutcome::kSkipped);
        EXPECT_EQ(result.entries[0].text, text);
        EXPECT_EQ(result.entries[0].line, 1U);
    }
    EXPECT_FALSE(SessionKeyExists(u"Im"));
}

TEST_F(OpenSshImportTest, NotesWhatASessionCannotHold) {
    ASSERT_TRUE(
        Run("Host a\n HostName \"x;y\"\n IdentityFile a\n IdentityFile b\nHost c\n ProxyCommand nc %h\n"
            "Match exec x\n"));
    EXPECT_EQ(result.Count(SshImportOutcome::kMade), 2U);
    std::string notes;
    for (const SshDiagnostic& found : result.diagnostics.All()) {
        notes += std::to_string(found.line) + ' ' + found.text + '\n';
    }
    EXPECT_EQ(notes,
              "7 the command of Match exec is not run and counts as false\n"
              "1 'a': the host name has characters that keep the session from being opened\n"
              "1 'a': of several identity files the first is taken, for other hosts too\n"
              "5 'c': ProxyCommand is not taken over; the session connects without it\n");
}

TEST_F(OpenSshImportTest, FailsAsAWholeWithAReport) {
    auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"taken", nullptr));
    session->SetPath(u"taken");
    ASSERT_TRUE(SaveSession(*session));
    const std::pair<const char16_t*, std::uint32_t> cases[] = {
        {u"taken", kImportNoFolder},
        {u"a\\\\b", kImportFolderName},
        {u"Default", kImportFolderName},
        {u"__FolderData__", kImportFolderName},
    };
    for (const auto& [folder, code] : cases) {
        request.folder = folder;
        EXPECT_FALSE(Run(kConfig)) << platform::ToNarrow(folder);
        EXPECT_EQ(report.GetCode(), code) << platform::ToNarrow(folder);
    }
    request.folder = u"f";
    request.file = "/none";
    EXPECT_FALSE(Run(kConfig));
    EXPECT_STREQ(platform::ToNarrow(report.GetTextOneLine()).c_str(), "\"/none\" cannot be imported: no such file.");
}

TEST_F(OpenSshImportTest, LeavesTheStoreAsItWasWhenAnUpdateIsRefused) {
    ASSERT_TRUE(Run("Host web\n Port 1"));
    const std::string before = Dump();
    FaultyStoreFactory faulty(*factory);
    InstallReferenceSuite(u"connectctl", faulty);
    faulty.plan.failCommit = true;
    EXPECT_FALSE(Run(kConfig));
    EXPECT_TRUE(report.GetCode() != 0 && result.entries.empty());
    InstallReferenceSuite(u"connectctl", *factory);
    EXPECT_EQ(Dump(), before);
}

/// The limit on the size of files is the process's: a disk that is full.
TEST_F(OpenSshImportTest, TellsWhyTheStoreTookNoMoreAndLeavesItAsItWas) {
    const TemporaryFolder folder;
    factory = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + (folder / "s.db")).c_str()), report);
    InstallReferenceSuite(u"connectctl", *factory);
    ASSERT_TRUE(Run("Host web\n Port 1"));
    const std::string before = Dump();
    std::string config = kConfig;
    for (int i = 0; i < 4200; ++i) config += "Host h" + std::to_string(i) + "\n";
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    for (const rlim_t room : {rlim_t{20'000}, rlim_t{300'000}, rlim_t{700'000}}) {
        const rlimit low{room, limit.rlim_max};
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &low), 0);
        const bool isDone = Run(config);
        ::setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, handler);
        EXPECT_FALSE(isDone) << room;
        EXPECT_TRUE(report.GetCode() != 0 && report.GetCode() != kImportRefused) << room << ' ' << report.GetCode();
        EXPECT_TRUE(Dump() == before && result.entries.empty()) << room;
    }
    EXPECT_TRUE(Run(config));
    EXPECT_EQ(result.Count(SshImportOutcome::kMade), 4201U) << "more than an import holds at a time";
    for (const char16_t* name : {u"h0", u"h4095", u"h4096", u"h4199"})
        EXPECT_EQ(ValuesAt(JoinEntryPath(u"Im\\port", name)), platform::ToNarrow(name) + "\t22\tall\t");
}

}  // namespace
}  // namespace connectdialog::test
