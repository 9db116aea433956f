#include "menutoolbar/acceleratorrep.h"

#include <algorithm>

#include "foundation/casefold.h"
#include "menutoolbar/menuline.h"

namespace connectdialog {

namespace {

struct Modifier {
    std::u16string_view word;
    VMenuAccelerator::Flag flag;
    std::u16string_view shown;
};

constexpr Modifier kModifiers[] = {
    {u"VIRTKEY", VMenuAccelerator::kVirtualKey, u""},
    {u"CTRL", VMenuAccelerator::kControl, u"Ctrl+"},
    {u"ALT", VMenuAccelerator::kAlt, u"Alt+"},
    {u"SHIFT", VMenuAccelerator::kShift, u"Shift+"},
};

}  // namespace

AcceleratorRep::AcceleratorRep(std::u16string_view key, std::u16string_view modifiers)
    : key(key.empty() ? u'\0' : key.front()), modifiers(modifiers) {
    while (!modifiers.empty()) {
        const std::u16string_view word = modifiers.substr(0, modifiers.find(u'|'));
        modifiers.remove_prefix(std::min(word.size() + 1, modifiers.size()));
        AddModifier(TrimmedView(word));
    }
}

void AcceleratorRep::AddModifier(std::u16string_view word) {
    for (const Modifier& modifier : kModifiers) {
        if (word.size() != modifier.word.size() || !EqualsNoCase(word, modifier.word)) continue;
        if ((flags & modifier.flag) == 0 && !modifier.shown.empty()) *std::ranges::find(shown, u"") = modifier.shown;
        flags |= modifier.flag;
    }
}

VUnicodeString AcceleratorRep::ShowBehind(std::u16string_view label) const {
    const std::u16string_view keyText(&key, key != 0 ? 1 : 0);
    const std::u16string_view parts[] = {label, u"\t", shown[0], shown[1], shown[2], keyText};
    std::size_t length = 0;
    for (const std::u16string_view part : parts) length += part.size();
    VUnicodeString text;
    text.Resize(length);  // appending would copy the label each time
    char16_t* end = &text.MutableAt(0);
    for (const std::u16string_view part : parts) end = std::ranges::copy(part, end).out;
    return text;
}

}  // namespace connectdialog
