#include <nlohmann/json.hpp>

#include "config/isessionconfig.h"
#include "imports/configpanels.h"
#include "profile/vprofileblowfishstring.h"
#include "profile/vprofilemultilinestring.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessiontree.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

class ExportTest : public ToolTest {
  protected:
    /// Runs connectctl on another store than the scratch store.
    std::string RunOther(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {CONNECTCTL_PROGRAM, "--store", "sqlite:" + (scratch / "other.db")});
        const ProcessResult result = RunProcess(arguments, environment);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return result.output;
    }
};

/// A tree with what is easily lost: orders, open folders, odd names, lists, records, values of a protocol that is not
/// selected, a password.
void SeedOddTree() {
    VRef<GlobalConfig> global;
    ASSERT_TRUE(GetGlobalConfig(global, -1));
    global->sessionArrangementMode.Set(static_cast<int>(SessionArrangement::kManual));
    const std::u16string half = std::u16string(u"half") + char16_t{0xD800};
    for (const VUnicodeString& name : {u"z"_v, u"a:b"_v, VUnicodeString(half), u".dot"_v, u"a"_v})
        AddSession(u"F\\deep", name, u"h.example.net");
    ASSERT_TRUE(AddFolderEntry(u"F", u"second", VUnicodeString(), true));
    ASSERT_FALSE(ArrangeEntry(u"F\\second", u"deep", false).IsEmpty());
    ASSERT_TRUE(WriteIsExpanded(u"F\\deep", true));
    const auto session = OpenSession(u"F\\deep\\z");
    auto* description = dynamic_cast<VProfileMultiLineString*>(session->FindValue(u"Description"));
    ASSERT_NE(description, nullptr);
    description->SetText(VUnicodeString(u"\x1b[1mfirst\n" + half));
    auto* password = dynamic_cast<VProfileBlowfishString*>(session->FindValue(u"Monitor Password"));
    ASSERT_NE(password, nullptr);
    password->SetText(u"correct horse");
    session->SetProtocolName(u"Telnet");
    ASSERT_TRUE(SaveSession(*session));
}

TEST_F(ExportTest, ATreeComesBackAsItWas) {
    WithStore(SeedOddTree);
    const std::string file = scratch / "tree.json";
    for (const char* path : {"", "F", "F\\deep\\z"}) {
        const std::string text = RunWell({"export", path, "--with-secrets"});
        EXPECT_EQ(RunWell({"export", path, "--with-secrets", "-o", file}), "");
        EXPECT_EQ(text, ReadFile(file));
        EXPECT_EQ(ModeOf(file), 0600U);
        std::filesystem::remove_all(scratch / "other.db");
        RunOther({"import", "json", file});
        const Json before = Json::parse(text);
        const Json after = Json::parse(RunOther({"export", "--with-secrets"}));
        // An export of less than the root comes back below it.
        const std::size_t extra = *path == '\0' ? 0 : 1;
        ASSERT_EQ(after["entries"].size(), before["entries"].size() + extra);
        for (std::size_t i = 0; i < before["entries"].size(); ++i)
            EXPECT_EQ(after["entries"][i + extra], before["entries"][i]);
    }
    EXPECT_EQ(RunOther({"get", "z", "Protocol Name"}), "Telnet\n");
}

TEST_F(ExportTest, SecretsLeaveOnlyWhenAskedForAndComeBack) {
    WithStore(SeedOddTree);
    EXPECT_EQ(RunWell({"export"}).find("Monitor Password"), std::string::npos);
    const std::string text = RunWell({"export", "F\\deep\\z", "--with-secrets"});
    EXPECT_EQ(text.find("correct horse"), std::string::npos) << "enciphered as in the store";
    RunWell({"mkdir", "G"});
    RunWell({"import", "json", scratch.Write("z.json", text), "--into", "G"});
    WithStore([] {
        const auto session = OpenSession(u"G\\z");
        auto* password = dynamic_cast<VProfileBlowfishString*>(session->FindValue(u"Monitor Password"));
        ASSERT_NE(password, nullptr);
        EXPECT_EQ(password->GetText(), u"correct horse");
    });
}

TEST_F(ExportTest, AFaultyTextIsRefusedWithItsPlaceAndChangesNothing) {
    Seed();
    const std::string head = R"({"format":"connectdialog entries","version":1,"entries":[)";
    const std::string folder = R"({"path":"n","type":"folder"},)";
    const auto session = [](const std::string& values) { return R"({"path":"n","type":"session","values":)" + values; };
    const std::pair<std::string, std::string> rows[] = {
        {"", "line 1, column 1"},
        {"[]", "the text is no export"},
        {R"({"format":"connectdialog entries","version":2,"entries":[]})", "no export that this program reads"},
        {R"({"format":"connectdialog entries","version":1})", "it has no entries"},
        {std::string(200000, '['), "nested too deep"},
        {head + folder + "7]}", "entry 2: it is no object"},
        {head + R"({"path":"n"}]})", "entry 1 (\"n\"): its type"},
        {head + folder + R"({"path":"","type":"folder"}]})", "entry 2 (\"\"): the root is a folder and stands first"},
        {head + R"({"path":"a\u0000b","type":"folder"}]})", "entry 1: it has no path"},
        {head + folder + R"({"path":"n\\","type":"folder"}]})", "entry 2 (\"n\\\"): the path has an empty name"},
        {head + folder + R"({"path":"N","type":"folder"}]})", "entry 2 (\"N\"): N already exists in the target folder"},
        {head + folder + R"({"path":"n\\__folderdata__","type":"folder"}]})", "no entry can have that name"},
        {head + R"({"path":"n\\m","type":"folder"}]})", "its folder does not stand before it"},
        {head + R"({"path":"zeta","type":"session","values":{}}]})", "zeta already exists in the target folder"},
        {head + R"({"path":"n","type":"folder","expanded":1}]})", "expanded is neither true nor false"},
        {head + session(R"({"Hostname":-1}}]})"), "value \"Hostname\" is no number"},
        {head + session(R"({"Hostname":{"utf16":"00410"}}}]})"), "value \"Hostname\" is no number"},
        {head + session(R"({"Idle Timeout":"soon"}}]})"), "does not take value \"Idle Timeout\""},
        {head + session(R"({"No Such Value":3}}]})"), "a session has no value \"No Such Value\""},
    };
    for (const auto& [text, told] : rows) {
        Transcript({{{"import", "json", scratch.Write("in.json", text)}, told, 1},
                    {{"tree"}, "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n"}});
    }
    const std::string good = head + folder + R"({"path":"n\\s","type":"session","values":{"Hostname":"h"}}]})";
    const std::string file = scratch.Write("good.json", good);
    EXPECT_EQ(RunWell({"import", "json", file, "--dry-run"}), "dry run, 1 folders and 1 sessions made\n");
    RunBadly({"get", "n\\s", "Hostname"});
}

}  // namespace
}  // namespace connectdialog::test
