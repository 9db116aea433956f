#include "profile/vblowfishstring.h"

#include <array>
#include <cstring>
#include <span>

#include "foundation/byteorder.h"
#include "foundation/hextext.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vcapirandomsource.h"
#include "foundation/vnarrowstring.h"
#include "profile/vcipherblowfish.h"

namespace connectdialog {

namespace {

using Bytes = std::span<const std::uint8_t>;
using Key = std::array<std::uint8_t, 32>;

// Changing one of these makes every stored password unreadable.
constexpr Key kInnerKey = {0x76, 0xFB, 0xDD, 0xA3, 0x94, 0xCA, 0x2C, 0xA6, 0x30, 0xAC, 0x77,
                           0x1D, 0xE0, 0xFC, 0x91, 0x68, 0x36, 0x8B, 0xA4, 0xD0, 0xA3, 0x9D,
                           0xA4, 0x53, 0x4E, 0x53, 0xF7, 0xEB, 0x75, 0x19, 0x7C, 0x92};
constexpr Key kOuterKey = {0x4B, 0x82, 0x39, 0xBA, 0xAD, 0x68, 0x20, 0xFD, 0xDC, 0x29, 0x6A,
                           0xC7, 0xE0, 0xDB, 0x6B, 0xC0, 0x1C, 0x52, 0x60, 0xD3, 0x40, 0x7B,
                           0x46, 0xC2, 0x89, 0xE8, 0x61, 0x25, 0x7C, 0x4C, 0xA7, 0x1C};
constexpr std::array<std::uint8_t, VCipherBlowfish::kBlockSize> kVector = {0x9A, 0xB8, 0x8C, 0x41,
                                                                           0xCF, 0xDF, 0x70, 0xF4};

constexpr std::size_t kBlockSize = VCipherBlowfish::kBlockSize;
constexpr std::size_t kMargin = 4;  ///< random bytes on each side of the outer layer

VCipherBlowfish MakeCipher(std::uint32_t mode, const Key& key) {
    VCipherBlowfish cipher;
    cipher.SetNativeByteOrder(mode == 1 || mode == 2);
    cipher.SetChained(mode != 1);
    if (mode == 1) cipher.SetKeyLength(static_cast<std::uint32_t>(key.size()));
    cipher.Init(kVector.data(), key.data());
    return cipher;
}

/// A cipher at the start of a message. The key schedule costs a hundred times what a password does, so those of the
/// usual mode are made once, never destroyed, and copied.
VCipherBlowfish InnerCipher(std::uint32_t mode) {
    static const VCipherBlowfish& usual = *new VCipherBlowfish(MakeCipher(0, kInnerKey));
    return mode == 0 ? usual : MakeCipher(mode, kInnerKey);
}
VCipherBlowfish OuterCipher(std::uint32_t mode) {
    static const VCipherBlowfish& usual = *new VCipherBlowfish(MakeCipher(0, kOuterKey));
    return mode == 0 ? usual : MakeCipher(mode, kOuterKey);
}

/// The one that strings without a source of their own share; never released.
IRandomSource* ProcessRandomSource() {
    static VCapiRandomSource* const source = new VCapiRandomSource();
    return source;
}

VUnicodeString Sensitive() {
    VUnicodeString text;
    text.MarkSensitive();
    return text;
}

/// Characters of `width` bytes, the low 16 bits first, up to the first zero.
VUnicodeString ReadUnits(Bytes bytes, std::size_t width) {
    const auto unitAt = [&](std::size_t i) { return LoadLittleEndian<std::uint16_t>(&bytes[i * width]); };
    std::size_t count = 0;
    while (count < bytes.size() / width && unitAt(count) != 0) ++count;
    VUnicodeString text = Sensitive();
    if (count == 0) return text;
    text.Resize(count);
    char16_t* out = &text.MutableAt(0);
    for (std::size_t i = 0; i < count; ++i) out[i] = unitAt(i);
    return text;
}

VUnicodeString ReadNarrow(Bytes bytes) {
    if (bytes.empty()) return Sensitive();
    VNarrowString narrow;
    narrow.MarkSensitive();
    const auto* text = reinterpret_cast<const char*>(bytes.data());
    narrow.Append(text, strnlen(text, bytes.size()));
    return VUnicodeString(narrow);
}

}  // namespace

VBlowfishString::VBlowfishString() {
    plainText.MarkSensitive();
    cipherText.MarkSensitive();
}

VUnicodeString VBlowfishString::EncipherBlowfish() {
    if (!randomSource) randomSource = VRef<IRandomSource>::Share(ProcessRandomSource());
    const std::size_t textSize = plainText.GetLength() * sizeof(char16_t);
    const std::size_t padding = kBlockSize - (textSize + 2) % kBlockSize;
    const std::size_t innerSize = textSize + 2 + padding;
    const std::size_t outerSize = innerSize + 2 * kMargin;

    std::array<std::uint8_t, kBlockSize + 2 * kMargin> random{};
    if (!randomSource->Fill(random.data(), padding + 2 * kMargin)) random.fill(0);

    VBasicBuffer buffer(outerSize);
    buffer.SetSensitive(true);
    std::uint8_t* outer = buffer.GetData();
    std::uint8_t* inner = outer + kMargin;
    std::memcpy(outer, random.data(), kMargin);
    for (std::size_t i = 0; i <= plainText.GetLength(); ++i)
        StoreLittleEndian(static_cast<std::uint16_t>(plainText[i]), inner + 2 * i);
    std::memcpy(inner + textSize + 2, random.data() + kMargin, padding + kMargin);

    InnerCipher(mode).Encipher(inner, innerSize, inner, innerSize);
    OuterCipher(mode).Encipher(outer, outerSize, outer, outerSize);
    return EncodeHex(u"u", {outer, outerSize}, HexCase::kLower, Str::SensitiveState::kSensitive);
}

VUnicodeString VBlowfishString::DecipherBlowfish(const VUnicodeString& text) {
    cipherText = text;
    std::u16string_view digits = cipherText;
    const char16_t form = digits.empty() ? u'\0' : digits[0];
    if (form == u'u' || form == u'l') digits.remove_prefix(1);
    const std::size_t size = digits.size() / 2;
    if (digits.size() % 2 != 0 || size < kBlockSize || size % kBlockSize != 0) return Sensitive();

    VBasicBuffer buffer(size);
    buffer.SetSensitive(true);
    std::uint8_t* outer = buffer.GetData();
    const std::size_t decoded = DecodeHex(digits, outer);
    std::memset(outer + decoded, 0, size - decoded);
    OuterCipher(mode).Decipher(outer, size, outer, size);
    std::uint8_t* inner = outer + kMargin;
    const std::size_t innerSize = size - 2 * kMargin;
    InnerCipher(mode).Decipher(inner, innerSize, inner, innerSize);

    const Bytes plain(inner, innerSize);
    if (form == u'u') return ReadUnits(plain, sizeof(char16_t));
    if (form == u'l') return ReadUnits(plain, sizeof(char32_t));
    return ReadNarrow(plain);
}

}  // namespace connectdialog
