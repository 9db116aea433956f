// What the reader of menu and toolbar descriptions reports. Each report has the number of its line as first insert and
// as user data, unless it says otherwise here. resources/hostmessages.h has the texts.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "foundation/vreportmessageparams.h"

namespace connectdialog {

// Errors: the description cannot be used.
inline constexpr std::uint32_t kMenuFileEmpty = 0xE10A0002;  ///< the file's name alone; no line
inline constexpr std::uint32_t kMenuAcceleratorTwice = 0xE10A0003;
inline constexpr std::uint32_t kMenuStringTwice = 0xE10A0004;
inline constexpr std::uint32_t kMenuNameTwice = 0xE10A0005;          ///< then the name
inline constexpr std::uint32_t kMenuKeywordOutOfPlace = 0xE10A0006;  ///< or END is missing, or popups nest too deep
inline constexpr std::uint32_t kMenuUnbalancedQuote = 0xE10A0007;    ///< then the file's name; also as a warning

// Warnings: the line was left out, and reading went on.
inline constexpr std::uint32_t kMenuUnknownAccelerator = 0xA10A0008;  ///< then the key
inline constexpr std::uint32_t kMenuUnknownString = 0xA10A0009;       ///< then the key
inline constexpr std::uint32_t kMenuLineOutOfPlace = 0xA10A000A;      ///< or it has too few operands
inline constexpr std::uint32_t kMenuUnknownFunction = 0xA10A000B;     ///< then the function
inline constexpr std::uint32_t kMenuBadImage = 0xA10A000C;            ///< then the file's name and the system's text
inline constexpr std::uint32_t kMenuNoImage = 0xA10A000D;
inline constexpr std::uint32_t kMenuNoScript = 0xA10A000E;    ///< then the file's name
inline constexpr std::uint32_t kMenuNoArgument = 0xA10A000F;  ///< then what is missing
inline constexpr std::uint32_t kMenuSecondFont = 0xA10A0010;  ///< the new font stands

/// Starts the report over with this code, the line and the inserts behind it. A very long insert is cut: reports are
/// shown to people.
void FillMenuReport(VReportMessageParams& report, std::uint32_t code, std::uint32_t line,
                    std::initializer_list<std::u16string_view> inserts);

}  // namespace connectdialog
