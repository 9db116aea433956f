// Any bytes as the lines of a keymap or, with the first byte odd, as its binary form: reading ends, and each binding
// that was read from a line reads the same from the line that is written for it.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "foundation/textencoding.h"
#include "keymap/binarykeymap.h"
#include "keymap/keymapreader.h"
#include "keymap/keymapwriter.h"

using namespace connectdialog;

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

void ReadText(std::string_view bytes, Keymap& keymap) {
    std::u16string text(bytes.size(), u'\0');
    text.resize(DecodeText(TextEncoding::kLocal, bytes, true, text.data()).written);
    KeymapReader reader(keymap);
    std::u16string_view rest = text;
    while (!rest.empty() && reader.WantsMore()) {
        const std::size_t end = rest.find(u'\r');  // a line feed may stand in a stored line
        reader.ReadLine(rest.substr(0, end));
        rest.remove_prefix(end == rest.npos ? rest.size() : end + 1);
    }
    Require(reader.WantsMore() == (reader.GetErrorCount() < KeymapReader::kMostErrors && !reader.IsTooLong()));
    Require(reader.GetErrorText().empty() == (reader.GetErrorCount() == 0));
}

/// Some names of keys have no way back.
bool HasName(std::uint32_t key) {
    constexpr std::uint32_t kModifiers = kKeyExtended | kKeyControl | kKeyShift | kKeyAlt;
    const std::uint32_t code = key & ~kModifiers;
    const VUnicodeString name = GetKeyName(code);
    return static_cast<std::uint32_t>(GetKeyCode(name)) == code && name.FindChar(u' ') == VUnicodeString::kNotFound;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool isBinary = data[0] % 2 != 0;
    Keymap keymap;
    if (isBinary)
        ReadBinaryKeymap(data + 1, size - 1, keymap);
    else
        ReadText({reinterpret_cast<const char*>(data + 1), size - 1}, keymap);

    const std::vector<std::uint32_t> keys = GetSortedKeys(keymap.GetEntries());
    Require(FormatBindings(keymap.GetEntries()).GetCount() == keys.size());
    Require(Keymap(keymap) == keymap);
    Keymap again;
    for (const std::uint32_t key : keys) {
        KeymapReader reader(again);
        reader.ReadLine(FormatBinding(key, *keymap.GetEntries().Find(key)));
        if (isBinary || !HasName(key)) continue;
        Require(reader.GetErrorCount() == 0);
        Require(*again.GetEntries().Find(key) == *keymap.GetEntries().Find(key));
    }
    return 0;
}
