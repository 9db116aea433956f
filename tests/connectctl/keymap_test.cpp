// keymap, on files and on sessions in the scratch store.
#include <algorithm>
#include <filesystem>

#include "keymap/profilekeymap.h"
#include "profile/unitofwork.h"
#include "sessiondb/sessionpaths.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

TEST_F(ToolTest, KeymapCheckTellsEveryErrorAndCreatesNothing) {
    const std::string good = scratch.Write("good.key", "; note\nN VK_A MENU_COPY\nC VK_B \"x\"\n");
    EXPECT_EQ(RunWell({"keymap", "check", good}), "2 bindings\n");
    const std::string bad = scratch.Write("bad.key", "N VK_A\x1B MENU_COPY\nN VK_A MENU_COPY\nx\n");
    const ProcessResult checked = Run({"keymap", "check", bad});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_EQ(checked.output, "unknown virtual key 'VK_A<U+001B>' on line 1\nsyntax error on line 3\n");
    EXPECT_NE(checked.errors.find("2 errors"), std::string::npos) << checked.errors;
    scratch.Write("bad.key", "x\nx\nx\nN VK_A MENU_COPY\n");
    EXPECT_NE(Run({"keymap", "check", bad}).errors.find("not read"), std::string::npos);

    environment = {"XDG_CONFIG_HOME=" + (scratch / "config")};
    EXPECT_NE(RunBadly({"keymap", "check", "absent.key"}).find("\"absent.key\""), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(scratch / "config"));
    RunBadly({"keymap", "check", scratch.GetPath()});
}

TEST_F(ToolTest, KeymapShowPrintsAKeymapThatReadsBackAsItself) {
    const std::string file = scratch.Write("k", "N VK_F1 \"a\tb\"\nN VK_PAUSE MENU_COPY\n");
    const ProcessResult shown = Run({"--store", "no-such-scheme:", "keymap", "show", file});
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
    EXPECT_NE(shown.output.find("N\tVK_F1               \t\"a<U+0009>b\"\n"), std::string::npos) << shown.output;
    EXPECT_NE(shown.output.find("N\tVK_F2               \tVT_PF2\t; built-in\n"), std::string::npos);
    const std::string again = scratch.Write("again", shown.output);
    EXPECT_EQ(RunWell({"keymap", "check", again}), "60 bindings\n");
    scratch.Write("k", "x\nN VK_F1 MENU_COPY\n");
    const ProcessResult warned = Run({"keymap", "show", file});
    EXPECT_EQ(warned.exitCode, 0);
    EXPECT_EQ(warned.errors, "connectctl: syntax error on line 1\n");
}

TEST_F(ToolTest, KeymapShowPrintsTheKeymapOfASession) {
    Seed();
    WithStore([] {
        const std::string old = std::string("\0\0\0\1\0\0\2\x41MENU_COPY\0\0", 19);
        EXPECT_TRUE(WriteToKey(BuildSessionKeyPath(u"zeta"_v).GetData(), [&](VProfileKey& key) {
            key.GetImpl()->DeleteValue(u"Keymap v3");
            key.WriteBinary(u"Keymap v2", old.data(), static_cast<std::uint32_t>(old.size()));
        }));
    });
    const std::string own = "C\tVK_A                \tMENU_COPY\n";
    std::string shown = RunWell({"keymap", "show", "zeta"});
    ASSERT_NE(shown.find(own), std::string::npos);
    EXPECT_EQ(shown.erase(shown.find(own), own.size()), RunWell({"keymap", "show", "Servers\\db"}));
    EXPECT_EQ(std::ranges::count(shown, '\n'), 59) << "the rest is built in";
    EXPECT_NE(RunBadly({"keymap", "show", "Servers"}).find("folder"), std::string::npos);
    EXPECT_NE(RunBadly({"keymap", "show", "absent"}).find("\"absent\""), std::string::npos);
}

TEST_F(ToolTest, KeymapConvertWritesAllOrNothing) {
    const std::string file = scratch.Write("k", "c vk_b MENU_COPY ; as usual\nN 65 \"x\"\n");
    const std::string out = scratch / "out";
    EXPECT_EQ(RunWell({"keymap", "convert", file, out}), "");
    const std::string written = "\xEF\xBB\xBFN\tVK_A                \t\"x\"\r\nC\tVK_B                \tMENU_COPY\r\n";
    EXPECT_EQ(ReadFile(out), written);
    for (const char* refused : {"N VK_A MENU_COPY\nx\n", "N 0x01100000 MENU_COPY\n", "N 0x800000AC MENU_COPY\n"}) {
        scratch.Write("k", refused);
        const std::string errors = RunBadly({"keymap", "convert", file, out});
        EXPECT_TRUE(errors.find("line 2") != std::string::npos || errors.find("reads back") != std::string::npos);
        EXPECT_EQ(ReadFile(out), written);
    }
    scratch.Write("k", "; note\nN 65 \"x\"\n");
    EXPECT_NE(Run({"keymap", "convert", file, out}).errors.find("comments"), std::string::npos);
    RunBadly({"keymap", "convert", file, scratch / "no/folder"});
}

}  // namespace
}  // namespace connectdialog::test
