#include "foundation/commandline.h"

#include <algorithm>

namespace connectdialog {

namespace {

constexpr char16_t kQuote = u'"';
constexpr char16_t kBlank = u' ';

/// Where the quote stands that ends a quoted word, or npos. `line` begins behind the opening one.
std::size_t FindClosingQuote(std::u16string_view line) {
    std::size_t end = line.find(kQuote);
    while (end != line.npos && end + 1 < line.size() && line[end + 1] != kBlank) end = line.find(kQuote, end + 1);
    return end;
}

}  // namespace

bool SplitCommandLine(std::u16string_view line, VStringArray& words) {
    words.Clear();
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(kBlank), line.size()));
        if (line.empty()) return true;
        const bool isQuoted = line.front() == kQuote;
        if (isQuoted) line.remove_prefix(1);
        const std::size_t end = isQuoted ? FindClosingQuote(line) : line.find(kBlank);
        words.Add(VUnicodeString(line.substr(0, end)));
        if (end == line.npos) return !isQuoted;
        line.remove_prefix(end + 1);
    }
}

}  // namespace connectdialog
