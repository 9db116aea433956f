// Percent encoding. Source: RFC 3986, section 2.1.
#pragma once

#include <string>
#include <string_view>

namespace connectdialog {

/// The text with all but ASCII letters, digits and `-_.` as `%` and two hex digits a byte: a word that no program and
/// no shell takes for anything else, whatever the text is.
std::string PercentEncode(std::string_view text);

/// What PercentEncode made, also with more or fewer characters encoded.
/// On failure: false, and `decoded` means nothing.
bool PercentDecode(std::string_view text, std::string& decoded);

}  // namespace connectdialog
