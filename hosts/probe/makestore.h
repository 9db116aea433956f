// A store to measure with.
#pragma once

#include <cstddef>

namespace connectdialog::hosts {

/// Makes a store at `url` with `folders` folders of `sessions` whole sessions each, and one called "wide" with `wide`
/// sessions. On failure: false.
bool MakeStore(const char* url, std::size_t folders, std::size_t sessions, std::size_t wide);

}  // namespace connectdialog::hosts
