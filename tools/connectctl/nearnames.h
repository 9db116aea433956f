// What a user may have meant by a name that is not there.
#pragma once

#include <string>
#include <vector>

namespace connectdialog::connectctl {

/// The candidates that are like `name`, the nearest first, a few at most: those it is a part of, and those that are a
/// few letters away (Levenshtein distance). Case is ignored.
std::vector<std::u16string> FindNearNames(std::u16string_view name, const std::vector<std::u16string>& candidates);

}  // namespace connectdialog::connectctl
