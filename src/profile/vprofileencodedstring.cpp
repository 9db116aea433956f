#include "profile/vprofileencodedstring.h"

#include <array>
#include <cstring>

#include "foundation/hextext.h"
#include "foundation/vbasicbuffer.h"
#include "platform/randombytes.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {

constexpr std::size_t kMaskSize = 4;
constexpr std::size_t kTerminator = 2;  ///< zero bytes behind what was decoded: it may be narrow or wide text

}  // namespace

VUnicodeString VProfileEncodedString::EncodeScrambled(const VNarrowString& bytes) {
    if (bytes.IsEmpty()) return {};
    std::array<std::uint8_t, kMaskSize> mask = {0x5A, 0xC3, 0x96, 0x3C};
    platform::FillRandomBytes(mask.data(), mask.size());
    VBasicBuffer masked(kMaskSize + bytes.GetLength());
    masked.SetSensitive(bytes.IsSensitive());
    std::uint8_t* data = masked.GetData();
    std::memcpy(data, mask.data(), kMaskSize);
    for (std::size_t i = 0; i < bytes.GetLength(); ++i)
        data[kMaskSize + i] = static_cast<std::uint8_t>(bytes[i]) ^ mask[i % kMaskSize];
    return EncodeHex({}, {data, masked.GetCapacity()}, HexCase::kLower, bytes.GetState());
}

VNarrowString VProfileEncodedString::DecodeScrambled(const char16_t* text, std::size_t length) {
    VNarrowString bytes;
    bytes.MarkSensitive();
    if (length == 0) return bytes;
    std::array<std::uint8_t, kMaskSize> mask{};
    std::u16string_view digits(text, length);
    const bool hasMask = DecodeHex(digits.substr(0, 2 * kMaskSize), mask.data()) == kMaskSize;
    digits = hasMask ? digits.substr(2 * kMaskSize) : std::u16string_view();
    bytes.SetLength(digits.size() / 2 + kTerminator);
    auto* data = reinterpret_cast<std::uint8_t*>(bytes.MutableData());
    const std::size_t count = DecodeHex(digits, data);
    for (std::size_t i = 0; i < count; ++i) data[i] ^= mask[i % kMaskSize];
    bytes.SetLength(count + kTerminator);
    return bytes;
}

VUnicodeString DecodeScrambledText(const VUnicodeString& text) {
    VNarrowString bytes = VProfileEncodedString::DecodeScrambled(text.GetData(), text.GetLength());
    bytes.SetLength(strnlen(bytes.GetData(), bytes.GetLength()));
    return VUnicodeString(bytes);
}

bool VProfileEncodedString::Read(VProfileKey* key) {
    VUnicodeString text;
    text.MarkSensitive();
    if (!ReadStored(key, text)) return false;
    Edit() = DecodeScrambledText(text);
    return true;
}

void VProfileEncodedString::KeepAsFound(const VUnicodeString& valueName, const VUnicodeString& stored) {
    foundName = valueName;
    found = stored;
    SetMissing(false);
}

void VProfileEncodedString::Save(VProfileKey& key, bool force) {
    if (IsChanged()) found.Empty();
    if (!found.IsEmpty()) {
        if (force) key.WriteString(foundName.GetData(), found.GetData());
        return;
    }
    if (!force && !IsMissing() && !IsChanged()) return;
    WriteStored(key, EncodeScrambled(VNarrowString(Get())));
    EditStored() = Get();
}

}  // namespace connectdialog
