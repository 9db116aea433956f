#include "menutoolbar/acceleratorrep.h"

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
    : key(key.empty() ? u'\0' : key.front()), modifiers(modifiers), shownText(ReadModifiers(modifiers)) {}

/// Sets the flags and gives the text that is shown.
VUnicodeString AcceleratorRep::ReadModifiers(std::u16string_view rest) {
    std::u16string shown;
    while (!rest.empty()) {
        const std::u16string_view word = rest.substr(0, rest.find(u'|'));
        rest.remove_prefix(word.size() + (word.size() < rest.size() ? 1 : 0));
        for (const Modifier& modifier : kModifiers) {
            // Each once: the text is shown by every item that has the key, and must not grow with the line.
            if ((flags & modifier.flag) != 0 || !EqualsNoCase(TrimmedView(word), modifier.word)) continue;
            flags |= modifier.flag;
            shown += modifier.shown;
        }
    }
    if (key != 0) shown += key;
    return VUnicodeString(shown);
}

}  // namespace connectdialog
