// Whole imports, also of configurations that people use, compared with the tables of values that ssh gives for them.
#include "suite/importers/openssh/opensshimport.h"

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "config/sessionconfig.h"
#include "platform/codepage.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "suite/importers/openssh/importmessages.h"
#include "suite/importers/openssh/memorysshfiles.h"
#include "suite/importers/openssh/sshfiles.h"
#include "suite/importers/openssh/sshsession.h"
#include "support/storetools.h"
#include "support/suitetest.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

class ImportTest : public SuiteTest {
  protected:
    /// `host\tport\tuser\tjumps` of the session at `path`.
    static std::string ValuesAt(const VUnicodeString& path) {
        const VRef<ISessionConfig> session = OpenSession(path);
        if (!session) return "none";
        const ProtocolConfig& config = Protocol(*session);
        VUnicodeString host;
        VUnicodeString user;
        config.GetRemoteHost().GetHostname(host);
        config.GetRemoteHost().GetUsername(user);
        return platform::ToNarrow(host) + '\t' + std::to_string(config.GetPort()) + '\t' + platform::ToNarrow(user) +
               '\t' + platform::ToNarrow(config.GetSettings().sshJumpHost.Get());
    }
};

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
    EXPECT_NE(Dump().find("Session{20}List=\"web:db:\""), std::string::npos) << "in the file's order: " << Dump();
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
    EXPECT_EQ(MakeSshSessionName(u"default", true), u"%64efault");
    ASSERT_TRUE(Run("Host " + std::string(256, 'x')));
    EXPECT_EQ(result.Count(SshImportOutcome::kSkipped), 1U);
}

TEST_F(OpenSshImportTest, RefusesWhatAClientCouldTakeForSomethingElse) {
    constexpr const char* kCases[][2] = {
        {"Host -oProxyCommand=x", "the host's alias begins with a minus sign"},
        {"Host a\x1b[2Jb", "the host's alias has a control character"},
        {"Host h\n HostName -x", "the host name begins with a minus sign"},
        {"Host h\n HostName \"a\xE2\x80\xAE\"", "the host name has a control character"},
        {"Host h\n User -l", "the user's name begins with a minus sign"},
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

namespace fs = std::filesystem;

constexpr std::string_view kTableSuffix = ".expected.tsv";
const std::string kHome = "/home/somebody";

/// The machine's files with a folder of the samples in the place of `.ssh` in the home folder.
class SampleFiles : public DiskSshFiles {
  public:
    explicit SampleFiles(std::string folder) : folder(std::move(folder)) {}
    SshReadResult Read(const std::string& path, std::size_t maxBytes, std::string& text, std::string& error) override {
        return DiskSshFiles::Read(Mapped(path), maxBytes, text, error);
    }
    std::vector<std::string> List(const std::string& path, std::size_t maxNames) override {
        return DiskSshFiles::List(Mapped(path), maxNames);
    }
    bool Exists(const std::string& path) override { return DiskSshFiles::Exists(Mapped(path)); }

  private:
    std::string folder;
    std::string Mapped(const std::string& path) const {
        const std::string from = kHome + "/.ssh/";
        return path.starts_with(from) ? folder + '/' + path.substr(from.size()) : path;
    }
};

/// The number behind "line " in a table's comment: where ssh stumbled.
std::size_t StumblingLine(const std::string& comment) {
    const std::size_t at = comment.find(" line ");
    return at == std::string::npos ? 0 : std::stoul(comment.substr(at + 6));
}

class Samples : public ImportTest {
  protected:
    std::size_t Compare(const fs::path& config, const fs::path& sshFolder, const fs::path& table);
};

/// Imports one configuration and compares the sessions with its table; gives the number of rows that agree.
std::size_t Samples::Compare(const fs::path& config, const fs::path& sshFolder, const fs::path& table) {
    StartOver();
    std::string comment;
    std::vector<std::string> expected;
    std::ifstream file(table);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) comment += line + '\n';
        if (!line.starts_with('#') && !line.starts_with("alias\t")) expected.push_back(line);
    }
    SampleFiles files(sshFolder.string());
    SshImportResult result;
    VReportMessageParams report;
    EXPECT_TRUE(ImportOpenSshConfig(files, {config.string(), u"f", {"localuser", kHome}, false}, result, report));
    std::vector<std::string> rows;
    for (const SshImportEntry& entry : result.entries) {
        std::string values = ValuesAt(entry.path);
        const std::size_t user = values.find('\t', values.find('\t') + 1) + 1;
        if (values[user] == '\t') values.insert(user, "localuser");
        rows.push_back(entry.alias + '\t' + values);
    }
    const std::size_t line = StumblingLine(comment);
    const auto& found = result.diagnostics.All();
    const bool isFound = std::ranges::find(found, line, &SshDiagnostic::line) != found.end();
    EXPECT_TRUE(isFound || line == 0) << config;
    if (comment.find("REFUSES") != std::string::npos) {
        EXPECT_TRUE(line != 0 && result.diagnostics.IsRefused()) << config;
        return 0;
    }
    EXPECT_EQ(rows, expected) << config;
    return rows == expected ? rows.size() : 0;
}

TEST_F(Samples, AgreeWithSsh) {
    const fs::path folder = fs::path(CONNECTDIALOG_SAMPLES) / "ssh_config";
    if (std::string_view(CONNECTDIALOG_SAMPLES).empty() || !fs::exists(folder)) {
        GTEST_SKIP() << "no samples: CONNECTDIALOG_SAMPLES names no folder that has ssh_config";
    }
    std::size_t files = 0;
    std::size_t rows = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().string();
        if (!name.ends_with(kTableSuffix)) continue;
        const fs::path relative = entry.path().lexically_relative(folder / "_trees_expected");
        const bool isTree = *relative.begin() != "..";
        fs::path config = isTree ? folder / "_trees" / relative : entry.path();
        config = config.string().substr(0, config.string().size() - kTableSuffix.size());
        fs::path sshFolder = isTree ? folder / "_trees" / *relative.begin() : folder / "none";
        if (fs::exists(sshFolder / ".ssh")) sshFolder /= ".ssh";
        rows += Compare(config, sshFolder, entry.path());
        ++files;
    }
    EXPECT_GT(files, 0U);
    std::cout << rows << " rows of " << files << " files agree\n";
}

}  // namespace
}  // namespace connectdialog::test
