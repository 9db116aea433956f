#include "keymap/binarykeymap.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "foundation/byteorder.h"
#include "foundation/textencoding.h"
#include "foundation/utf8.h"
#include "keymap/keynames.h"

namespace connectdialog {

namespace {

constexpr std::size_t kNumberSize = sizeof(std::uint32_t);

struct OldModifier {
    std::uint32_t oldBit;
    std::uint32_t bit;
};
constexpr OldModifier kOldModifiers[] = {
    {0x0100, kKeyExtended}, {0x0200, kKeyControl}, {0x0400, kKeyShift}, {0x0800, kKeyAlt}};

std::uint32_t MoveModifiers(std::uint32_t key) {
    std::uint32_t moved = key;
    for (const OldModifier& modifier : kOldModifiers)
        if ((key & modifier.oldBit) != 0) moved = (moved & ~modifier.oldBit) | modifier.bit;
    return moved;
}

/// What is left of the data. Each read is false when the data ends before.
class Records {
  public:
    explicit Records(std::span<const std::uint8_t> data) : rest(data) {}
    bool IsAtEnd() const { return rest.empty(); }

    bool ReadNumber(std::uint32_t& number) {
        if (rest.size() < kNumberSize) return false;
        number = LoadBigEndian<std::uint32_t>(rest.data());
        rest = rest.subspan(kNumberSize);
        return true;
    }
    bool ReadText(VUnicodeString& text) {
        const auto end = std::ranges::find(rest, 0);
        if (end == rest.end()) return false;
        const auto length = static_cast<std::size_t>(end - rest.begin());
        std::string_view bytes(reinterpret_cast<const char*>(rest.data()), length);
        const std::string_view mark = MarkOf(TextEncoding::kUtf8);
        text = bytes.starts_with(mark) ? WideFromUtf8(bytes.substr(mark.size()))
                                       : VUnicodeString(bytes.data(), bytes.size());
        rest = rest.subspan(length + 1);
        return true;
    }

  private:
    std::span<const std::uint8_t> rest;
};

}  // namespace

BinaryKeymapResult ReadBinaryKeymap(const std::uint8_t* data, std::size_t size, Keymap& keymap) {
    Records records({data, size});
    std::uint32_t count = 0;
    if (!records.ReadNumber(count)) return BinaryKeymapResult::kNoCount;
    for (; count > 0 && !records.IsAtEnd(); --count) {
        std::uint32_t key = 0;
        VUnicodeString function;
        VUnicodeString string;
        if (!records.ReadNumber(key) || !records.ReadText(function) || !records.ReadText(string))
            return BinaryKeymapResult::kCutShort;
        const std::int32_t number = GetKeyFunctionID(function);
        if (number <= 0) continue;
        key = MoveModifiers(key);
        keymap.SetKeyFunction(key, static_cast<std::uint32_t>(number));
        keymap.SetKeyString(key, string);
    }
    return BinaryKeymapResult::kWhole;
}

}  // namespace connectdialog
