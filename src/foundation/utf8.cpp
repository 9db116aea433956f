#include "foundation/utf8.h"

#include <cstdint>
#include <stdexcept>

#include "foundation/stringerrors.h"
#include "platform/utf16.h"

namespace connectdialog {

namespace {

std::size_t SequenceLength(std::uint8_t lead) {
    if (lead >= 0xF0) return 4;
    if (lead >= 0xE0) return 3;
    return lead >= 0xC0 ? 2 : 1;
}

/// The code point at the start of `input`; `length` is that of its sequence, all of which is there.
char32_t ReadSequence(std::string_view input, std::size_t length) {
    const auto byteAt = [input](std::size_t i) { return static_cast<std::uint8_t>(input[i]); };
    if (length == 1) return byteAt(0);
    // The bits below the length marker; the one right below it must be clear.
    const std::uint8_t clearBit = static_cast<std::uint8_t>(0x80 >> length);
    if ((byteAt(0) & clearBit) != 0) throw IllegalSequence();
    char32_t codePoint = byteAt(0) & (clearBit - 1u);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80) throw IllegalSequence();
        codePoint = (codePoint << 6) | (byteAt(i) & 0x3Fu);
    }
    if (codePoint >= 0x110000) throw IllegalSequence();
    return codePoint;
}

/// The code point at `at`; `length` becomes the number of its units.
char32_t ReadUnits(std::u16string_view input, std::size_t at, std::size_t& length) {
    const char16_t unit = input[at];
    length = 1;
    if (!platform::IsHighSurrogate(unit)) return unit;
    if (at + 1 == input.size() || !platform::IsLowSurrogate(input[at + 1])) throw IllegalSequence();
    length = 2;
    return 0x10000 + ((unit & 0x3FFu) << 10) + (input[at + 1] & 0x3FFu);
}

std::size_t EncodedLength(char32_t codePoint) {
    return codePoint < 0x80 ? 1 : codePoint < 0x800 ? 2 : codePoint < 0x10000 ? 3 : 4;
}

void WriteSequence(char32_t codePoint, std::size_t length, char* out) {
    for (std::size_t i = length - 1; i > 0; --i, codePoint >>= 6) out[i] = static_cast<char>(0x80 | (codePoint & 0x3F));
    const std::uint32_t marker = length == 1 ? 0 : 0xF00u >> length & 0xFFu;
    out[0] = static_cast<char>(marker | codePoint);
}

/// What can be decoded before the first failure.
Utf8Progress MeasureReadable(std::string_view utf8) {
    Utf8Progress progress;
    try {
        DecodeUtf8(utf8, nullptr, 0, progress);
    } catch (const IllegalSequence&) {
        return progress;
    }
    return progress;
}

}  // namespace

void DecodeUtf8(std::string_view input, char16_t* out, std::size_t room, Utf8Progress& progress) {
    while (progress.consumed < input.size()) {
        const std::string_view rest = input.substr(progress.consumed);
        const std::size_t length = SequenceLength(static_cast<std::uint8_t>(rest[0]));
        if (length > rest.size()) return;
        const char32_t codePoint = ReadSequence(rest, length);
        const std::size_t units = codePoint < 0x10000 ? 1 : 2;
        if (out != nullptr) {
            if (units > room - progress.written) throw std::overflow_error("VDecodeUTF8");
            char16_t* place = out + progress.written;
            place[0] = static_cast<char16_t>(units == 1 ? codePoint : 0xD800 | ((codePoint - 0x10000) >> 10));
            if (units == 2) place[1] = static_cast<char16_t>(0xDC00 | (codePoint & 0x3FF));
        }
        progress.consumed += length;
        progress.written += units;
    }
}

void EncodeUtf8(std::u16string_view input, char* out, std::size_t room, Utf8Progress& progress) {
    while (progress.consumed < input.size()) {
        std::size_t units = 0;
        const char32_t codePoint = ReadUnits(input, progress.consumed, units);
        const std::size_t length = EncodedLength(codePoint);
        if (out != nullptr) {
            if (length > room - progress.written) return;
            WriteSequence(codePoint, length, out + progress.written);
        }
        progress.consumed += units;
        progress.written += length;
    }
}

VUnicodeString WideFromUtf8(const VNarrowString& utf8) {
    const Utf8Progress readable = MeasureReadable(utf8);
    VUnicodeString wide;
    wide.SetState(utf8.GetState());
    if (readable.written == 0) return wide;
    wide.Resize(readable.written);
    Utf8Progress filled;
    DecodeUtf8(utf8.View().substr(0, readable.consumed), &wide.MutableAt(0), readable.written, filled);
    return wide;
}

VNarrowString Utf8FromWide(const VUnicodeString& wide) {
    VNarrowString utf8;
    utf8.SetState(wide.GetState());
    Utf8Progress counted;
    try {
        EncodeUtf8(wide, nullptr, 0, counted);
    } catch (const IllegalSequence&) {
        return utf8;
    }
    if (counted.written == 0) return utf8;
    utf8.SetLength(counted.written);
    Utf8Progress filled;
    EncodeUtf8(wide, utf8.MutableData(), counted.written, filled);
    return utf8;
}

}  // namespace connectdialog
