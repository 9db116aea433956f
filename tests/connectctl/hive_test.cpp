// hive, with the user's hive in the scratch folder.
#include <fstream>

#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

class HiveCommand : public ToolTest {
  protected:
    HiveCommand() { environment = {"XDG_CONFIG_HOME=" + (scratch / "config")}; }
    void Hive(std::vector<ToolRun> runs) const {
        for (ToolRun& run : runs) run.arguments.insert(run.arguments.begin(), "hive");
        Transcript(runs);
    }
};

TEST_F(HiveCommand, ValuesOfEachTypeAreSetPrintedAndDeleted) {
    const std::string path = "Soft\\Brennmark";
    Hive({
        {{"set", path, "d", "0xff", "--type", "dword"}, ""},
        {{"set", path, "s", "caf\xC3\xA9 \\ \"x\"", "--type", "string"}, ""},
        {{"set", path, "b", "00fF7f", "--type", "binary"}, ""},
        {{"set", path, "l", R"(["a","","b"])", "--type", "list"}, ""},
        {{"set", path, "", "nameless", "--type", "string"}, ""},
        {{"set", path, "e", "%HOME%\\x", "--type", "expand"}, ""},
        {{"--user", "get", "soft\\brennmark", "D"}, "255\n"},
        {{"tree"},
         "Soft\\\n  Brennmark\\\n    @\tstring\tnameless\n    b\tbinary\t00ff7f\n    d\tdword\t255\n"
         "    e\texpand\t%HOME%\\x\n"
         "    l\tlist\t[\"a\",\"\",\"b\"]\n    s\tstring\tcaf\xC3\xA9 \\ \"x\"\n"},
        {{"delete", path, "d"}, ""},
        {{"get", path, "d"}, "\"d\"", 1},
        {{"delete", "Soft"}, ""},
        {{"tree"}, ""},
        {{"set", "K", "v", "--type", "dword", "--", "4294967296"}, "4294967295", 1},
        {{"set", "K", "v", "--type", "dword", "--", "-1"}, "4294967295", 1},
        {{"set", "K", "a\nb", "v"}, "\"K\"", 1},
        {{"import", scratch.Write("r", "REGEDIT4\n[HKEY_CURRENT_USER]\n\"q\"=hex(b):01,ff\n\"t\"=hex(4):7f\n")}, ""},
        {{"get", "", "q"}, "01ff\n"},
        {{"tree"}, "q\thex(11)\t01ff\nt\thex(4)\t7f\n"},
    });
}

TEST_F(HiveCommand, AnExportIsTheUsersOwnAndImportsWhole) {
    const std::string exported = scratch / "out.reg";
    Hive({{{"set", "A\\B", "v", "1", "--type", "dword"}, ""}, {{"export", exported}, ""}, {{"delete", "A"}, ""}});
    EXPECT_EQ(ModeOf(exported), 0600U);
    Hive({
        {{"--machine", "import", exported}, "HKEY_LOCAL_MACHINE", 1},
        {{"import", exported}, ""},
        {{"import", scratch.Write("b", "REGEDIT4\n[-HKEY_CURRENT_USER\\A]\n[HKEY_CURRENT_USER\\C\n")}, "line 3", 1},
        {{"tree", "A"}, "B\\\n  v\tdword\t1\n"},
    });
}

TEST_F(HiveCommand, ADamagedHiveIsShownAsFarAsItIsGoodAndKept) {
    Hive({{{"set", "A", "v", "x"}, ""}});
    const std::string file = scratch / "config/brennmark/user.reg";
    std::ofstream(file, std::ios::app) << "\"w\"=yes\n\"e\"=\"\x1B[31m\"\n";
    const std::string damaged = ReadFile(file);
    const ProcessResult tree = Run({"hive", "tree"});
    EXPECT_EQ(tree.output, "A\\\n  e\tstring\t<U+001B>[31m\n  v\tstring\tx\n");
    EXPECT_EQ(tree.exitCode, 1);
    EXPECT_NE(tree.errors.find("line 5"), std::string::npos) << tree.errors;
    Hive({{{"set", "A", "v", "y"}, "line 5", 1}, {{"export", scratch / "out.reg"}, "line 5", 1}});
    EXPECT_EQ(ReadFile(file), damaged);
}

}  // namespace
}  // namespace connectdialog::test
