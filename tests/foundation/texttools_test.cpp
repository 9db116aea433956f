#include "foundation/texttools.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/casefold.h"
#include "foundation/commandline.h"
#include "foundation/numericcompare.h"
#include "support/strings.h"

namespace connectdialog {
namespace {

using test::Strings;

TEST(Tokenize, SplitsByTheRules) {
    struct Row {
        const char16_t* text;
        std::initializer_list<std::u16string_view> delimiters, quotes;
        bool skipEmpty, stripQuotes, expected;
        std::initializer_list<const char16_t*> tokens;
    };
    const std::initializer_list<std::u16string_view> comma = {u","}, none = {}, quotes = {u"\"\"", u"()"};
    const Row rows[] = {
        {u"", comma, none, false, false, true, {}},
        {u"a,,b", comma, none, false, false, true, {u"a", u"", u"b"}},
        {u"\"\",b", comma, quotes, true, true, true, {u"", u"b"}},
        {u"x\"a,b\"y,c", comma, quotes, false, true, true, {u"xa,by", u"c"}},
        {u"(a\",)b,c", comma, quotes, false, true, true, {u"a\",b", u"c"}},
        {u"a,\"b,c", comma, quotes, false, true, false, {u"a", u"b,c"}},
        {u"a::b:c", {u"::", u":"}, none, false, false, true, {u"a", u"b", u"c"}},
    };
    for (const Row& row : rows) {
        VStringArray tokens = Strings({u"left over"});
        EXPECT_EQ(VTokenize(row.text, tokens, row.delimiters, row.quotes, row.skipEmpty, row.stripQuotes),
                  row.expected);
        EXPECT_TRUE(tokens == Strings(row.tokens)) << testing::PrintToString(std::u16string(row.text));
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

/// Reads the number at an offset afresh, as the rule says it; a space is all white space there is.
bool ReadNumber(std::u16string_view text, std::int64_t& value) {
    std::size_t at = text.find_first_not_of(u' ');
    if (at != text.npos && text[at] == u'+') ++at;
    const std::size_t start = at;
    for (value = 0; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
        value = std::min<std::int64_t>(value * 10 + text[at] - u'0', INT64_C(1) << 32);
    }
    return at > start && value < INT64_C(1) << 32;
}

int CompareSlowly(std::u16string_view a, std::u16string_view b) {
    if (EqualsNoCase(a, b)) return 0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
        std::int64_t left = 0;
        std::int64_t right = 0;
        if (ReadNumber(a.substr(i), left) && ReadNumber(b.substr(i), right) && left != right)
            return left < right ? -1 : 1;
        if (const int first = CompareNoCase(a.substr(0, 1), b.substr(0, 1)); first != 0) return first;
    }
    return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

TEST(NumericCompare, AgreesWithTheRuleOnEveryShortText) {
    std::vector<std::u16string> texts = {u""};
    for (std::size_t first = 0, length = 1; length <= 3; ++length) {
        const std::size_t last = texts.size();
        for (; first < last; ++first) {
            for (const char16_t character : {u' ', u'+', u'0', u'7', u'a', u'B', u'-'})
                texts.push_back(texts[first] + character);
        }
    }
    texts.insert(texts.end(), {u"+0 7", u"a4294967295", u"a4294967296", u"a5", u"Ab", u"host 2", u"HOST10"});
    for (const std::u16string& a : texts) {
        for (const std::u16string& b : texts) {
            const int result = CompareNumericText(a, b);
            ASSERT_EQ((result > 0) - (result < 0), CompareSlowly(a, b))
                << testing::PrintToString(a) << testing::PrintToString(b);
        }
    }
}

TEST(NumericCompare, LongRunsTakeNoLongTime) {
    for (const char16_t filler : {u'0', u' ', u'9', u'+'}) {
        const std::u16string text = std::u16string(100'000, filler) + u"x1";
        EXPECT_EQ(CompareNumericText(text, text + u"y"), -1);
    }
}

TEST(CommandLine, IsTakenApartByOneRule) {
    struct Row {
        const char16_t* line;
        bool isClosed;
        std::initializer_list<const char16_t*> words;
    };
    const Row rows[] = {{u"", true, {}},
                        {u"   ", true, {}},
                        {u"a  b\tc ", true, {u"a", u"b\tc"}},
                        {u"/S \"A\\B c\" ", true, {u"/S", u"A\\B c"}},
                        {u"/SESSION_FOLDER \\ ", true, {u"/SESSION_FOLDER", u"\\"}},
                        {u"\"\" x", true, {u"", u"x"}},
                        {u"\"a\"b\" c", true, {u"a\"b", u"c"}},
                        {u"\"a\"\"", true, {u"a\""}},
                        {u"a\"b c\"", true, {u"a\"b", u"c\""}},
                        {u"a \"b c", false, {u"a", u"b c"}},
                        {u"\"", false, {u""}}};
    for (const Row& row : rows) {
        VStringArray words;
        EXPECT_EQ(SplitCommandLine(row.line, words), row.isClosed);
        EXPECT_TRUE(words == Strings(row.words));
    }
}

}  // namespace
}  // namespace connectdialog
