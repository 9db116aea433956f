#include "menutoolbar/buttonline.h"

#include "foundation/texttools.h"
#include "foundation/vstringarray.h"
#include "keymap/keynames.h"

namespace connectdialog {

namespace {

constexpr char16_t kEscape = u'\\';
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

}  // namespace

UserButton DecodeButtonLine(const VUnicodeString& line) {
    UserButton button;
    VUnicodeString trimmed = line;
    trimmed.TrimLeft();
    trimmed.TrimRight();
    const VStringArray fields = SplitFields(trimmed);
    if (fields.GetCount() < kFewestFields || fields.GetCount() > kMostFields) return button;
    button.function = GetKeyFunctionID(Unescaped(fields[0]));
    VUnicodeString text = fields[1];
    text.Replace(u"\\r\\n", u"\\\r\\\n");
    button.text = Unescaped(text);
    button.label = button.text;
    button.label.Replace(u"\r\n", u"");
    button.argument1 = Unescaped(fields[2]);
    button.argument2 = Unescaped(fields[3]);
    if (fields.GetCount() == kMostFields) button.argument3 = Unescaped(fields[4]);
    return button;
}

}  // namespace connectdialog
