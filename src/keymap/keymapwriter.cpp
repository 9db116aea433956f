#include "keymap/keymapwriter.h"

#include <algorithm>
#include <utility>

#include "keymap/keynames.h"

namespace connectdialog {

namespace {

/// The modifiers, and one more bit that no name sets. What sorts by it is written in that order for good.
constexpr std::uint32_t kSortMask = 0x5E000000;

std::pair<std::uint32_t, std::uint32_t> SortsAs(std::uint32_t key) {
    return {key & kSortMask, key};
}

/// Takes the modifiers out of the key.
VUnicodeString TakeModifiers(std::uint32_t& key) {
    VUnicodeString letters;
    for (const KeyModifier& modifier : kKeyModifiers) {
        if ((key & modifier.bit) == 0) continue;
        letters += modifier.letter;
        key &= ~modifier.bit;
    }
    return letters.IsEmpty() ? u"N" : letters;
}

}  // namespace

VUnicodeString FormatBinding(std::uint32_t key, const Keymap::KeyMapEntry& entry) {
    const VUnicodeString modifiers = TakeModifiers(key);
    const VUnicodeString name = GetKeyName(key);
    const VUnicodeString function = GetKeyFunctionName(entry.function);
    VUnicodeString line;
    switch (entry.function) {
        case kKeyFunctionNone:
            break;
        case kKeyFunctionSend:
            line.Format(u"%1\t%2!-20s!\t\"%3\"", modifiers, name, entry.string);
            break;
        case kKeyFunctionRun:
            line.Format(u"%1\t%2!-20s!\t%3(\"%4\")(\"%5\")", modifiers, name, function, entry.string, entry.arguments);
            break;
        case kKeyFunctionLaunch:
            line.Format(u"%1\t%2!-20s!\t%3(\"%4\")", modifiers, name, function, entry.string);
            break;
        default:
            line.Format(u"%1\t%2!-20s!\t%3", modifiers, name, function);
    }
    return line;
}

std::vector<std::uint32_t> GetSortedKeys(const Keymap::Entries& entries) {
    std::vector<std::uint32_t> keys;
    keys.reserve(entries.GetCount());
    for (const auto& entry : entries) keys.push_back(entry.key);
    std::ranges::sort(keys, {}, SortsAs);
    return keys;
}

VStringArray FormatBindings(const Keymap::Entries& entries) {
    VStringArray lines;
    for (const std::uint32_t key : GetSortedKeys(entries)) {
        VUnicodeString line = FormatBinding(key, *entries.Find(key));
        if (!line.IsEmpty()) lines.Add(std::move(line));
    }
    return lines;
}

}  // namespace connectdialog
