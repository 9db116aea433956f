#include "menutoolbar/menuline.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "foundation/casefold.h"

namespace connectdialog {

namespace {

struct Keyword {
    std::u16string_view word;
    MenuLineKind kind;
    bool hasOperands;
};

/// None is the beginning of another; the most frequent ones come first.
constexpr Keyword kKeywords[] = {
    {u"MENUITEM", MenuLineKind::kMenuItem, true},
    {u"END", MenuLineKind::kEnd, false},
    {u"ACCELERATOR", MenuLineKind::kAccelerator, false},
    {u"STRINGTABLE", MenuLineKind::kStringTable, false},
    {u"SEPARATOR", MenuLineKind::kSeparator, false},
    {u"MENU ", MenuLineKind::kMenu, true},
    {u"TOOLBAR ", MenuLineKind::kToolbar, true},
    {u"POPUPMENU", MenuLineKind::kPopupMenu, true},
    {u"FONT", MenuLineKind::kFont, true},
    {u"TOOLBARITEM", MenuLineKind::kToolbarItem, true},
};

constexpr char16_t FirstLetter(const Keyword& keyword) {
    return keyword.word.front();
}
/// The keywords that begin with the first and with the last letter.
constexpr auto kKeywordRange = std::ranges::minmax(kKeywords, {}, FirstLetter);

/// Most characters at the ends of lines and operands are blanks and printable ASCII: those need no look into the table.
bool IsBlank(char16_t character) {
    return character == u' ' || ((character < u' ' || character >= 0x7F) && IsSpace(character));
}

inline std::u16string_view Trimmed(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    return text;
}

inline void AddToken(MenuLine& line, std::u16string_view token) {
    token = Trimmed(token);
    if (token.starts_with(u'"')) {
        const bool isClosed = token.size() > 1 && token.ends_with(u'"');
        line.isValid &= isClosed;
        if (isClosed) token = token.substr(1, token.size() - 2);
    }
    if (line.tokenCount < line.tokens.size()) line.tokens[line.tokenCount] = token;
    ++line.tokenCount;
}

/// The first comma or double quote, or the end. Most characters are neither: four of them are looked at at once.
inline const char16_t* FindMark(const char16_t* at, const char16_t* end) {
    constexpr std::uint64_t kOnes = 0x0001000100010001;
    constexpr std::uint64_t kHighBits = kOnes << 15;
    // A character that is zero has its high bit set; so may those above one, but none below.
    const auto zeros = [](std::uint64_t characters) { return (characters - kOnes) & ~characters & kHighBits; };
    for (std::uint64_t four = 0; end - at >= 4; at += 4) {
        std::memcpy(&four, at, sizeof(four));
        const std::uint64_t marks = zeros(four ^ kOnes * u',') | zeros(four ^ kOnes * u'"');
        if (marks == 0) continue;
        if (std::endian::native != std::endian::little) break;
        return at + std::countr_zero(marks) / 16;
    }
    while (at != end && *at != u',' && *at != u'"') ++at;
    return at;
}

/// The same places as VSplitCommaList finds, without a string for each token.
void SplitOperands(std::u16string_view text, MenuLine& line) {
    if (text.empty()) return;
    bool isQuoted = false;
    const char16_t* start = text.data();
    const char16_t* const end = start + text.size();
    for (const char16_t* at = FindMark(start, end); at != end; at = FindMark(at + 1, end)) {
        if (*at == u'"') {
            isQuoted = !isQuoted;
        } else if (!isQuoted) {
            AddToken(line, {start, at});
            start = at + 1;
        }
    }
    AddToken(line, {start, end});
}

}  // namespace

std::u16string_view TrimmedView(std::u16string_view text) {
    return Trimmed(text);
}

std::u16string_view PrepareMenuLine(std::u16string_view line) {
    const std::u16string_view prepared = Trimmed(line);
    return prepared.starts_with(u"//") ? std::u16string_view() : prepared;
}

void ReadMenuLine(std::u16string_view text, MenuLine& line) {
    line.kind = MenuLineKind::kData;
    line.isValid = true;
    line.tokenCount = 0;
    // Lines of tables begin with any character.
    const bool mayBeKeyword =
        text.front() >= FirstLetter(kKeywordRange.min) && text.front() <= FirstLetter(kKeywordRange.max);
    if (!mayBeKeyword) return SplitOperands(text, line);
    for (const Keyword& keyword : kKeywords) {
        if (text.front() != FirstLetter(keyword) || !text.starts_with(keyword.word)) continue;
        line.kind = keyword.kind;
        if (keyword.hasOperands) SplitOperands(text.substr(keyword.word.size()), line);
        return;
    }
    SplitOperands(text, line);
}

}  // namespace connectdialog
