#include "foundation/utf8.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "foundation/stringerrors.h"
#include "platform/codepage.h"

namespace connectdialog {
namespace {

TEST(Utf8, DecodesLenientlyAndStopsAtWhatItCannotRead) {
    using namespace std::string_view_literals;
    const std::pair<std::string_view, std::u16string_view> rows[] = {
        {"", u""},
        {"a\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80", u"a\u00E4\u4E2D\U0001F600"},
        {"\xC0\x80"sv, u"\0"sv},
        {"\xED\xA0\x80", u"\xD800"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
        {"\x80\xBF", u"\u0080\u00BF"},
        {"ab\xC3", u"ab"},
        {"ab\xC3zd", u"ab"},
        {"a\xF4\x90\x80\x80z", u"a"},
        {"a\xF8\x88\x80\x80z", u"a"},
    };
    for (const auto& [bytes, expected] : rows) EXPECT_TRUE(WideFromUtf8(bytes) == expected) << bytes;
}

TEST(Utf8, EncodesAllButALoneHighSurrogate) {
    const std::u16string_view all = u"a\u00E4\u4E2D\U0001F600\xDC00z";
    EXPECT_TRUE(Utf8FromWide(all) == "a\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80\xED\xB0\x80z");
    EXPECT_TRUE(Utf8FromWide(u"abc\xD800") == "");
    EXPECT_TRUE(Utf8FromWide(u"abc\xD800z") == "");
}

TEST(Utf8, CodePointsOfEachLengthComeBack) {
    // A prime step meets all bit patterns; the limits of the lengths are near the start of the range.
    for (char32_t codePoint = 0; codePoint < 0x110000; codePoint += codePoint < 0x900 ? 1 : 13) {
        if (codePoint >= 0xD800 && codePoint < 0xE000) continue;
        const char16_t pair[] = {static_cast<char16_t>(0xD7C0 + (codePoint >> 10)),
                                 static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF))};
        const char16_t single = static_cast<char16_t>(codePoint);
        const std::u16string_view text(codePoint < 0x10000 ? &single : pair, codePoint < 0x10000 ? 1 : 2);
        char bytes[8];
        char16_t back[4];
        Utf8Progress encoded;
        EncodeUtf8(text, bytes, sizeof(bytes), encoded);
        ASSERT_EQ(std::string_view(bytes, encoded.written), platform::ToNarrow(text));
        Utf8Progress decoded;
        DecodeUtf8({bytes, encoded.written}, back, std::size(back), decoded);
        ASSERT_EQ(std::u16string_view(back, decoded.written), text);
        ASSERT_EQ(platform::ToWide({bytes, encoded.written}), text);
    }
}

TEST(Utf8, TellsHowFarItCame) {
    char16_t units[2];
    Utf8Progress progress;
    DecodeUtf8("ab\xC3", units, 2, progress);
    EXPECT_EQ(progress.consumed, 2u);
    progress = {};
    EXPECT_THROW(DecodeUtf8("a\xF0\x9F\x98\x80", units, 2, progress), std::overflow_error);
    EXPECT_EQ(progress.written, 1u);
    progress = {};
    EXPECT_THROW(DecodeUtf8("a\xC3zz", units, 2, progress), IllegalSequence);
    EXPECT_EQ(progress.consumed, 1u);

    char bytes[4];
    progress = {};
    EncodeUtf8(u"ab\u4E2D", bytes, sizeof(bytes), progress);
    EXPECT_EQ(progress.consumed, 2u);
    EXPECT_EQ(progress.written, 2u);
}

TEST(CodePage, ReplacesWhatIsMalformed) {
    using namespace std::string_view_literals;
    const std::pair<std::string_view, std::u16string_view> rows[] = {
        {"a\0b"sv, u"a\0b"sv},     {"\xC0\x80", u"\uFFFD\uFFFD"}, {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xE4\xB8z", u"\uFFFDz"}, {"\xFF\xFE", u"\uFFFD\uFFFD"},
    };
    for (const auto& [bytes, expected] : rows) EXPECT_EQ(platform::ToWide(bytes), expected) << bytes;
    EXPECT_EQ(platform::ToNarrow(u"a\xD800z\xDC00\xD83D\xDE00"), "a\xEF\xBF\xBDz\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace connectdialog
