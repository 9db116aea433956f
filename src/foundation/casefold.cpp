#include "foundation/casefold.h"

#include <algorithm>
#include <iterator>

#include "foundation/casefoldtable.h"

namespace connectdialog {

namespace {

template <std::size_t N>
char16_t MapBy(const CaseRange (&ranges)[N], char16_t character) {
    const auto* range = std::lower_bound(std::begin(ranges), std::end(ranges), character,
                                         [](const CaseRange& r, char16_t c) { return r.last < c; });
    if (range == std::end(ranges) || character < range->first) return character;
    if ((character - range->first) % range->step != 0) return character;
    return static_cast<char16_t>(character + range->delta);
}

}  // namespace

char16_t detail::LowerBeyondAscii(char16_t character) {
    return MapBy(kLowerRanges, character);
}
char16_t detail::UpperBeyondAscii(char16_t character) {
    return MapBy(kUpperRanges, character);
}

std::u16string FoldText(std::u16string_view text) {
    std::u16string folded(text);
    for (char16_t& character : folded) character = FoldCase(character);
    return folded;
}

bool IsSpace(char16_t character) {
    return std::any_of(std::begin(kWhiteSpace), std::end(kWhiteSpace),
                       [character](const CharacterRange& r) { return character >= r.first && character <= r.last; });
}

int CompareNoCase(std::u16string_view a, std::u16string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const char16_t left = FoldCase(a[i]);
        const char16_t right = FoldCase(b[i]);
        if (left != right) return left < right ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool EqualsNoCase(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() && CompareNoCase(a, b) == 0;
}

}  // namespace connectdialog
