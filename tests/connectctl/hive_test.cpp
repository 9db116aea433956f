// hive, with the user's hive in the scratch folder.
#include <filesystem>
#include <fstream>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

class HiveCommand : public ToolTest {
  protected:
    HiveCommand() { environment = {"XDG_CONFIG_HOME=" + (scratch / "config")}; }
    std::string Well(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "hive");
        return RunWell(arguments);
    }
    std::string Badly(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "hive");
        return RunBadly(arguments);
    }
    std::string HiveFile() const { return scratch / "config/brennmark/user.reg"; }
};

TEST_F(HiveCommand, ValuesOfEachTypeAreSetPrintedAndDeleted) {
    const struct {
        const char* name;
        const char* type;
        const char* value;
        const char* printed;
    } kRows[] = {
        {"d", "dword", "0xff", "255\n"},          {"s", "string", "caf\xC3\xA9 \\ \"x\"", "caf\xC3\xA9 \\ \"x\"\n"},
        {"b", "binary", "00fF7f", "00ff7f\n"},    {"l", "list", R"(["a","","b"])", "[\"a\",\"\",\"b\"]\n"},
        {"", "string", "nameless", "nameless\n"}, {"e", "expand", "%HOME%\\x", "%HOME%\\x\n"},
    };
    for (const auto& row : kRows) {
        Well({"set", "Soft\\Brennmark", row.name, row.value, "--type", row.type});
        EXPECT_EQ(Well({"--user", "get", "soft\\brennmark", row.name}), row.printed);
    }
    EXPECT_EQ(Well({"tree"}),
              "Soft\\\n  Brennmark\\\n    @\tstring\tnameless\n    b\tbinary\t00ff7f\n    d\tdword\t255\n"
              "    e\texpand\t%HOME%\\x\n"
              "    l\tlist\t[\"a\",\"\",\"b\"]\n    s\tstring\tcaf\xC3\xA9 \\ \"x\"\n");
    Well({"delete", "Soft\\Brennmark", "d"});
    EXPECT_NE(Badly({"get", "Soft\\Brennmark", "d"}).find("\"d\""), std::string::npos);
    Well({"delete", "Soft"});
    EXPECT_EQ(Well({"tree"}), "");
    Badly({"delete", "Soft"});
    for (const char* value : {"4294967296", "-1", "x", "", "0x"}) {
        EXPECT_NE(Badly({"set", "K", "v", "--type", "dword", "--", value}).find("4294967295"), std::string::npos);
    }
    EXPECT_NE(Badly({"set", "K", "a\nb", "v"}).find("\"K\""), std::string::npos);
    EXPECT_EQ(Well({"tree"}), "");
    Well(
        {"import", scratch.Write("types.reg", "REGEDIT4\n[HKEY_CURRENT_USER]\n\"q\"=hex(b):01,ff\n\"t\"=hex(4):7f\n")});
    EXPECT_EQ(Well({"get", "", "q"}), "01ff\n");
    EXPECT_EQ(Well({"tree"}), "q\thex(11)\t01ff\nt\thex(4)\t7f\n");
}

TEST_F(HiveCommand, AnExportIsTheUsersOwnAndImportsWhole) {
    Well({"set", "A\\B", "v", "1", "--type", "dword"});
    const std::string exported = scratch / "out.reg";
    Well({"export", exported});
    EXPECT_EQ(std::filesystem::status(exported).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    Well({"delete", "A"});
    EXPECT_NE(Badly({"--machine", "import", exported}).find("HKEY_LOCAL_MACHINE"), std::string::npos);
    Well({"import", exported});
    EXPECT_EQ(Well({"get", "A\\B", "v"}), "1\n");
    const std::string broken =
        scratch.Write("broken.reg", "REGEDIT4\n[-HKEY_CURRENT_USER\\A]\n[HKEY_CURRENT_USER\\C\n");
    EXPECT_NE(Badly({"import", broken}).find("line 3"), std::string::npos);
    Badly({"import", scratch / "absent.reg"});
    EXPECT_EQ(Well({"tree", "A"}), "B\\\n  v\tdword\t1\n");
}

TEST_F(HiveCommand, ADamagedHiveIsShownAsFarAsItIsGoodAndKept) {
    Well({"set", "A", "v", "x"});
    std::ofstream(HiveFile(), std::ios::app) << "\"w\"=yes\n\"e\"=\"\x1B[31m\"\n";
    const auto size = std::filesystem::file_size(HiveFile());
    const ProcessResult tree = Run({"hive", "tree"});
    EXPECT_EQ(tree.output, "A\\\n  e\tstring\t<U+001B>[31m\n  v\tstring\tx\n");
    EXPECT_EQ(tree.exitCode, 1);
    EXPECT_NE(tree.errors.find("line 5"), std::string::npos) << tree.errors;
    EXPECT_NE(Badly({"set", "A", "v", "y"}).find("line 5"), std::string::npos);
    EXPECT_NE(Badly({"export", scratch / "out.reg"}).find("line 5"), std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(HiveFile()), size);
}

}  // namespace
}  // namespace connectdialog::test
