// Keymaps in files and in the profile, and the names of keys and functions.
#include "keymap/keymap.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "foundation/vreportmessageparams.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/keymapreader.h"
#include "keymap/keynames.h"
#include "keymap/profilekeymap.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "support/fakesuite.h"
#include "support/strings.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
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
    {u"N VK_F1 vt_pf1", 0x70, {}, u"illegal string or unknown function, 'vt_pf1', on line 1"},
    {u"N VK_A SEND", kVkA, {}, u"illegal string or unknown function, 'SEND', on line 1"},
    {u"xCC VK_A MENU_COPY",
     0x04000041,
     {kMenuCopy, {}, {}},
     u"unknown modifier 'X' on line 1\nunknown modifier 'C' on line 1"},
    {u" ; word", 0, {}, u"syntax error on line 1"},
    {u"N VK_A", kVkA, {}, u"syntax error on line 1"},
    {u"N vk_ä MENU_COPY", 0, {}, u"unknown virtual key 'VK_Ä' on line 1"},
    {uR"(N VK_A "\034\")", kVkA, {kSend, uR"(\034\)", {}}},
    {uR"(N VK_A "say "hi" " "! no more)", kVkA, {kSend, uR"(say "hi" " )", {}}},
    {uR"(N VK_A "open)", kVkA, {kSend, {}, {}}, u"expected closing quote on line 1"},
    {u"N VK_A \"ab\ncd\"", kVkA, {kSend, {}, {}}, u"expected closing quote on line 1"},
    {uR"(N VK_A RUN("a") ("b c") no more)", kVkA, {kRun, u"a", u"b c"}},
    {uR"(N VK_A LAUNCH("x y")("not its"))", kVkA, {kKeyFunctionLaunch, u"x y", {}}},
    {u"N VK_A RUN(a)", kVkA, {}, u"syntax error on line 1"},
    {uR"(N VK_A RUN("a")("b)", kVkA, {}, u"syntax error on line 1"},
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

    TemporaryFolder folder;
    Keymap keymap;
    VReportMessageParams report;
};

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
    EXPECT_EQ(ReadFile(keymaps / "absent.key"), "\xFF\xFE");
    EXPECT_EQ(ModeOf(keymaps / "absent.key"), 0600U);

    WriteFile(folder / "config/brennmark/kept", "kept");
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
    again.SetKeyArguments(0x0A000041, u"-z");
    EXPECT_FALSE(again == keymap);
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
        {u"0160", 0x70},
        {u"0", 0},
        {u"4294967294", 0xFFFFFFFE},
        {u"VK_AT", 0x80000040},
        {u"VK_CONTEXT 1", 0x01100000},
    };
    for (const auto& [name, code] : kRows)
        EXPECT_EQ(static_cast<std::uint32_t>(GetKeyCode(name)), code) << platform::ToNarrow(name);
    for (const std::u16string_view name :
         {u"", u"vk_f1", u"VK_", u"VK_F100", u" 112", u"+1", u"-1", u"12a", u"0x", u"0xg", u"08", u"4294967296",
          u"99999999999999999999999", u"1-", u"VK_MULTIPLEC_ANDIDATE", u"VK_NOTSIGN", u"\u4f1a"})
        EXPECT_EQ(GetKeyCode(name), kUnknownKeyName) << platform::ToNarrow(name);
}

using namespace std::string_literals;
using Lines = std::vector<std::u16string>;

constexpr char16_t kV3[] = u"Keymap v3";
constexpr char16_t kV2[] = u"Keymap v2";
constexpr char16_t kV1[] = u"Keymap";

std::string Number(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
    return bytes;
}
std::string Record(std::uint32_t key, const std::string& function, const std::string& string) {
    return Number(key) + function + '\0' + string + '\0';
}

/// One key of a store, with a keymap in one of its forms.
class ProfileKeymapTest : public LibraryTest {
  protected:
    static void WriteLines(std::initializer_list<const char16_t*> lines) {
        WithKey(u"k", [&](VProfileKey& key) { ASSERT_TRUE(key.WriteMultiString(kV3, Strings(lines))); });
    }
    static void WriteBinary(const char16_t* name, const std::string& bytes) {
        WithKey(u"k", [&](VProfileKey& key) {
            ASSERT_TRUE(key.WriteBinary(name, bytes.data(), static_cast<std::uint32_t>(bytes.size())));
        });
    }
    /// Reads the value of that name; null: the newest form.
    bool Read(const char16_t* name = nullptr) {
        bool result = false;
        WithKey(u"k", [&](VProfileKey& key) {
            result = name != nullptr ? keymap.ReadValue(&key, name) : keymap.LoadNewest(&key);
        });
        return result;
    }
    /// What a save leaves under the newest name, or one line "none".
    Lines LinesAfterSave(bool force) {
        Lines lines;
        WithKey(u"k", [&](VProfileKey& key) {
            keymap.Save(key, force);
            VStringArray array;
            if (!key.ReadMultiString(kV3, array)) array.Add(u"none");
            for (const VUnicodeString& line : array) lines.emplace_back(line.View());
        });
        return lines;
    }

    ProfileKeymap keymap;
};

TEST_F(ProfileKeymapTest, LinesAreRewrittenOnlyWhenTheMapChanges) {
    const std::initializer_list<const char16_t*> stored = {u"no line", u"n 0x41 MENU_COPY", u"; note", u"C VK_B \"x\""};
    WriteLines(stored);
    EXPECT_TRUE(Read(kV3));
    EXPECT_EQ(keymap.GetKeyFunction(0x41), 38U);
    EXPECT_FALSE(keymap.IsChanged());
    EXPECT_EQ(LinesAfterSave(false), Lines(stored.begin(), stored.end())) << "also what could not be read";
    keymap.SetKeyFunction(0x41, kKeyFunctionNone);
    keymap.SetKeyFunction(0x42, kKeyFunctionRun);
    keymap.SetKeyString(0x42, u"p");
    EXPECT_TRUE(keymap.IsChanged());
    const Lines changed = {u"N\tVK_B                \tRUN(\"p\")(\"\")", u"C\tVK_B                \t\"x\""};
    EXPECT_EQ(LinesAfterSave(false), changed);
    EXPECT_FALSE(keymap.IsChanged());
    EXPECT_TRUE(Read(kV3));
    EXPECT_EQ(LinesAfterSave(true), changed);
    WriteLines({u"x", u"y", u"N VK_A MENU_COPY", u"z", u"N VK_B MENU_COPY"});
    EXPECT_TRUE(Read(kV3));
    EXPECT_EQ(keymap.GetEntries().GetCount(), 1U) << "nothing is bound after the third error";
    EXPECT_EQ(keymap.Get().GetCount(), 5U);
}

TEST_F(ProfileKeymapTest, OlderFormsAreReadValueByValue) {
    const std::string records = Record(0x0341, "VT_PF1", "") + Record(0x0C70, "SEND", "\xEF\xBB\xBF\xE4\xBC\x9A") +
                                Record(0x42, "RUN", "caf\xC3\xA9") + Record(0x43, "NO_SUCH", "s") +
                                Record(0x44, "NONE", "");
    const Lines read = {u"N\tVK_B                \tRUN(\"caf\u00e9\")(\"\")", u"CE\tVK_A                \tVT_PF1",
                        u"AS\tVK_F1               \t\"\u4f1a\""};
    for (const char16_t* name : {kV2, kV1}) {
        WithKey(u"k", [](VProfileKey& key) {
            key.GetImpl()->DeleteValue(kV3);
            key.GetImpl()->DeleteValue(kV2);
        });
        WriteBinary(name, Number(5) + records);
        EXPECT_TRUE(Read(kV2));
        EXPECT_EQ(keymap.GetEntries().GetCount(), 3U);
        EXPECT_FALSE(keymap.IsChanged());
        EXPECT_EQ(LinesAfterSave(false), Lines{u"none"}) << "nothing has changed";
        EXPECT_EQ(LinesAfterSave(true), read);
    }
    WriteBinary(kV1, Number(0));
    EXPECT_TRUE(Read());
    EXPECT_EQ(keymap.GetEntries().GetCount(), 3U) << "the newest form counts";
    WithKey(u"k", [](VProfileKey& key) { key.GetImpl()->DeleteValue(kV3); });
    EXPECT_TRUE(Read());
    EXPECT_EQ(keymap.GetEntries().GetCount(), 0U);
}

TEST_F(ProfileKeymapTest, AnOlderFormThatIsTooLongIsNotHiddenByAnEmptyOne) {
    WriteBinary(kV2, std::string(ProfileKeymap::kLargestBinaryValue + 1, '\0'));
    EXPECT_TRUE(Read());
    EXPECT_EQ(LinesAfterSave(false), Lines{u"none"});
}

TEST_F(ProfileKeymapTest, TheLastBindingOfAnOlderFormCanBeRemoved) {
    WriteBinary(kV2, Number(1) + Record(0x41, "MENU_COPY", ""));
    EXPECT_TRUE(Read());
    keymap.SetKeyFunction(0x41, kKeyFunctionNone);
    EXPECT_EQ(LinesAfterSave(false), Lines());
    EXPECT_TRUE(Read());
    EXPECT_EQ(keymap.GetEntries().GetCount(), 0U);
}

TEST_F(ProfileKeymapTest, DamagedBinaryValuesKeepWhatWasRead) {
    const std::string good = Record(0x41, "MENU_COPY", "");
    // What it is, the bytes, how many are bound, whether they are read, and whether the next save writes them.
    const std::tuple<const char*, std::string, std::uint32_t, bool, bool> kRows[] = {
        {"no records", Number(0) + good, 0, true, false},
        {"fewer than counted", Number(0xFFFFFFFF) + good, 1, true, false},
        {"cut in a key", Number(2) + good + "\0\0"s, 1, true, true},
        {"cut in a string", Number(2) + good + Number(0x42) + "SEND\0x"s, 1, true, true},
        {"too large", Number(1) + Record(0x41, "SEND", std::string(32000, 'x')), 0, true, false},
    };
    for (const auto& [what, bytes, bound, isRead, isChanged] : kRows) {
        SCOPED_TRACE(what);
        WriteBinary(kV2, bytes);
        ProfileKeymap fresh;
        WithKey(u"k", [&, expected = isRead](VProfileKey& key) { EXPECT_EQ(fresh.ReadValue(&key, kV2), expected); });
        EXPECT_EQ(fresh.GetEntries().GetCount(), bound);
        EXPECT_EQ(fresh.IsChanged(), isChanged);
    }
}

TEST_F(ProfileKeymapTest, WhatTheStoreLacksIsWrittenAndEditsAreAcceptedOrDropped) {
    EXPECT_TRUE(Read());
    EXPECT_TRUE(keymap.IsMissing());
    EXPECT_EQ(LinesAfterSave(false), Lines());
    keymap.SetKeyFunction(0x41, 38);
    keymap.Revert();
    EXPECT_EQ(keymap.GetKeyFunction(0x41), kKeyFunctionNone);
    keymap.Commit();
    EXPECT_FALSE(keymap.IsMissing());
    keymap.SetKeyFunction(0x41, 38);
    ProfileKeymap copy(keymap);
    EXPECT_TRUE(copy.IsChanged()) << "a copy knows what is stored";
    keymap.Commit();
    EXPECT_TRUE(keymap.IsMissing());
    EXPECT_FALSE(keymap.IsChanged());
    EXPECT_EQ(LinesAfterSave(false), Lines{u"N\tVK_A                \tMENU_COPY"});
    ProfileKeymap other;
    other.Assign(keymap);
    EXPECT_TRUE(other.IsChanged() && other.GetKeyFunction(0x41) == 38U);
}

}  // namespace
}  // namespace connectdialog::test
