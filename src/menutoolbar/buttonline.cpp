#include "menutoolbar/buttonline.h"

#include <string>

#include "foundation/textchecks.h"
#include "foundation/texttools.h"
#include "foundation/vstringarray.h"
#include "keymap/keyfunctiontable.h"
#include "keymap/keynames.h"
#include "menutoolbar/menuline.h"

namespace connectdialog {

namespace {

constexpr char16_t kEscape = u'\\';
constexpr char16_t kStoredLineBreak[] = u"\\r\\n";
constexpr std::size_t kLineBreakLength = 2;
constexpr std::uint64_t kFewestFields = 4;
constexpr std::uint64_t kMostFields = 5;

/// The fields with their escapes; text behind the last comma is no field.
VStringArray SplitFields(std::u16string_view line) {
    VStringArray fields;
    std::size_t start = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == kEscape) {
            ++i;
        } else if (line[i] == u',') {
            fields.Add(VUnicodeString(line.substr(start, i - start)));
            start = i + 1;
        }
    }
    return fields;
}

VUnicodeString Unescaped(const VUnicodeString& field) {
    return VRemoveEscapes(field, u"\\");
}

VUnicodeString Replaced(VUnicodeString text, const char16_t* from, const char16_t* to) {
    text.Replace(from, to);
    return text;
}

/// With the escapes that DecodeButtonLine removes.
void AppendField(std::u16string& line, std::u16string_view text, bool hasLines = false) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (hasLines && text.substr(i, 2) == u"\r\n") {
            line += kStoredLineBreak;
            ++i;
            continue;
        }
        if (text[i] == kEscape || text[i] == u',') line += kEscape;
        line += text[i];
    }
    line += u',';
}

}  // namespace

void SetButtonText(UserButton& button, const VUnicodeString& lines) {
    button.text = Replaced(Replaced(lines, u"\r\n", u"\n"), u"\n", u"\r\n");
    button.label = Replaced(button.text, u"\r\n", u"");
}

VUnicodeString GetShownText(const UserButton& button) {
    return Replaced(button.text, u"\r\n", u"\n");
}

VUnicodeString GetFunctionName(const UserButton& button) {
    if (button.function <= UserButton::kNoFunction) return {};
    return GetKeyFunctionName(static_cast<std::uint32_t>(button.function));
}

UserButton DecodeButtonLine(const VUnicodeString& line) {
    UserButton button;
    VUnicodeString trimmed = line;
    trimmed.TrimLeft();
    trimmed.TrimRight();
    const VStringArray fields = SplitFields(trimmed);
    if (fields.GetCount() < kFewestFields || fields.GetCount() > kMostFields) return button;
    button.function = GetKeyFunctionID(Unescaped(fields[0]));
    button.text = Unescaped(Replaced(fields[1], kStoredLineBreak, u"\\\r\\\n"));
    button.label = Replaced(button.text, u"\r\n", u"");
    button.argument1 = Unescaped(fields[2]);
    button.argument2 = Unescaped(fields[3]);
    if (fields.GetCount() == kMostFields) button.argument3 = Unescaped(fields[4]);
    return button;
}

VUnicodeString EncodeButtonLine(const UserButton& button) {
    std::u16string line(GetFunctionName(button).View());
    line += u',';
    AppendField(line, button.text, true);
    AppendField(line, button.argument1);
    AppendField(line, button.argument2);
    if (!button.argument3.IsEmpty()) AppendField(line, button.argument3);
    return VUnicodeString(line);
}

bool IsButtonFunction(std::uint32_t function) {
    constexpr std::uint32_t kDisabled = KeyFunctionNumber(u"DISABLED");
    return function != kKeyFunctionNone && function != kDisabled;
}

ButtonFault FindButtonFault(const UserButton& button) {
    if (GetFunctionName(button).IsEmpty() || !IsButtonFunction(static_cast<std::uint32_t>(button.function)))
        return ButtonFault::kNoFunction;
    const VUnicodeString text = Replaced(button.text, u"\r\n", u"");
    if (TrimmedView(text).empty()) return ButtonFault::kNoText;
    const bool needsArgument = button.function <= static_cast<std::int32_t>(kKeyFunctionLaunch);
    if (needsArgument && button.argument1.IsEmpty()) return ButtonFault::kNoArgument;
    if (button.text.GetLength() - text.GetLength() > kLineBreakLength) return ButtonFault::kTooManyLines;
    for (const std::u16string_view part :
         {text.View(), button.argument1.View(), button.argument2.View(), button.argument3.View()}) {
        if (part.size() > kLongestButtonText) return ButtonFault::kTooLong;
        if (HasControl(part)) return ButtonFault::kControl;
    }
    return ButtonFault::kNone;
}

}  // namespace connectdialog
