#include "keymap/keynames.h"

#include <gtest/gtest.h>

#include "keymap/extendedkeytable.h"
#include "keymap/keyfunctiontable.h"
#include "platform/codepage.h"

namespace connectdialog {
namespace {

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
