// keymap and menu, and the examples of the documents on them.
#include <filesystem>
#include <regex>

#include "keymap/extendedkeytable.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/standardkeytable.h"
#include "platform/codepage.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

TEST_F(ToolTest, KeymapCheckTellsEveryErrorAndCreatesNothing) {
    const std::string bad = scratch.Write("bad.key", "N VK_A\x1B MENU_COPY\nN VK_A MENU_COPY\nx\n");
    const ProcessResult checked = Run({"keymap", "check", bad});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_EQ(checked.output, "unknown virtual key 'VK_A<U+001B>' on line 1\nsyntax error on line 3\n");
    EXPECT_NE(checked.errors.find("2 errors"), std::string::npos) << checked.errors;
    scratch.Write("bad.key", "x\nx\nx\nN VK_A MENU_COPY\n");
    EXPECT_NE(Run({"keymap", "check", bad}).errors.find("not read"), std::string::npos);

    environment = {"XDG_CONFIG_HOME=" + (scratch / "config")};
    Transcript({
        {{"keymap", "check", scratch.Write("good", "; note\nN VK_A MENU_COPY\nC VK_B \"x\"\n")}, "2 bindings\n"},
        {{"keymap", "check", "absent.key"}, "\"absent.key\"", 1},
        {{"keymap", "check", scratch.GetPath()}, "", 1},
    });
    EXPECT_FALSE(std::filesystem::exists(scratch / "config"));
}

TEST_F(ToolTest, KeymapShowPrintsAKeymapThatReadsBackAsItself) {
    const std::string file = scratch.Write("k", "x\nN VK_F1 \"a\tb\"\nN VK_PAUSE MENU_COPY\n");
    const ProcessResult shown = Run({"--store", "no-such-scheme:", "keymap", "show", file});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_EQ(shown.errors, "connectctl: syntax error on line 1\n");
    EXPECT_NE(shown.output.find("N\tVK_F1               \t\"a<U+0009>b\"\n"), std::string::npos) << shown.output;
    EXPECT_NE(shown.output.find("N\tVK_F2               \tVT_PF2\t; built-in\n"), std::string::npos);
    EXPECT_EQ(RunWell({"keymap", "check", scratch.Write("again", shown.output)}), "60 bindings\n");
}

TEST_F(ToolTest, KeymapConvertWritesAllOrNothing) {
    const std::string file = scratch.Write("k", "c vk_b MENU_COPY ; as usual\nN 65 \"x\"\n");
    const std::string out = scratch / "out";
    EXPECT_EQ(RunWell({"keymap", "convert", file, out}), "");
    const std::string written = "\xEF\xBB\xBFN\tVK_A                \t\"x\"\r\nC\tVK_B                \tMENU_COPY\r\n";
    EXPECT_EQ(ReadFile(out), written);
    for (const auto& [refused, text] :
         {std::pair("N VK_A MENU_COPY\nx\n", "line 2"), {"N 0x01100000 MENU_COPY\n", "reads back"}}) {
        scratch.Write("k", refused);
        Transcript({{{"keymap", "convert", file, out}, text, 1}});
        EXPECT_EQ(ReadFile(out), written);
    }
    RunBadly({"keymap", "convert", file, scratch / "no/folder"});
}

TEST_F(ToolTest, MenuCheckTellsEveryReportAndEndsWithTheResult) {
    const std::tuple<const char*, int, const char*, const char*> rows[] = {
        {"MENU m\nMENUITEM a,MENU_COPY\nEND\nTOOLBAR t\nEND\n", 0, "menus and toolbars: 2\n", ""},
        {"MENU m\nMENUITEM a,x\x1By\ndata\nEND\n", 2,
         "0xA10A000B\t2\t[^\t\n]*x<U\\+001B>y[^\t\n]*\n0xA10A000A\t3\t[^\t\n]+\n", "2 warnings"},
        {"FONT\nMENU m\n", 1, "0xA10A000A\t1\t.+\n0xE10A0006\t2\t.+\n", "cannot be used"},
        {"\nx\n", 1, "", "line 2 stands"},
    };
    for (const auto& [text, exitCode, output, complaint] : rows) {
        const ProcessResult result = Run({"--store", "no-such-scheme:", "menu", "check", scratch.Write("m", text)});
        EXPECT_EQ(result.exitCode, exitCode) << text;
        EXPECT_TRUE(std::regex_match(result.output, std::regex(output))) << result.output;
        EXPECT_NE(result.errors.find(complaint), std::string::npos) << result.errors;
    }
    EXPECT_TRUE(Run({"menu", "check", scratch / "absent"}).output.starts_with("0x00000002\t0\t"));
    std::filesystem::create_directory(scratch / "sub");
    scratch.Write("above", "");
    scratch.Write("sub/beside", "");
    scratch.Write("sub/m", "MENU m\nMENUITEM a,RUN,../above\nMENUITEM b,RUN,./beside\nEND\n");
    for (const char* file : {"sub/m", "./sub/m", "sub/../sub/m", "cd sub; m"}) {
        const bool isInside = std::string_view(file).starts_with("cd ");
        const std::string place = "cd " + scratch.GetPath().string() + (isInside ? "/sub" : "");
        const std::string name = isInside ? "m" : file;
        const std::string command = place + " && exec " CONNECTCTL_PROGRAM " menu check " + name;
        EXPECT_EQ(RunProcess({"/bin/sh", "-c", command}).exitCode, 0) << file;
    }
}

TEST_F(ToolTest, MenuShowPrintsTheTree) {
    scratch.Write("i.bmp", "BM");
    const std::string file =
        scratch.Write("m",
                      "ACCELERATOR\nk, C, SHIFT|CTRL\nEND\nSTRINGTABLE\ns, \"Long\\nShort\"\nEND\nFONT Fixed\n"
                      "MENU main\nPOPUPMENU \"&File\"\nMENUITEM \"&Copy\", MENU_COPY, , s, k\nSEPARATOR\nEND\n"
                      "MENUITEM Say, SEND, \"a\tb\"\nEND\nTOOLBAR bar\nTOOLBARITEM i.bmp, MENU_PASTE\nTOOLBARITEM RUN, "
                      "MENU_COPY,,s,k\n"
                      "END\nPOPUPMENU p\nEND\n");
    EXPECT_EQ(
        RunWell({"menu", "show", file}),
        "menu \"main\"\n  popup \"&File\"\n"
        "    item MENU_COPY 294, label \"&Copy\", prompt \"Long\", tip \"Short\", key Ctrl+Shift+C\n    separator\n"
        "  item SEND 17, label \"Say\", argument \"a<U+0009>b\"\n"
        "toolbar \"bar\"\n  item MENU_PASTE 295, image from a file\n"
        "  item MENU_COPY 294, image 1, prompt \"Long\", tip \"Short\", key Ctrl+Shift+C\n"
        "popup \"p\"\nfont \"Fixed\"\n");
}

std::string Document(const char* name) {
    return ReadFile(std::filesystem::path(CONNECTDIALOG_TESTS).parent_path() / "docs" / name);
}

/// The fenced blocks of the document that are marked with that word.
std::vector<std::string> Examples(const std::string& document, const std::string& word) {
    std::vector<std::string> examples;
    const std::string fence = "```" + word + "\n";
    for (std::size_t at = 0; (at = document.find(fence, at)) != document.npos;) {
        at += fence.size();
        const std::size_t end = document.find("```", at);
        examples.push_back(document.substr(at, end - at));
        at = end + 3;
    }
    return examples;
}

TEST_F(ToolTest, TheExamplesOfTheDocumentsAreReadAndEveryNameIsTold) {
    for (const auto& [name, word, command] :
         {std::tuple("menus.md", "menus", "menu"), std::tuple("keymaps.md", "keymap", "keymap")}) {
        const std::vector<std::string> examples = Examples(Document(name), word);
        EXPECT_GE(examples.size(), 2U) << name;
        for (const std::string& example : examples) RunWell({command, "check", scratch.Write("example", example)});
    }
    const std::string document = Document("keymaps.md");
    const auto expectTold = [&](std::u16string_view name) {
        EXPECT_NE(document.find('`' + platform::ToNarrow(name) + '`'), std::string::npos) << platform::ToNarrow(name);
    };
    for (const std::u16string_view name : kKeyFunctionNames) expectTold(name);
    for (const auto& row : kStandardKeys) expectTold(row.name);
    for (const auto& row : kExtendedKeys) expectTold(row.name);
}

}  // namespace
}  // namespace connectdialog::test
