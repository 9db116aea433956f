#include "tests/connectctl/toolfixture.h"

#include <algorithm>
#include <gmock/gmock.h>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "imports/connectconfig.h"
#include "profile/iprofilestore.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::test {

ProcessResult ToolTest::Run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {CONNECTCTL_PROGRAM, "--store", "sqlite:" + StoreFile()});
    return RunProcess(arguments, environment);
}

std::string ToolTest::RunWell(const std::vector<std::string>& arguments) const {
    const ProcessResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 0) << ::testing::PrintToString(arguments);
    EXPECT_EQ(result.errors, "") << ::testing::PrintToString(arguments);
    return result.output;
}

std::string ToolTest::RunBadly(const std::vector<std::string>& arguments, int exitCode) const {
    const ProcessResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, exitCode) << ::testing::PrintToString(arguments);
    EXPECT_EQ(result.output, "") << ::testing::PrintToString(arguments);
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_TRUE(result.errors.ends_with('\n')) << result.errors;
    return result.errors;
}

void ToolTest::Transcript(const std::vector<ToolRun>& runs) const {
    for (const ToolRun& run : runs) {
        SCOPED_TRACE(::testing::PrintToString(run.arguments));
        if (run.exitCode == 0)
            EXPECT_EQ(RunWell(run.arguments), run.text);
        else
            EXPECT_THAT(RunBadly(run.arguments, run.exitCode), ::testing::HasSubstr(run.text));
    }
}

void ToolTest::WithStore(const std::function<void()>& change) const {
    VReportMessageParams report;
    const std::string url = "sqlite:" + StoreFile();
    const auto factory = stores::OpenProfileStoreFactory(VUnicodeString(url.c_str()), report);
    ASSERT_NE(factory, nullptr);
    InstallReferenceSuite(u"connectctl"_v, *factory);
    change();
}

void ToolTest::Seed() const {
    WithStore([] {
        ASSERT_TRUE(AddFolderEntry(VUnicodeString(), u"Servers"_v, VUnicodeString(), true));
        ASSERT_TRUE(AddFolderEntry(u"Servers"_v, u"Web"_v, VUnicodeString(), true));
        AddSession(u"Servers\\Web"_v, u"alpha"_v, u"alpha.example.net"_v);
        AddSession(u"Servers\\Web"_v, u"beta"_v, u"beta.example.net"_v);
        AddSession(u"Servers"_v, u"db"_v, u"db.example.net"_v);
        AddSession(VUnicodeString(), u"zeta"_v, u"zeta.example.net"_v);
    });
}

void AddSession(const VUnicodeString& folder, const VUnicodeString& name, const VUnicodeString& host) {
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(name.GetData(), nullptr));
    session->SetProtocolName(u"SSH2"_v);
    ASSERT_NE(session->GetConnectConfig(), nullptr);
    session->GetConnectConfig()->SetHostName(host);
    ASSERT_TRUE(StoreSessionEntry(folder, name, *session, VUnicodeString(), true));
}

}  // namespace connectdialog::test
