#include "keymap/keymap.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "foundation/vreportmessageparams.h"
#include "keymap/extendedkeytable.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/keymapreader.h"
#include "keymap/keymapwriter.h"
#include "keymap/keynames.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "support/temporaryfolder.h"

namespace connectdialog {
namespace {

namespace fs = std::filesystem;
using Entry = Keymap::KeyMapEntry;

constexpr std::uint32_t kVkA = 0x41;
constexpr std::uint32_t kMenuCopy = 38;
constexpr std::uint32_t kSend = kKeyFunctionSend;
constexpr std::uint32_t kRun = kKeyFunctionRun;

struct LineRow {
    std::u16string_view line;
    std::uint32_t key;
    Entry entry;  ///< function 0: nothing is bound
    std::u16string_view errors{};
};

const LineRow kLineRows[] = {
    {u"N VK_F1 VT_PF1", 0x70, {139, {}, {}}},
    {u" \tN\t VK_A  MENU_COPY what follows", kVkA, {kMenuCopy, {}, {}}},
    {u"aCsE VK_A DISABLED", 0x1E000041, {4, {}, {}}},
    {u"NN VK_A MENU_COPY", kVkA, {kMenuCopy, {}, {}}, u"unknown modifier 'N' on line 1"},
    {u"N VK_AT VT_HELP", 0x80000040, {173, {}, {}}},
    {u"N VK_F1 vt_pf1", 0x70, {}, u"illegal string or unknown function, 'vt_pf1', on line 1"},
    {u"N VK_A SEND", kVkA, {}, u"illegal string or unknown function, 'SEND', on line 1"},
    {u"N VK_A  ", kVkA, {}, u"illegal string or unknown function, '', on line 1"},
    {u"xCC VK_A MENU_COPY",
     0x04000041,
     {kMenuCopy, {}, {}},
     u"unknown modifier 'X' on line 1\nunknown modifier 'C' on line 1"},
    {u" ; word", 0, {}, u"syntax error on line 1"},
    {u" ; VK_A MENU_COPY", kVkA, {kMenuCopy, {}, {}}, u"unknown modifier ';' on line 1"},
    {u"N VK_A", kVkA, {}, u"syntax error on line 1"},
    {u"   ", 0, {}, u"syntax error on line 1"},
    {u"N vk_ä MENU_COPY", 0, {}, u"unknown virtual key 'VK_Ä' on line 1"},
    {u"Q VK_CONTEXT 1 MENU_COPY", 0, {}, u"unknown virtual key 'VK_CONTEXT' on line 1"},
    {uR"(N VK_A "\034\")", kVkA, {kSend, uR"(\034\)", {}}},
    {uR"(N VK_A "say "hi" " "! no more)", kVkA, {kSend, uR"(say "hi" " )", {}}},
    {uR"(N VK_A "")", kVkA, {kSend, {}, {}}},
    {uR"(N VK_A "open)", kVkA, {kSend, {}, {}}, u"expected closing quote on line 1"},
    {u"N VK_A \"ab\ncd\"", kVkA, {kSend, {}, {}}, u"expected closing quote on line 1"},
    {uR"(N VK_A RUN("a"))", kVkA, {kRun, u"a", {}}},
    {uR"(N VK_A RUN("a") ("b c") no more)", kVkA, {kRun, u"a", u"b c"}},
    {uR"(N VK_A RUN("")(""))", kVkA, {kRun, {}, {}}},
    {uR"(N VK_A LAUNCH("x y")("not its"))", kVkA, {kKeyFunctionLaunch, u"x y", {}}},
    {u"N VK_A RUN(a)", kVkA, {}, u"syntax error on line 1"},
    {u"N VK_A RUNNING", kVkA, {}, u"syntax error on line 1"},
    {uR"(N VK_A RUN("a")("b)", kVkA, {}, u"syntax error on line 1"},
    {uR"(N VK_A RUN("))", kVkA, {}, u"syntax error on line 1"},
    {uR"(N VK_A RUN") ("a)", kVkA, {}, u"syntax error on line 1"},
};

TEST(KeymapReaderTest, LinesBindOrTellWhyNot) {
    for (const LineRow& row : kLineRows) {
        SCOPED_TRACE(platform::ToNarrow(row.line));
        Keymap keymap;
        KeymapReader reader(keymap);
        reader.ReadLine(row.line);
        EXPECT_EQ(reader.GetErrorText(), row.errors);
        EXPECT_EQ(reader.GetErrorCount(), row.errors.empty() ? 0 : 1 + std::ranges::count(row.errors, u'\n'));
        const bool isBound = row.entry.function != kKeyFunctionNone;
        ASSERT_EQ(keymap.GetEntries().GetCount(), isBound ? 1U : 0U);
        if (isBound) {
            ASSERT_NE(keymap.GetEntries().Find(row.key), nullptr);
            EXPECT_EQ(*keymap.GetEntries().Find(row.key), row.entry);
        }
    }
}

TEST(KeymapReaderTest, HostileTextEndsInTime) {
    Keymap keymap;
    KeymapReader reader(keymap);
    reader.ReadLine(std::u16string(8 << 20, u'X') + u" VK_A MENU_COPY");
    EXPECT_EQ(reader.GetErrorCount(), 8 << 20);
    EXPECT_LT(reader.GetErrorText().size(), 70'000U);
    EXPECT_FALSE(reader.WantsMore());

    KeymapReader chains(keymap);
    VUnicodeString line;
    for (int i = 1; i <= KeymapReader::kMostBindings; ++i) {
        line.Format(u"N 0x%1!X! MENU_COPY", i * 0x1000);  // all in one bucket
        chains.ReadLine(line);
    }
    EXPECT_TRUE(chains.WantsMore());
    chains.ReadLine(u"N VK_B MENU_COPY");
    EXPECT_TRUE(chains.IsTooLong());
    EXPECT_EQ(chains.GetErrorCount(), 0);
    EXPECT_EQ(keymap.GetKeyFunction(0x42), kKeyFunctionNone);
}

/// Files in a scratch folder; the user's configuration lies in `config` there.
class KeymapFileTest : public testing::Test {
  protected:
    KeymapFileTest() { setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1); }
    ~KeymapFileTest() override { unsetenv("XDG_CONFIG_HOME"); }

    bool Load(std::string_view bytes) {
        folder.Write("k", bytes);
        return keymap.Load(folder.Name("k"), report);
    }
    std::u16string Insert(std::size_t index) const {
        return index < report.GetInsertCount() ? report.GetInserts()[index] : u"none";
    }

    test::TemporaryFolder folder;
    Keymap keymap;
    VReportMessageParams report;
};

TEST_F(KeymapFileTest, ErrorsAreCollectedUpToTheThird) {
    EXPECT_TRUE(Load("; note\r\n\r\nN VK_A MENU_COPY\r\nx\r\nN VK_B MENU_PASTE\r\n"));
    EXPECT_EQ(report.GetCode(), kReportKeymapErrors);
    EXPECT_EQ(Insert(0), folder.Name("k"));
    EXPECT_EQ(Insert(1), u"syntax error on line 4");
    EXPECT_TRUE(keymap.HasComments());
    EXPECT_FALSE(Load("x\ny\nN VK_C MENU_FIND\nz\nw\nN VK_D MENU_FIND\n"));
    EXPECT_EQ(report.GetCode(), kReportBadKeymap);
    EXPECT_EQ(Insert(1), u"syntax error on line 1\nsyntax error on line 2\nsyntax error on line 4");
    EXPECT_FALSE(keymap.HasComments());
    EXPECT_EQ(keymap.GetKeyFunction(0x43), 42U) << "what was read stays";
    EXPECT_EQ(keymap.GetKeyFunction(0x44), kKeyFunctionNone) << "reading has stopped";
    EXPECT_EQ(keymap.GetKeyFunction(kVkA), kMenuCopy) << "a load adds";
}

TEST_F(KeymapFileTest, AFileThatCannotBeReadWholeIsRefused) {
    EXPECT_FALSE(Load("\xEF\xBB\xBFN VK_A MENU_COPY\nx\nN VK_B \"\xFF\xFF\"\n"));
    EXPECT_EQ(report.GetCode(), kReportBadKeymap);
    EXPECT_TRUE(Insert(1).starts_with(u"syntax error on line 2\n")) << "and then the system's text";
    EXPECT_EQ(keymap.GetKeyFunction(kVkA), kMenuCopy);
    std::string lines;
    for (int i = 0; i <= KeymapReader::kMostBindings; ++i) lines += "N VK_A MENU_COPY\n";
    EXPECT_FALSE(Load(lines));
    EXPECT_EQ(Insert(1), VReportMessageParams(platform::kFileTooLarge).GetText());
}

TEST_F(KeymapFileTest, ANameThatIsNotFoundBecomesAnEmptyFileInTheKeymapsFolder) {
    const fs::path keymaps = folder / "config/brennmark/keymaps";
    EXPECT_TRUE(keymap.Load(u"absent.key", report));
    EXPECT_EQ(report.GetCode(), 0U);
    EXPECT_EQ(keymap.GetEntries().GetCount(), 0U);
    EXPECT_EQ(keymap.GetKeyFunction(0x70), 139U);
    EXPECT_EQ(test::ReadFile(keymaps / "absent.key"), "\xFF\xFE");
    EXPECT_EQ(test::ModeOf(keymaps / "absent.key"), 0600U);

    test::WriteFile(folder / "config/brennmark/kept", "kept");
    for (const char16_t* name : {u"..\\kept", u"x/../../kept", u"no\\folder", u""}) {
        EXPECT_FALSE(keymap.Load(name, report)) << platform::ToNarrow(name);
        EXPECT_EQ(report.GetCode(), kReportBadKeymap);
        EXPECT_EQ(Insert(0), name);
        EXPECT_NE(Insert(1), u"");
    }
    EXPECT_EQ(folder.Read("config/brennmark/kept"), "kept");
    EXPECT_FALSE(keymap.LoadExisting(u"missing.key", report));
    EXPECT_FALSE(fs::exists(keymaps / "missing.key"));
}

TEST_F(KeymapFileTest, BuiltInBindingsShowWhereThereIsNoOther) {
    EXPECT_EQ(keymap.GetKeyFunction(0x70), kKeyFunctionNone) << "none before a load";
    ASSERT_TRUE(Load("N VK_F1 MENU_COPY\n"));
    EXPECT_EQ(keymap.GetDefaults()->GetEntries().GetCount(), 59U);
    EXPECT_EQ(keymap.GetKeyFunction(0x70), kMenuCopy);
    keymap.SetKeyFunction(0x70, kKeyFunctionNone);
    EXPECT_EQ(keymap.GetKeyFunction(0x70), 139U);
    EXPECT_EQ(keymap.GetKeyString(0x0C000032), u"\\000") << "Control and Shift with 2";
    EXPECT_EQ(keymap.GetKeyFunction(0x08000032), kKeyFunctionNone) << "Shift with 2 types an at sign";
    EXPECT_EQ(keymap.GetKeyString(0x84000000 + '\\'), u"\\034");
    EXPECT_EQ(keymap.GetKeyString(0x0A00002E), u"\\177") << "Shift with the extended Delete";
    EXPECT_EQ(keymap.GetKeyFunction(0x10000030), 89U) << "a default accelerator";
    keymap.SetKeyString(0x71, u"no binding of its own");
    EXPECT_EQ(keymap.GetKeyString(0x71), u"");
}

TEST_F(KeymapFileTest, SavedLinesAreSortedAndReadBackTheSame) {
    ASSERT_TRUE(
        Load("; note\nSE VK_A RUN(\"p q\")(\"-x \"y\"\")\nA 0x4000DC LAUNCH(\"l\")\nE VK_PRIOR VT_HELP\n"
             "N VK_AT \"b\\r\"\nN vk_f12 \"\xE4\xBC\x9A\"\nC VK_B MENU_COPY\nN VK_A DISABLED\n"));
    EXPECT_EQ(report.GetCode(), 0U);
    ASSERT_TRUE(keymap.Save(folder.Name("out")));
    EXPECT_EQ(folder.Read("out"),
              "\xEF\xBB\xBFN\tVK_A                \tDISABLED\r\n"
              "N\tVK_F12              \t\"\xE4\xBC\x9A\"\r\n"
              "N\tVK_AT               \t\"b\\r\"\r\n"
              "E\tVK_PRIOR            \tVT_F15\r\n"
              "C\tVK_B                \tMENU_COPY\r\n"
              "SE\tVK_A                \tRUN(\"p q\")(\"-x \"y\"\")\r\n"
              "A\t0x4000DC            \tLAUNCH(\"l\")\r\n");
    Keymap again;
    ASSERT_TRUE(again.Load(folder.Name("out"), report));
    EXPECT_EQ(report.GetCode(), 0U);
    EXPECT_TRUE(again == keymap);
    EXPECT_FALSE(again.HasComments());
    const Keymap copy(keymap);
    EXPECT_FALSE(copy == keymap) << "a copy has no built-in bindings";
    EXPECT_TRUE(copy == Keymap(again));
    again.SetKeyArguments(0x0A000041, u"-z");
    EXPECT_FALSE(copy == Keymap(again));
}

TEST_F(KeymapFileTest, WhatCannotBeWrittenLeavesTheFileAsItWas) {
    folder.Write("out", "before");
    keymap.SetEntry(kVkA, {kSend, std::u16string_view(u"\xD800"), {}});
    EXPECT_FALSE(keymap.Save(folder.Name("out")));
    EXPECT_EQ(platform::GetLastErrorCode(), platform::kNoUnicodeTranslation);
    EXPECT_EQ(folder.Read("out"), "before");
    EXPECT_FALSE(keymap.Save(folder.Name("no/folder")));
}

TEST(KeyNamesTest, KeysAreKnownByNameAndByNumber) {
    const std::pair<std::u16string_view, std::uint32_t> kRows[] = {
        {u"VK_F1", 0x70},
        {u"0x70", 0x70},
        {u"0X70 \t", 0x70},
        {u"112", 0x70},
        {u"0160", 0x70},
        {u"0", 0},
        {u"4294967294", 0xFFFFFFFE},
        {u"VK_NUMLOCK", 0x90},
        {u"VK_AT", 0x80000040},
        {u"VK_CONTEXT 1", 0x01100000},
        {u"VK_NO_BREAK_SPACE", 0x800000A0},
    };
    for (const auto& [name, code] : kRows)
        EXPECT_EQ(static_cast<std::uint32_t>(GetKeyCode(name)), code) << platform::ToNarrow(name);
    for (const std::u16string_view name :
         {u"", u"vk_f1", u"VK_", u"VK_F100", u" 112", u"+1", u"-1", u"12a", u"0x", u"0xg", u"08", u"4294967296",
          u"99999999999999999999999", u"1-", u"VK_MULTIPLEC_ANDIDATE", u"VK_NOTSIGN", u"\u4f1a"})
        EXPECT_EQ(GetKeyCode(name), kUnknownKeyName) << platform::ToNarrow(name);
}

TEST(KeyNamesTest, EveryKeyNameLeadsToItsCodeAndBack) {
    for (const KeyRow& row : kStandardKeys) {
        EXPECT_EQ(static_cast<std::uint32_t>(GetKeyCode(row.name)), row.code);
        EXPECT_EQ(GetKeyName(row.code), row.name);
    }
    int notFound = 0;
    for (const KeyRow& row : kExtendedKeys) {
        EXPECT_EQ(GetKeyName(row.code), row.name);
        if (static_cast<std::uint32_t>(GetKeyCode(row.name)) != row.code) ++notFound;
    }
    EXPECT_EQ(notFound, 2) << "the pairs in the wrong order";
    for (const std::uint32_t code : {0xDCu, 0u, 0xFFFFFFFEu})
        EXPECT_EQ(static_cast<std::uint32_t>(GetKeyCode(GetKeyName(code))), code);
    EXPECT_EQ(GetKeyName(0xDC), u"0xDC");
}

TEST(KeyNamesTest, EveryFunctionNameLeadsToItsNumberAndBack) {
    for (std::uint32_t number = 0; number < std::size(kKeyFunctionNames); ++number) {
        const VUnicodeString name = GetKeyFunctionName(number);
        EXPECT_EQ(name, kKeyFunctionNames[number]);
        EXPECT_EQ(GetKeyFunctionID(name), static_cast<std::int32_t>(number));
    }
    EXPECT_EQ(GetKeyFunctionID(u"VT_HELP"), 173);
    EXPECT_EQ(GetKeyFunctionID(u"VT_DO"), 174);
    EXPECT_EQ(GetKeyFunctionID(u""), 0);
    for (const std::u16string_view name : {u"vt_pf1", u"VT_PF", u"VT_PF1 ", u"ZZZ"})
        EXPECT_EQ(GetKeyFunctionID(name), kUnknownKeyName);
    EXPECT_EQ(GetKeyFunctionName(184), u"VT_NEXT_SCREEN");
    EXPECT_EQ(GetKeyFunctionName(185), u"");
}

TEST(KeyNamesTest, DefaultKeysAreThoseOfTheKeymapFunctionsAlone) {
    using Keys = std::vector<std::uint32_t>;
    Keys keys{1};
    EXPECT_TRUE(GetDefaultKeys(KeyFunctionNumber(u"MENU_CONNECT"), keys));
    EXPECT_EQ(keys, (Keys{0x10000043, 0x1000004E}));
    EXPECT_TRUE(GetDefaultKeys(kKeyFunctionNone, keys)) << "the row of zeros counts";
    EXPECT_EQ(keys, Keys{0});
    EXPECT_FALSE(GetDefaultKeys(4, keys)) << "4 of the other group";
    EXPECT_TRUE(keys.empty());
}

}  // namespace
}  // namespace connectdialog
