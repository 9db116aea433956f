#include "tools/connectctl/nearnames.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

#include "foundation/casefold.h"

namespace connectdialog::connectctl {

namespace {

constexpr std::size_t kMostNames = 3;
/// No setting has a name as long; a longer one is like none of them.
constexpr std::size_t kLongestName = 100;
/// Letters that may be wrong: one of three.
constexpr std::size_t kLettersPerSlip = 3;

std::u16string Fold(std::u16string_view text) {
    std::u16string folded(text);
    std::ranges::transform(folded, folded.begin(), FoldCase);
    return folded;
}

/// Levenshtein distance, one row of the table at a time.
std::size_t Distance(std::u16string_view a, std::u16string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row[b.size()];
}

}  // namespace

std::vector<std::u16string> FindNearNames(std::u16string_view name, const std::vector<std::u16string>& candidates) {
    if (name.empty() || name.size() > kLongestName) return {};
    const std::u16string wanted = Fold(name);
    std::vector<std::pair<std::size_t, std::u16string>> near;
    for (const std::u16string& candidate : candidates) {
        const std::u16string folded = Fold(candidate);
        const std::size_t distance = Distance(wanted, folded);
        if (distance <= wanted.size() / kLettersPerSlip || folded.find(wanted) != folded.npos)
            near.emplace_back(distance, candidate);
    }
    std::ranges::stable_sort(near, {}, &std::pair<std::size_t, std::u16string>::first);
    near.resize(std::min(near.size(), kMostNames));
    std::vector<std::u16string> names;
    names.reserve(near.size());
    for (auto& [distance, candidate] : near) names.push_back(std::move(candidate));
    return names;
}

}  // namespace connectdialog::connectctl
