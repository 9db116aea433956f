// Any text taken apart and put together again.
//
// The first two bytes choose the flags and the delimiter.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/texttools.h"
#include "fuzz/require.h"
#include "platform/codepage.h"

using namespace connectdialog;
using fuzz::Require;

namespace {

/// All elements, empty ones too, with the delimiter between them.
std::u16string Join(const VStringArray& tokens, std::u16string_view delimiter) {
    std::u16string text;
    for (std::uint64_t i = 0; i < tokens.GetCount(); ++i) {
        if (i > 0) text += delimiter;
        text += tokens[i].View();
    }
    return text;
}

/// What is left of the text without these characters.
std::u16string Without(std::u16string_view text, std::u16string_view characters) {
    std::u16string left;
    for (const char16_t character : text) {
        if (characters.find(character) == characters.npos) left += character;
    }
    return left;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const bool skipEmpty = (data[0] & 1) != 0;
    const bool stripQuotes = (data[0] & 2) != 0;
    const std::u16string_view delimiter = std::u16string_view(u", |\n").substr(data[1] % 4, 1);
    const std::u16string text = platform::ToWide({reinterpret_cast<const char*>(data + 2), size - 2});

    VStringArray tokens;
    Require(VTokenize(text, tokens, {delimiter}, {}, false, stripQuotes), "without quotes all texts are good");
    Require(Join(tokens, delimiter) == text, "tokens join to the text");
    Require(tokens.IsEmpty() == text.empty(), "only an empty text has no tokens");
    VStringArray quick;
    VSplitOnChar(text, quick, delimiter[0]);
    Require(quick == tokens, "the short form does the same");

    const bool isClosed = VTokenize(text, tokens, {delimiter}, {u"\"\"", u"()"}, false, false);
    Require(Join(tokens, delimiter) == text, "quoted tokens join to the text");
    VStringArray others;
    const bool isClosedToo = VTokenize(text, others, {delimiter, u"=>"}, {u"\"\"", u"()"}, skipEmpty, stripQuotes);
    Require(isClosed == isClosedToo || text.find(u"=>") != text.npos, "flags leave the quotes as they are");
    for (const VUnicodeString& token : others) {
        Require(skipEmpty <= (!token.IsEmpty() || text.find_first_of(u"\"(") != text.npos), "empty tokens are quoted");
    }
    const std::u16string loose = Join(others, u"");
    constexpr std::u16string_view kMarks = u"\"()=>";
    const std::u16string all = std::u16string(kMarks) + std::u16string(delimiter);
    Require(Without(loose, all) == Without(text, all), "nothing but quotes and delimiters gets lost");

    const VUnicodeString plain = VRemoveEscapes(VUnicodeString(text), u"\\");
    if (text.find(u'\\') == text.npos) Require(plain == text, "a text without escapes stays");
    Require(plain.GetLength() * 2 >= text.size() - (text.empty() ? 0 : 1), "an escape drops one character at most");
    return 0;
}
