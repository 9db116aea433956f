#include <nlohmann/json.hpp>

#include "sessiondb/sessiontree.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

using Json = nlohmann::json;

TEST_F(ToolTest, ListsFoldersBeforeSessions) {
    Seed();
    const struct {
        std::vector<std::string> arguments;
        std::string output;
    } rows[] = {
        {{"ls"}, "Servers\\\nzeta\n"},
        {{"ls", "\\"}, "Servers\\\nzeta\n"},
        {{"ls", "Servers"}, "Web\\\ndb\n"},
        {{"ls", "servers\\WEB\\"}, "alpha\nbeta\n"},
        {{"ls", "zeta"}, "zeta\n"},
        {{"ls", "-R"}, "Servers\\\nServers\\Web\\\nServers\\Web\\alpha\nServers\\Web\\beta\nServers\\db\nzeta\n"},
        {{"ls", "--recursive", "Servers\\Web"}, "Servers\\Web\\alpha\nServers\\Web\\beta\n"},
        {{"tree"}, "Servers\\\n  Web\\\n    alpha\n    beta\n  db\nzeta\n"},
        {{"tree", "Servers\\Web"}, "alpha\nbeta\n"},
    };
    for (const auto& row : rows) EXPECT_EQ(RunWell(row.arguments), row.output) << row.arguments.back();
}

TEST_F(ToolTest, ListingIsAlsoJson) {
    Seed();
    const Json flat = Json::parse(RunWell({"ls", "-R", "--json", "Servers"}));
    EXPECT_EQ(flat.size(), 4U);
    EXPECT_EQ(flat[1], Json({{"name", "alpha"}, {"path", "Servers\\Web\\alpha"}, {"type", "session"}}));
    const Json tree = Json::parse(RunWell({"tree", "--json"}));
    EXPECT_EQ(tree[0]["children"][0]["children"][1]["path"], "Servers\\Web\\beta");
    EXPECT_EQ(tree[0]["children"][1]["name"], "db");
    EXPECT_EQ(tree[1]["type"], "session");
    EXPECT_EQ(Json::parse(RunWell({"tree", "--json", "Servers\\Web\\alpha"})).size(), 1U);
}

TEST_F(ToolTest, AnAbsentStoreIsEmptyAndStaysAbsent) {
    EXPECT_EQ(RunWell({"tree"}), "");
    EXPECT_EQ(Json::parse(RunWell({"ls", "--json"})), Json::array());
    EXPECT_NE(RunBadly({"show", "alpha"}).find("no session or folder \"alpha\""), std::string::npos);
    EXPECT_EQ(RunProcess({"/bin/ls", StoreFile()}).output, "");
}

// A name cannot drive the terminal, and what is printed leads back to the entry.
TEST_F(ToolTest, HostileNamesAreEscaped) {
    const struct {
        std::u16string name;
        std::string shown;
    } rows[] = {
        {u"a\x1b[31mred", "a<U+001B>[31mred"},
        {u"line\nbreak\ttab", "line<U+000A>break<U+0009>tab"},
        {u"csi\u009b2J", "csi<U+009B>2J"},
        {u"gnp\u202Eexe", "gnp<U+202E>exe"},
        {std::u16string(u"lone") + char16_t{0xD800}, "lone<U+D800>"},
        {u"<U+0041>", "<U+0041>"},
        {u"主机 \U0001F600", "主机 \U0001F600"},
        {u"50% \"quoted\" $(x)", "50% \"quoted\" $(x)"},
        {std::u16string(10000, u'n'), std::string(10000, 'n')},
    };
    WithStore([&] {
        for (const auto& row : rows) AddSession(u"Hostile"_v, VUnicodeString(row.name), u"h.example.net"_v);
    });
    const std::string listing = "\n" + RunWell({"ls", "Hostile"});
    for (const auto& row : rows) {
        EXPECT_NE(listing.find("\n" + row.shown + "\n"), std::string::npos) << row.shown;
        EXPECT_EQ(RunWell({"get", "Hostile\\" + row.shown, "Hostname"}), "h.example.net\n") << row.shown;
    }
    EXPECT_EQ(listing.find('\x1b'), std::string::npos);
    const std::string json = RunWell({"ls", "--json", "Hostile"});
    EXPECT_EQ(json.find("\u009b"), std::string::npos);
    EXPECT_NE(Json::parse(json).dump().find("csi\u009b2J"), std::string::npos);
}

TEST_F(ToolTest, CommandWordsAreGoodNames) {
    WithStore([] {
        AddSession(u"ls"_v, u"tree"_v, u"a.example.net"_v);
        AddSession(VUnicodeString(), u"-R"_v, u"b.example.net"_v);
    });
    EXPECT_EQ(RunWell({"ls", "ls"}), "tree\n");
    EXPECT_EQ(RunWell({"get", "--", "-R", "Hostname"}), "b.example.net\n");
}

}  // namespace
}  // namespace connectdialog::test
