// menu, and the examples of the documents on menus and keymaps.
#include <regex>

#include "keymap/extendedkeytable.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/standardkeytable.h"
#include "platform/codepage.h"
#include "tests/connectctl/toolfixture.h"

namespace connectdialog::test {
namespace {

TEST_F(ToolTest, MenuCheckTellsEveryReportAndEndsWithTheResult) {
    const std::string good = scratch.Write("good", "MENU m\nMENUITEM a,MENU_COPY\nEND\nTOOLBAR t\nEND\n");
    EXPECT_EQ(RunWell({"--store", "no-such-scheme:", "menu", "check", good}), "menus and toolbars: 2\n");

    const std::string odd = scratch.Write("odd", "MENU m\nMENUITEM a,x\x1By\ndata\nEND\n");
    const ProcessResult warned = Run({"menu", "check", odd});
    EXPECT_EQ(warned.exitCode, 2);
    EXPECT_TRUE(std::regex_match(warned.output,
                                 std::regex("0xA10A000B\t2\t[^\t\n]*x<U\\+001B>y[^\t\n]*\n0xA10A000A\t3\t[^\t\n]+\n")))
        << warned.output;
    EXPECT_NE(warned.errors.find("2 warnings"), std::string::npos) << warned.errors;

    const std::string bad = scratch.Write("bad", "FONT\nMENU m\n");
    const ProcessResult failed = Run({"menu", "check", bad});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(std::regex_match(failed.output, std::regex("0xA10A000A\t1\t.+\n0xE10A0006\t2\t.+\n"))) << failed.output;
    EXPECT_NE(failed.errors.find("cannot be used"), std::string::npos) << failed.errors;

    EXPECT_NE(RunBadly({"menu", "check", scratch.Write("stray", "\nx\n")}).find("line 2 stands"), std::string::npos);
    const ProcessResult absent = Run({"menu", "check", scratch / "absent"});
    EXPECT_EQ(absent.exitCode, 1);
    EXPECT_TRUE(absent.output.starts_with("0x00000002\t0\t")) << absent.output;
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
    scratch.Write("m", "MENU m\ndata\nEND\n");
    const ProcessResult warned = Run({"menu", "show", file});
    EXPECT_EQ(warned.exitCode, 0);
    EXPECT_EQ(warned.output, "menu \"m\"\n");
    EXPECT_NE(warned.errors, "");
    scratch.Write("m", "MENU m\n");
    const ProcessResult failed = Run({"menu", "show", file});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_EQ(failed.output, "");
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

TEST_F(ToolTest, TheExamplesOfTheDocumentsAreRead) {
    for (const auto& [name, word, command] :
         {std::tuple("menus.md", "menus", "menu"), std::tuple("keymaps.md", "keymap", "keymap")}) {
        const std::vector<std::string> examples = Examples(Document(name), word);
        EXPECT_GE(examples.size(), 2U) << name;
        for (const std::string& example : examples) {
            SCOPED_TRACE(example);
            RunWell({command, "check", scratch.Write("example", example)});
        }
    }
}

TEST(DocumentTest, EveryNameOfAKeyAndAFunctionIsTold) {
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
