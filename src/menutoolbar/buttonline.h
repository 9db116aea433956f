// The text form of one button of a user's button bar.
//
//     line   = function "," text "," argument 1 "," argument 2 "," [argument 3 ","] [ignored]
//
// A backslash makes the next character ordinary; the sequence `\r\n` in the text stands for a line break. White space
// round the line does not count.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

struct UserButton {
    static constexpr std::int32_t kUnknownFunction = -1;
    static constexpr std::int32_t kNoFunction = 0;

    std::int32_t function = kNoFunction;  ///< by GetKeyFunctionID
    VUnicodeString label;                 ///< the text without its line breaks
    VUnicodeString text;
    VUnicodeString argument1;
    VUnicodeString argument2;
    VUnicodeString argument3;
};

/// A line with another number of fields than four or five gives a button with kNoFunction.
UserButton DecodeButtonLine(const VUnicodeString& line);

}  // namespace connectdialog
