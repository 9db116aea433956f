#include "foundation/numericcompare.h"

#include <algorithm>
#include <climits>
#include <limits>

#include "foundation/casefold.h"

namespace connectdialog {

namespace {

/// Reads the number at each offset of a text, for offsets that go up one by one.
class NumberReader {
  public:
    explicit NumberReader(std::u16string_view text) : text(text) {}

    /// Whether a number begins at `offset`; GetValue gives it.
    bool ReadAt(std::size_t offset) {
        // White space and zeros in front of a number do not change it. Reading past them again at each offset would
        // take a time that grows with the square of their count.
        const bool sameAsBefore = offset > 0 && offset < stop && IsFiller(text[offset - 1]);
        if (!sameAsBefore) found = Read(offset);
        return found;
    }
    std::int64_t GetValue() const { return value; }

  private:
    static bool IsFiller(char16_t character) { return character == u'0' || IsSpace(character); }

    bool Read(std::size_t offset) {
        stop = offset;
        value = 0;
        while (stop < text.size() && IsSpace(text[stop])) ++stop;
        if (stop < text.size() && text[stop] == u'+') ++stop;
        const std::size_t start = stop;
        for (; stop < text.size() && IsDigit(text[stop]); ++stop) {
            value = value * 10 + (text[stop] - u'0');
            if (value > std::numeric_limits<std::uint32_t>::max()) return false;
        }
        return stop > start;
    }

    std::u16string_view text;
    std::size_t stop = 0;
    std::int64_t value = 0;
    bool found = false;
};

int Clamp(std::int64_t difference) {
    return static_cast<int>(std::clamp<std::int64_t>(difference, INT_MIN, INT_MAX));
}

}  // namespace

int CompareNumericText(std::u16string_view a, std::u16string_view b) {
    if (EqualsNoCase(a, b)) return 0;
    NumberReader left(a);
    NumberReader right(b);
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t offset = 0; offset < common; ++offset) {
        // Both are asked at each offset: a reader follows its text step by step.
        const bool leftIsNumber = left.ReadAt(offset);
        const bool rightIsNumber = right.ReadAt(offset);
        if (leftIsNumber && rightIsNumber && left.GetValue() != right.GetValue())
            return Clamp(left.GetValue() - right.GetValue());
        const int first = CompareNoCase(a.substr(0, 1), b.substr(0, 1));
        if (first != 0) return first;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

}  // namespace connectdialog
