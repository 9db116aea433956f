#include "stores/sqlite/wtf8.h"

#include <cstddef>
#include <cstdint>

#include "platform/utf16.h"

namespace connectdialog::stores {

namespace {

/// Requires: `point` is above ASCII.
void AppendCodePoint(char32_t point, std::string& bytes) {
    const auto tail = [&](int shift) { bytes.push_back(static_cast<char>(0x80 | (point >> shift & 0x3F))); };
    if (point < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | point >> 6));
        tail(0);
    } else if (point < 0x10000) {
        bytes.push_back(static_cast<char>(0xE0 | point >> 12));
        tail(6), tail(0);
    } else {
        bytes.push_back(static_cast<char>(0xF0 | point >> 18));
        tail(12), tail(6), tail(0);
    }
}

/// Takes one code point off the front of `bytes`; U+FFFD for a byte that begins none.
char32_t TakeCodePoint(std::string_view& bytes) {
    const auto at = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned lead = at(0);
    const std::size_t size = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    char32_t point = size < 2 ? lead : lead & (0xFFU >> (size + 1));
    std::size_t taken = 1;
    for (; taken < size && taken < bytes.size() && (at(taken) & 0xC0) == 0x80; ++taken) {
        point = point << 6 | (at(taken) & 0x3F);
    }
    bytes.remove_prefix(taken);
    const bool isShortest = size < 3 || point >= (size == 3 ? 0x800U : 0x10000U);
    return taken == size && isShortest && point < 0x110000 ? point : 0xFFFD;
}

}  // namespace

std::string EncodeWtf8(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        if (point < 0x80) {
            bytes += static_cast<char>(point);
            continue;
        }
        if (platform::IsHighSurrogate(point) && i + 1 < text.size() && platform::IsLowSurrogate(text[i + 1])) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00U);
        }
        AppendCodePoint(point, bytes);
    }
    return bytes;
}

void DecodeWtf8(std::string_view bytes, std::u16string& text) {
    text.resize(bytes.size());
    std::size_t ascii = 0;
    for (; ascii < bytes.size() && static_cast<signed char>(bytes[ascii]) >= 0; ++ascii)
        text[ascii] = static_cast<char16_t>(bytes[ascii]);
    text.resize(ascii);
    bytes.remove_prefix(ascii);
    while (!bytes.empty()) {
        const char32_t point = TakeCodePoint(bytes);
        if (point < 0x10000) {
            text.push_back(static_cast<char16_t>(point));
        } else {
            text.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
        }
    }
}

std::string EncodeBigEndian(std::u16string_view text) {
    std::string bytes(text.size() * 2, '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        bytes[2 * i] = static_cast<char>(text[i] >> 8);
        bytes[2 * i + 1] = static_cast<char>(text[i] & 0xFF);
    }
    return bytes;
}

std::u16string DecodeBigEndian(std::string_view bytes) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto high = static_cast<unsigned char>(bytes[2 * i]);
        text[i] = static_cast<char16_t>(high << 8 | static_cast<unsigned char>(bytes[2 * i + 1]));
    }
    return text;
}

}  // namespace connectdialog::stores
