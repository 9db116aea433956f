// Text on its way to the user: UTF-8, and never able to drive the terminal.
//
// Session names and values come from anywhere. A character that a terminal would act upon, or that would change how the
// rest of the line looks, is written as `<U+001B>`: the control characters (line breaks and tabs too), the line and
// paragraph separators, the marks that turn the direction of writing, and lone surrogates. The form holds no `\`, so a
// path stays a path.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace connectdialog {
class VStringArray;
}

namespace connectdialog::connectctl {

/// The text as UTF-8 with its unsafe characters escaped.
std::string Printable(std::u16string_view text);
/// The text that Printable was given: each `<U+XXXX>` (four hexadecimal digits) becomes its character again.
std::u16string FromPrintable(std::u16string_view text);
/// The text in double quotes for a message, cut where it would fill the screen.
std::string Quoted(std::u16string_view text);

/// A JSON text; lone surrogates become U+FFFD, which JSON has no other way to say.
nlohmann::json JsonText(std::u16string_view text);
/// An array of texts.
nlohmann::json ListToJson(const VStringArray& list);
/// Appends the texts of a JSON array. False when `text` is none, or an element is no text.
bool ListFromJson(const std::string& text, VStringArray& list);
/// JSON on one line. What Printable would escape is escaped as JSON does it.
std::string PrintableJson(const nlohmann::json& value);

/// Writes to standard output, which is buffered. Whether all of it arrived is told by FlushOutput.
void Print(std::string_view text);
void PrintLine(std::string_view line);
bool FlushOutput();
/// Writes one line on standard error, whatever the text (UTF-8) holds.
void PrintNotice(std::string_view text);

}  // namespace connectdialog::connectctl
