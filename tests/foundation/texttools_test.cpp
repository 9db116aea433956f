#include "foundation/texttools.h"

#include <gtest/gtest.h>
#include <string>

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

TEST(NumericCompare, NumbersInTextsAreComparedAsNumbers) {
    const std::tuple<const char16_t*, const char16_t*, int> rows[] = {
        {u"host 2", u"HOST10", -1}, {u"host2", u"host10", -1},   {u"a7", u"a07", 1}, {u"a+7", u"a 7", -1},
        {u"Ab", u"aB", 0},          {u"a4294967295", u"a5", 1},  {u"", u"a", -1},    {u"7a", u"7B", -1},
        {u"a-7", u"a-8", -1},       {u"a4294967296", u"a5", -1}, {u"a", u"7", 1},    {u"a10b2", u"a10b10", -1}};
    for (const auto& [a, b, expected] : rows) {
        const int result = CompareNumericText(a, b);
        EXPECT_EQ((result > 0) - (result < 0), expected) << testing::PrintToString(std::u16string(a));
        const int turned = CompareNumericText(b, a);
        EXPECT_EQ((turned > 0) - (turned < 0), -expected) << testing::PrintToString(std::u16string(b));
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
