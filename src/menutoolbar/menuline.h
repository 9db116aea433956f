// One line of a menu and toolbar description: its keyword and its operands.
//
//   line    = [ keyword ] operands          white space round the line does not count
//   operands = [ operand { "," operand } ]  a comma between double quotes is text
//   operand = text | `"` text `"`           white space round it does not count; nothing is escaped
//
// A keyword stands at the very start of the line, and its case counts. A word that only begins with a keyword is that
// keyword; MENU and TOOLBAR include the blank behind them. A line that begins with `//` is a comment.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace connectdialog {

enum class MenuLineKind : std::uint8_t {
    kEnd = 0,
    kMenu = 1,
    kToolbar = 2,
    kPopupMenu = 3,
    kAccelerator = 4,
    kStringTable = 5,
    kFont = 6,
    kSeparator = 7,
    kMenuItem = 8,
    kToolbarItem = 9,
    kData = 10,  ///< no keyword: all of the line is operands
};

/// A view of the text it was read from. Takes untrusted text: time grows with its length, memory does not.
struct MenuLine {
    /// No line has a meaning for more; those behind are only counted and checked.
    static constexpr std::size_t kMostTokens = 5;

    /// An operand without white space and quotes round it; empty where there is none. Requires: `i` < kMostTokens.
    std::u16string_view Token(std::size_t i) const { return i < tokenCount ? tokens[i] : std::u16string_view(); }

    MenuLineKind kind = MenuLineKind::kData;
    /// False when an operand begins with a double quote and does not end with another.
    bool isValid = true;
    std::size_t tokenCount = 0;
    std::array<std::u16string_view, kMostTokens> tokens;  ///< as many as tokenCount tells
};

/// The line without the white space round it; empty for a comment.
std::u16string_view PrepareMenuLine(std::u16string_view line);

/// Requires: `text` was prepared and is not empty.
void ReadMenuLine(std::u16string_view text, MenuLine& line);

/// The text without the white space round it.
std::u16string_view TrimmedView(std::u16string_view text);

}  // namespace connectdialog
