#include "keymap/profilekeymap.h"

#include "foundation/vreportmessageparams.h"
#include "profile/vvariant.h"
#include "support/fakesuite.h"
#include "support/strings.h"

namespace connectdialog::test {
namespace {

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
    const struct {
        const char* what;
        std::string bytes;
        std::uint32_t bound;
        bool isRead;
        bool isChanged;
    } kRows[] = {
        {"empty", "", 0, false, false},
        {"no records", Number(0) + good, 0, true, false},
        {"fewer than counted", Number(0xFFFFFFFF) + good, 1, true, false},
        {"cut in a key", Number(2) + good + "\0\0"s, 1, true, true},
        {"cut in a name", Number(2) + good + Number(0x42) + "MENU_COPY", 1, true, true},
        {"cut in a string", Number(2) + good + Number(0x42) + "SEND\0x"s, 1, true, true},
        {"too large", Number(1) + Record(0x41, "SEND", std::string(32000, 'x')), 0, true, false},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.what);
        WriteBinary(kV2, row.bytes);
        ProfileKeymap fresh;
        WithKey(u"k", [&](VProfileKey& key) { EXPECT_EQ(fresh.ReadValue(&key, kV2), row.isRead); });
        EXPECT_EQ(fresh.GetEntries().GetCount(), row.bound);
        EXPECT_EQ(fresh.IsChanged(), row.isChanged);
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
    EXPECT_FALSE(other.IsChanged());
    other.Assign(keymap);
    EXPECT_TRUE(other.IsChanged());
    EXPECT_EQ(other.GetKeyFunction(0x41), 38U);
    other.Revert();
    EXPECT_FALSE(other.IsChanged());
}

TEST_F(ProfileKeymapTest, ScriptsSeeTheLinesOfTheMap) {
    keymap.SetKeyFunction(0x41, 38);
    VVariant value;
    VReportMessageParams report;
    EXPECT_TRUE(keymap.GetVariant(value, report));
    ASSERT_NE(value.GetArray(), nullptr);
    ASSERT_EQ(value.GetArray()->GetCount(), 1U);
    EXPECT_EQ((*value.GetArray())[0].GetText(), u"N\tVK_A                \tMENU_COPY");
    EXPECT_TRUE(keymap.Get().IsEmpty()) << "asking changes nothing";
    EXPECT_TRUE(keymap.SetVariant(VariantFromStrings(Strings({u"N VK_B MENU_COPY"})), report));
    EXPECT_EQ(keymap.GetKeyFunction(0x41), kKeyFunctionNone);
    EXPECT_EQ(keymap.GetKeyFunction(0x42), 38U);
    EXPECT_FALSE(keymap.SetVariant(VVariant(u"x"_v), report));
    EXPECT_EQ(keymap.GetKeyFunction(0x42), 38U);
}

}  // namespace
}  // namespace connectdialog::test
