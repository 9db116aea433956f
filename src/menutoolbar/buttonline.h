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

    friend bool operator==(const UserButton&, const UserButton&) = default;
};

/// Gives it the text, whose lines end with line feeds, and the label that follows from it.
void SetButtonText(UserButton& button, const VUnicodeString& lines);
/// The text with a line feed between its lines.
VUnicodeString GetShownText(const UserButton& button);
/// The name of what it does; empty for a function that is none or is not known.
VUnicodeString GetFunctionName(const UserButton& button);

/// A line with another number of fields than four or five gives a button with kNoFunction.
UserButton DecodeButtonLine(const VUnicodeString& line);
/// The line that gives the button, but for the label, which follows from the text. Line breaks of the text are a
/// carriage return and a line feed. Requires: the function is a known one.
VUnicodeString EncodeButtonLine(const UserButton& button);

/// False for the functions of keys that do nothing.
bool IsButtonFunction(std::uint32_t function);

/// Why a button would not work, or what cannot be stored of it.
enum class ButtonFault : std::uint8_t {
    kNone,
    kNoFunction,    ///< none, an unknown one, or one that does nothing
    kNoText,        ///< nothing would show on it
    kNoArgument,    ///< SEND, RUN and LAUNCH need one
    kControl,       ///< a character that neither shows nor breaks the text's line
    kTooManyLines,  ///< a button shows two
    kTooLong,
};
/// Characters of a button's text and of each argument.
inline constexpr std::size_t kLongestButtonText = 1024;
ButtonFault FindButtonFault(const UserButton& button);

}  // namespace connectdialog
