#include "stores/common/storedvalue.h"

#include <algorithm>
#include <array>

#include "foundation/vstringarray.h"
#include "foundation/vunicodestring.h"
#include "platform/lasterror.h"

namespace connectdialog::stores {

namespace {

constexpr std::uint32_t Byte(char character) {
    return static_cast<unsigned char>(character);
}

bool IsWide(std::u16string_view text) {
    char16_t all = 0;
    for (const char16_t unit : text) all |= unit;
    return all > 0xFF;
}

void AppendUnits(std::u16string_view text, bool wide, std::string& bytes) {
    const std::size_t start = bytes.size();
    bytes.resize(start + text.size() * (wide ? 2 : 1));
    char* out = bytes.data() + start;
    for (const char16_t unit : text) {
        *out++ = static_cast<char>(unit & 0xFF);
        if (wide) *out++ = static_cast<char>(unit >> 8);
    }
}

void UnpackUnits(std::string_view bytes, bool wide, char16_t* out) {
    if (!wide) {
        std::transform(bytes.begin(), bytes.end(), out, [](char byte) { return static_cast<char16_t>(Byte(byte)); });
        return;
    }
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        *out++ = static_cast<char16_t>(Byte(bytes[i]) | Byte(bytes[i + 1]) << 8);
    }
}

/// A text that is the same already keeps its buffer. Assigns and does not build in place: a string that once held a
/// secret stays sensitive by it.
void AssignUnits(std::string_view bytes, bool wide, VUnicodeString& text) {
    const std::size_t count = bytes.size() / (wide ? 2 : 1);
    if (std::array<char16_t, 256> units; count <= units.size()) {
        UnpackUnits(bytes, wide, units.data());
        const std::u16string_view unpacked(units.data(), count);
        if (text.View() != unpacked) text = unpacked;
        return;
    }
    std::u16string units(count, u'\0');
    UnpackUnits(bytes, wide, units.data());
    text = std::u16string_view(units);
}

bool TakeString(std::string_view& bytes, VUnicodeString& text) {
    std::uint32_t head = 0;
    if (!TakeVarint(bytes, head)) return false;
    const bool wide = (head & 1) != 0;
    const std::size_t size = std::size_t{head >> 1} * (wide ? 2 : 1);
    if (size > bytes.size()) return false;
    AssignUnits(bytes.substr(0, size), wide, text);
    bytes.remove_prefix(size);
    return true;
}

}  // namespace

ValueView EncodeDword(std::uint32_t value, std::string& bytes) {
    bytes.clear();
    for (; value != 0; value >>= 8) bytes.push_back(static_cast<char>(value & 0xFF));
    return {ValueTag::kDword, bytes};
}

ValueView EncodeText(std::u16string_view text, std::string& bytes) {
    const bool wide = IsWide(text);
    bytes.clear();
    AppendUnits(text, wide, bytes);
    return {wide ? ValueTag::kWideText : ValueTag::kText, bytes};
}

ValueView EncodeStrings(const VStringArray& strings, std::string& bytes) {
    bytes.clear();
    for (const VUnicodeString& text : strings) {
        const bool wide = IsWide(text);
        char head[kMaxVarintSize];
        bytes.append(head, WriteVarint(static_cast<std::uint32_t>(text.GetLength() * 2 + (wide ? 1 : 0)), head));
        AppendUnits(text, wide, bytes);
        if (bytes.size() > kMaxValueSize) break;  // refused by its size, whatever follows
    }
    return {ValueTag::kStrings, bytes};
}

std::uint32_t DecodeDword(const ValueView& value, std::uint32_t& number) {
    if (value.tag != ValueTag::kDword) return platform::kDatatypeMismatch;
    if (value.bytes.size() > 4) return platform::kStoreCorrupt;
    number = 0;
    for (std::size_t i = value.bytes.size(); i-- > 0;) number = number << 8 | Byte(value.bytes[i]);
    return platform::kSuccess;
}

std::uint32_t DecodeText(const ValueView& value, VUnicodeString& text) {
    if (value.tag != ValueTag::kText && value.tag != ValueTag::kWideText) return platform::kDatatypeMismatch;
    const bool wide = value.tag == ValueTag::kWideText;
    if (wide && value.bytes.size() % 2 != 0) return platform::kStoreCorrupt;
    AssignUnits(value.bytes, wide, text);
    return platform::kSuccess;
}

std::uint32_t DecodeStrings(const ValueView& value, VStringArray& strings) {
    if (value.tag != ValueTag::kStrings) return platform::kDatatypeMismatch;
    VStringArray decoded;
    for (std::string_view rest = value.bytes; !rest.empty();) {
        VUnicodeString text;
        if (!TakeString(rest, text)) return platform::kStoreCorrupt;
        decoded.Add(std::move(text));
    }
    strings = std::move(decoded);
    return platform::kSuccess;
}

bool TakeLongVarint(std::string_view& bytes, std::uint32_t& number) {
    std::uint64_t result = 0;
    for (std::size_t i = 0; i < 5 && i < bytes.size(); ++i) {
        result |= std::uint64_t{Byte(bytes[i]) & 0x7F} << (7 * i);
        if ((Byte(bytes[i]) & 0x80) != 0) continue;
        if (result > UINT32_MAX) return false;
        bytes.remove_prefix(i + 1);
        number = static_cast<std::uint32_t>(result);
        return true;
    }
    return false;
}

}  // namespace connectdialog::stores
