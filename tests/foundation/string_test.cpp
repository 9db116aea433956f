// Strings, arrays of strings and buffers, and the tools for text.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/byteorder.h"
#include "foundation/casefold.h"
#include "foundation/numericcompare.h"
#include "foundation/textchecks.h"
#include "foundation/texttools.h"
#include "foundation/utf8.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vnarrowstring.h"
#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"
#include "foundation/vunicodestringi.h"
#include "support/freewatch.h"
#include "support/strings.h"

namespace connectdialog {
namespace {

constexpr char16_t kSecret[] = u"correct horse battery staple";

VUnicodeString Sensitive(const char16_t* text) {
    VUnicodeString string;
    string.MarkSensitive();
    string = text;
    return string;
}

/// One string of each kind that differs inside: by buffer, sharing and state.
std::vector<VUnicodeString> AllKinds() {
    const std::u16string longText(300, u'x');
    static const VUnicodeString other(u"shared text");
    return {VUnicodeString(),
            VUnicodeString(u"abc"),
            VUnicodeString(longText),
            other,
            u"a literal"_v,
            Sensitive(u"secret"),
            Sensitive(u""),
            VUnicodeString(u"a\0b", 3),
            VUnicodeString(u"\xD800 lone \xDC00")};
}

TEST(UnicodeString, AppendingAndAssigningFollowTheRulesForEachPairOfKinds) {
    for (const VUnicodeString& left : AllKinds()) {
        for (const VUnicodeString& right : AllKinds()) {
            const std::u16string before(left.View());
            VUnicodeString sum(left);
            sum += right;
            sum += u'!';
            sum.MutableAt(0) = u'#';
            EXPECT_TRUE(sum == u'#' + (before + std::u16string(right.View()) + u'!').substr(1));
            EXPECT_EQ(sum.GetData()[sum.GetLength()], 0);
            EXPECT_EQ(sum.IsSensitive(), left.IsSensitive() || right.IsSensitive());
            EXPECT_TRUE(left == before) << "a write leaves other handles alone";

            VUnicodeString assigned(left);
            assigned = right;
            EXPECT_TRUE(assigned == right);
            EXPECT_EQ(assigned.IsSensitive(), left.IsSensitive() || right.IsSensitive());
            const bool shares = assigned.GetData() == right.GetData();
            EXPECT_EQ(shares, !left.IsSensitive() || right.IsSensitive());
        }
    }
}

TEST(UnicodeString, TheStateSurvivesEmptyingConversionAndEditing) {
    VUnicodeString text = Sensitive(u"  Secret text  ");
    text.TrimLeft();
    text.TrimRight();
    text.MakeUpper();
    text.Erase(0);
    text.Insert(0, u"s");
    text.Replace(u"TEXT", u"words");
    EXPECT_TRUE(text == u"sECRET words");
    EXPECT_TRUE(text.IsSensitive());
    text.Resize(3);
    EXPECT_TRUE(text == u"sEC" && text.IsSensitive());
    const VNarrowString narrow(text);
    EXPECT_TRUE(narrow.IsSensitive() && VUnicodeString(narrow).IsSensitive());
    EXPECT_TRUE(Utf8FromWide(text).IsSensitive() && WideFromUtf8(narrow).IsSensitive());
    text.Format(u"%1", u"formatted");
    EXPECT_TRUE(text == u"formatted" && text.IsSensitive());
    text.Empty();
    EXPECT_TRUE(text.IsSensitive());
    text = u"next";
    EXPECT_TRUE(text.IsSensitive());
}

TEST(UnicodeString, NoOperationLeavesTextOfASensitiveStringBehind) {
    test::FreeWatch watch(kSecret);
    {
        VUnicodeString secret = Sensitive(kSecret);
        secret += u", and more that makes it grow";
        secret.Insert(3, u"inserted");
        secret.Replace(u"horse", u"a longer word than before");
        secret.Resize(400);
        secret.TrimRight();
        secret = kSecret;
        secret.Format(u"%1 again", kSecret);
        const VNarrowString narrow(secret);
        VUnicodeStringI handedOut;
        handedOut.Assign(secret.GetData(), Str::SensitiveState::kSensitive);
        handedOut.CopyTo(handedOut);
        handedOut = VUnicodeString(narrow);
        handedOut.Assign("n\xC3\xA4w", Str::SensitiveState::kSensitive);
        handedOut.Append("er");
        EXPECT_TRUE(handedOut == u"n\u00E4wer" && handedOut.IsSensitive());
    }
    EXPECT_EQ(watch.GetResidues(), 0);
    { const VUnicodeString plain(kSecret); }
    EXPECT_EQ(watch.GetResidues(), 1);
}

TEST(CaseFolding, FollowsTheSimpleMappings) {
    const std::pair<char16_t, char16_t> bothWays[] = {
        {u'A', u'a'},     {u'Z', u'z'},     {0x00C0, 0x00E0}, {0x0178, 0x00FF}, {0x0139, 0x013A},
        {0x01CD, 0x01CE}, {0x0386, 0x03AC}, {0x0410, 0x0430}, {0x10A0, 0x2D00}, {0x13A0, 0xAB70},
        {0x1E00, 0x1E01}, {0x2160, 0x2170}, {0xA640, 0xA641}, {0xFF21, 0xFF41}};
    for (const auto& [upper, lower] : bothWays) {
        EXPECT_TRUE(ToLower(upper) == lower && ToLower(lower) == lower) << std::hex << +upper;
        EXPECT_TRUE(ToUpper(lower) == upper && ToUpper(upper) == upper) << std::hex << +lower;
    }
    EXPECT_EQ(ToLower(0x0130), u'i');
    for (const char16_t unmapped :
         {u'[', u'`', u'{', u'\u00D7', u'\u00F7', u'\u00DF', u'\u4E00', u'\xD801', u'\xFFFF'}) {
        EXPECT_EQ(ToLower(unmapped), unmapped);
        EXPECT_EQ(ToUpper(unmapped), unmapped);
    }
    for (const char16_t space : {u' ', u'\t', u'\r', u'\u0085', u'\u00A0', u'\u2003', u'\u3000'})
        EXPECT_TRUE(IsSpace(space));
    for (const char16_t other : {u'a', u'\b', u'\u200B', u'\u4E00', u'\uFEFF'}) EXPECT_FALSE(IsSpace(other));
}

TEST(NarrowString, EditsBytes) {
    VNarrowString text("user@host");
    EXPECT_TRUE(text.FindChar('@') == 4 && text.ReverseFind('s') == 7);
    EXPECT_TRUE(text.Left(4) == "user" && text.Mid(5) == "host");
    const VNarrowString copy(text);
    text.SetLength(4);
    *text.MutableData(3) = 'd';
    text += ".x";
    EXPECT_TRUE(text == "used.x" && copy == "user@host");
}

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

using test::Strings;

TEST(StringArray, ADamagedBinaryFormIsRefusedAsAWhole) {
    // Longer than the bytes, an element longer than what is left, and no room for an element's length.
    const std::uint8_t forms[][8] = {{0, 0, 0, 5}, {0, 0, 0, 4, 0x7F, 0xFF, 0xFF, 0xF0}, {0, 0, 0, 3}};
    for (const auto& form : forms) {
        VBasicBuffer buffer(0);
        buffer.Append(form, sizeof form, 0);
        VStringArray read = Strings({u"old"});
        EXPECT_FALSE(read.ReadFrom(&buffer) || !read.IsEmpty());
    }
}

TEST(BasicBuffer, ASensitiveOneLeavesNothingBehind) {
    constexpr char16_t kSecret[] = u"correct horse battery staple";
    test::FreeWatch watch(kSecret);
    for (const bool sensitive : {true, false}) {
        auto buffer = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(8));
        buffer->SetSensitive(sensitive);
        buffer->AppendWide(kSecret, std::size(kSecret));
        buffer->AppendString("more");
        EXPECT_EQ(buffer->Append("a", UINT64_MAX, 0), nullptr);
        buffer = nullptr;
        EXPECT_EQ(watch.GetResidues(), sensitive ? 0 : 2);
    }
}

TEST(Join, QuotesWhereForced) {
    const VStringArray elements = Strings({u"", u"a", u"", u"b c", u"d"});
    EXPECT_TRUE(VJoin(elements, u", ", u"", u"") == u"a, b c, d");
    EXPECT_TRUE(VJoin(elements, u",", u"\"", u" ") == u"a,\"b c\",d");
    EXPECT_TRUE(VJoin(elements, u",", u"[]", u"") == u"[a],[b c],[d]");
    EXPECT_TRUE(VQuoteIfNeeded(u"", u"''", u"") == u"''");
    EXPECT_TRUE(VQuoteIfNeeded(u"a", u"''", u"bc") == u"a");
}

TEST(NumericCompare, NumbersInTextsAreComparedAsNumbers) {
    // Of equal numbers the first characters decide, and then the lengths.
    const std::tuple<const char16_t*, const char16_t*, int> rows[] = {{u"host 2", u"HOST10", -1},
                                                                      {u"a7", u"a07", -1},
                                                                      {u"a+7", u"a 7", 0},
                                                                      {u"Ab", u"aB", 0},
                                                                      {u"", u"a", -1},
                                                                      {u"a-7", u"a-8", -1},
                                                                      {u"a", u"7", 1},
                                                                      {u"a10b2", u"a10b10", -1},
                                                                      {u"a4294967295", u"a5xxxxxxxxxxxx", 1},
                                                                      {u"a4294967296", u"a5xxxxxxxxxxxx", -1},
                                                                      {u"b2", u"a10", 1},
                                                                      {u"b", u"ab", 1}};
    for (const auto& [a, b, expected] : rows) {
        const int result = CompareNumericText(a, b);
        EXPECT_EQ((result > 0) - (result < 0), expected) << testing::PrintToString(std::u16string(a));
        const int turned = CompareNumericText(b, a);
        EXPECT_EQ((turned > 0) - (turned < 0), -expected) << testing::PrintToString(std::u16string(b));
    }
}

TEST(TextTools, AShortenedTextFitsAndHasNoHalfCharacter) {
    const std::tuple<const char16_t*, std::size_t, const char16_t*> rows[] = {
        {u"abcd", 4, u"abcd"}, {u"abcde", 4, u"abc…"}, {u"ab😀de", 4, u"ab…"}, {u"a😀cde", 4, u"a😀…"}, {u"😀😀", 1, u"…"}};
    for (const auto& [text, most, shown] : rows) EXPECT_EQ(Shorten(text, most), shown);
    EXPECT_EQ(Shorten(u"abcdef", 5, u"..."), u"ab...");
}

}  // namespace
}  // namespace connectdialog
