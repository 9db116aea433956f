// What the tool prints, in the form of foundation/printable.h.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

#include "foundation/printable.h"

namespace connectdialog {
class VStringArray;
}

namespace connectdialog::connectctl {

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
