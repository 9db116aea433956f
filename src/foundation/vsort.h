// A sort that stands any comparison.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace connectdialog {

/// Sorts by merging, bottom up: stable, n log n comparisons. Unlike std::sort it asks nothing of `before(a, b)`: with
/// an order that is not transitive, as that of names with numbers in them, it ends with some arrangement of the
/// elements.
template <class T, class Before>
void VMergeSort(std::vector<T>& elements, Before before) {
    std::vector<T> merged;
    merged.reserve(elements.size());
    for (std::size_t width = 1; width < elements.size(); width *= 2) {
        merged.clear();
        for (std::size_t start = 0; start < elements.size(); start += 2 * width) {
            std::size_t left = start;
            const std::size_t leftEnd = std::min(start + width, elements.size());
            std::size_t right = leftEnd;
            const std::size_t rightEnd = std::min(start + 2 * width, elements.size());
            while (left < leftEnd || right < rightEnd) {
                const bool takeRight = left == leftEnd || (right < rightEnd && before(elements[right], elements[left]));
                merged.push_back(std::move(elements[takeRight ? right++ : left++]));
            }
        }
        elements.swap(merged);
    }
}

}  // namespace connectdialog
