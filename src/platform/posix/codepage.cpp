#include "platform/codepage.h"

#include <algorithm>
#include <cstdint>

#include "platform/utf16.h"

namespace connectdialog::platform {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// What a lead byte promises: the bytes that follow, its own bits, and the range of the second byte, which keeps out
/// overlong forms, surrogates and what lies above U+10FFFF (Unicode Standard, table 3-7).
struct Lead {
    int following;
    char32_t bits;
    std::uint8_t secondFrom = 0x80;
    std::uint8_t secondTo = 0xBF;
};

Lead ReadLead(std::uint8_t byte) {
    if (byte < 0x80) return {0, byte};
    if (byte < 0xC2 || byte > 0xF4) return {-1, kReplacement};
    if (byte < 0xE0) return {1, byte & 0x1Fu};
    if (byte < 0xF0) {
        return {2, byte & 0x0Fu, static_cast<std::uint8_t>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<std::uint8_t>(byte == 0xED ? 0x9F : 0xBF)};
    }
    return {3, byte & 0x07u, static_cast<std::uint8_t>(byte == 0xF0 ? 0x90 : 0x80),
            static_cast<std::uint8_t>(byte == 0xF4 ? 0x8F : 0xBF)};
}

/// The code point at `at`, which moves behind it.
char32_t ReadCodePoint(std::string_view narrow, std::size_t& at) {
    const auto first = static_cast<std::uint8_t>(narrow[at++]);
    if (first < 0x80) return first;  // nearly all text
    Lead lead = ReadLead(first);
    for (int i = 0; i < lead.following; ++i) {
        const std::uint8_t byte = at < narrow.size() ? static_cast<std::uint8_t>(narrow[at]) : std::uint8_t{0};
        if (byte < lead.secondFrom || byte > lead.secondTo) return kReplacement;
        lead = {lead.following, (lead.bits << 6) | (byte & 0x3Fu)};
        ++at;
    }
    return lead.bits;
}

char32_t ReadCodePoint(std::u16string_view wide, std::size_t& at) {
    const char32_t unit = wide[at++];
    if (!IsHighSurrogate(unit)) return IsLowSurrogate(unit) ? kReplacement : unit;
    if (at == wide.size() || !IsLowSurrogate(wide[at])) return kReplacement;
    return 0x10000 + ((unit & 0x3FF) << 10) + (wide[at++] & 0x3FFu);
}

}  // namespace

std::size_t NarrowToWide(std::string_view narrow, char16_t* wide) {
    std::size_t count = 0;
    const auto put = [&](char32_t unit) {
        if (wide != nullptr) wide[count] = static_cast<char16_t>(unit);
        ++count;
    };
    for (std::size_t at = 0; at < narrow.size();) {
        const char32_t codePoint = ReadCodePoint(narrow, at);
        if (codePoint < 0x10000) {
            put(codePoint);
        } else {
            put(0xD7C0 + (codePoint >> 10));
            put(0xDC00 + (codePoint & 0x3FF));
        }
    }
    return count;
}

std::size_t WideToNarrow(std::u16string_view wide, char* narrow) {
    std::size_t count = 0;
    const auto put = [&](char32_t byte) {
        if (narrow != nullptr) narrow[count] = static_cast<char>(byte);
        ++count;
    };
    for (std::size_t at = 0; at < wide.size();) {
        const char32_t codePoint = ReadCodePoint(wide, at);
        if (codePoint < 0x80) {
            put(codePoint);
            continue;
        }
        const int following = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
        put((0xF00u >> (following + 1) & 0xFFu) | (codePoint >> (6 * following)));
        for (int i = following - 1; i >= 0; --i) put(0x80 | (codePoint >> (6 * i) & 0x3F));
    }
    return count;
}

std::size_t WholeNarrowLength(std::string_view narrow) {
    constexpr std::size_t kLongestUnfinished = 3;
    for (std::size_t cut = 1; cut <= kLongestUnfinished && cut <= narrow.size(); ++cut) {
        const auto byte = static_cast<std::uint8_t>(narrow[narrow.size() - cut]);
        if ((byte & 0xC0) == 0x80) continue;
        return ReadLead(byte).following >= static_cast<int>(cut) ? narrow.size() - cut : narrow.size();
    }
    return narrow.size();
}

std::u16string ToWide(std::string_view narrow) {
    const bool isAscii = std::none_of(narrow.begin(), narrow.end(), [](char byte) { return (byte & 0x80) != 0; });
    if (isAscii) return {narrow.begin(), narrow.end()};
    std::u16string wide(NarrowToWide(narrow, nullptr), u'\0');
    NarrowToWide(narrow, wide.data());
    return wide;
}

std::string ToNarrow(std::u16string_view wide) {
    std::string narrow(WideToNarrow(wide, nullptr), '\0');
    WideToNarrow(wide, narrow.data());
    return narrow;
}

}  // namespace connectdialog::platform
