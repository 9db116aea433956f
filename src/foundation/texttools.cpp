#include "foundation/texttools.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

namespace {

/// One walk of VTokenize over a text.
class Tokenizer {
  public:
    Tokenizer(std::u16string_view text, VStringArray& tokens, bool skipEmpty, bool stripQuotes)
        : text(text), tokens(tokens), skipEmpty(skipEmpty), stripQuotes(stripQuotes), skipThisEmpty(skipEmpty) {}

    bool Run(std::initializer_list<std::u16string_view> delimiters,
             std::initializer_list<std::u16string_view> quotePairs) {
        if (text.empty()) return true;
        while (position < text.size()) {
            if (closingQuote != 0) {
                StepInsideQuotes();
            } else if (!OpenQuote(quotePairs) && !EndToken(delimiters)) {
                ++position;
            }
        }
        FinishToken();
        return closingQuote == 0;
    }

  private:
    void StepInsideQuotes() {
        const bool closes = text[position] == closingQuote;
        if (closes) {
            closingQuote = 0;
            if (stripQuotes) TakeSegment(1);
        }
        ++position;
    }

    bool OpenQuote(std::initializer_list<std::u16string_view> quotePairs) {
        for (const std::u16string_view pair : quotePairs) {
            if (pair.size() != 2 || text[position] != pair[0]) continue;
            closingQuote = pair[1];
            skipThisEmpty = false;
            if (stripQuotes) TakeSegment(1);
            ++position;
            return true;
        }
        return false;
    }

    bool EndToken(std::initializer_list<std::u16string_view> delimiters) {
        for (const std::u16string_view delimiter : delimiters) {
            if (delimiter.empty() || !text.substr(position).starts_with(delimiter)) continue;
            FinishToken();
            position += delimiter.size();
            segmentStart = position;
            return true;
        }
        return false;
    }

    /// Moves the segment up to here to the token; the next one starts `gap` characters further on.
    void TakeSegment(std::size_t gap) {
        token += Segment();
        segmentStart = position + gap;
    }
    std::u16string_view Segment() const { return text.substr(segmentStart, position - segmentStart); }

    void FinishToken() {
        if (token.empty()) {
            if (!skipThisEmpty || !Segment().empty()) tokens.Add(VUnicodeString(Segment()));
        } else {
            TakeSegment(0);
            tokens.Add(VUnicodeString(token));
            token.clear();
        }
        skipThisEmpty = skipEmpty;
    }

    std::u16string_view text;
    VStringArray& tokens;
    bool skipEmpty;
    bool stripQuotes;
    bool skipThisEmpty;
    char16_t closingQuote = 0;
    std::size_t position = 0;
    std::size_t segmentStart = 0;
    std::u16string token;  ///< its pieces so far; grows in steps, since there may be as many as characters
};

bool NeedsQuotes(std::u16string_view text, std::u16string_view quotePair, std::u16string_view forcing) {
    return !quotePair.empty() && (forcing.empty() || text.find_first_of(forcing) != text.npos);
}

bool IsNarrowSpace(char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

}  // namespace

bool VTokenize(std::u16string_view text, VStringArray& tokens, std::initializer_list<std::u16string_view> delimiters,
               std::initializer_list<std::u16string_view> quotePairs, bool skipEmpty, bool stripQuotes) {
    VStringArray found;  // `text` may lie in `tokens`
    const bool closed = Tokenizer(text, found, skipEmpty, stripQuotes).Run(delimiters, quotePairs);
    tokens = std::move(found);
    return closed;
}

bool VSplitOnChar(std::u16string_view text, VStringArray& tokens, char16_t delimiter) {
    return VTokenize(text, tokens, {std::u16string_view(&delimiter, 1)}, {}, false, true);
}

bool VSplitCommaList(std::u16string_view text, VStringArray& tokens) {
    return VTokenize(text, tokens, {u","}, {u"\"\""}, false, false);
}

VUnicodeString VConcatenate(std::span<const std::u16string_view> pieces, Str::SensitiveState state) {
    std::size_t length = 0;
    for (const std::u16string_view piece : pieces) length += piece.size();
    VUnicodeString text;
    text.SetState(state);
    text.Resize(length);
    char16_t* end = &text.MutableAt(0);
    for (const std::u16string_view piece : pieces) end = std::ranges::copy(piece, end).out;
    return text;
}

VUnicodeString VJoin(const VStringArray& elements, std::u16string_view delimiter, std::u16string_view quotePair,
                     std::u16string_view forcing) {
    std::vector<std::u16string_view> pieces;
    for (const VUnicodeString& element : elements) {
        if (element.IsEmpty()) continue;
        const bool isQuoted = NeedsQuotes(element, quotePair, forcing);
        if (!pieces.empty()) pieces.push_back(delimiter);
        if (isQuoted) pieces.push_back(quotePair.substr(0, 1));
        pieces.push_back(element.View());
        if (isQuoted) pieces.push_back(quotePair.substr(quotePair.size() - 1));
    }
    const bool isSensitive = std::ranges::any_of(elements, &VUnicodeString::IsSensitive);
    return VConcatenate(pieces, isSensitive ? Str::SensitiveState::kSensitive : Str::SensitiveState::kPlain);
}

VUnicodeString VQuoteIfNeeded(const VUnicodeString& text, std::u16string_view quotePair, std::u16string_view forcing) {
    if (!NeedsQuotes(text, quotePair, forcing)) return text;
    VUnicodeString quoted(quotePair.substr(0, 1));
    quoted += text;
    quoted += quotePair.back();
    return quoted;
}

VUnicodeString VRemoveEscapes(const VUnicodeString& text, std::u16string_view escape) {
    if (escape.empty() || text.FindChar(escape[0]) == VUnicodeString::kNotFound) return text;
    VUnicodeString plain(text);
    std::size_t length = 0;
    for (std::size_t i = 0; i < text.GetLength(); ++i) {
        if (text[i] == escape[0] && ++i == text.GetLength()) break;
        plain.MutableAt(length++) = text[i];
    }
    return plain.Left(length);
}

bool VParseUnsigned16(const char* text, std::uint16_t& value) {
    if (text == nullptr) return false;
    while (IsNarrowSpace(*text)) ++text;
    if (*text == '+') ++text;
    const char* start = text;
    std::uint32_t number = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
        number = number * 10 + static_cast<std::uint32_t>(*text - '0');
        if (number > UINT16_MAX) return false;
    }
    if (text == start) return false;
    while (IsNarrowSpace(*text)) ++text;
    if (*text != '\0') return false;
    value = static_cast<std::uint16_t>(number);
    return true;
}

}  // namespace connectdialog
