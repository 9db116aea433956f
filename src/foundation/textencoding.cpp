#include "foundation/textencoding.h"

#include <algorithm>
#include <iterator>

#include "foundation/byteorder.h"
#include "foundation/stringerrors.h"
#include "foundation/textchecks.h"
#include "foundation/utf8.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

using namespace std::string_view_literals;

/// By the number of the encoding.
constexpr std::string_view kMarks[] = {""sv, ""sv, "\xEF\xBB\xBF"sv, "\xFF\xFE"sv, "\xFE\xFF"sv, "\xFF\xFE\0\0"sv};
constexpr TextEncoding kDetected[] = {TextEncoding::kUtf8, TextEncoding::kUtf16Le, TextEncoding::kUtf16Be};

DecodedText DecodeLocal(std::string_view bytes, bool isLast, char16_t* out) {
    const std::string_view whole = isLast ? bytes : bytes.substr(0, platform::WholeNarrowLength(bytes));
    return {whole.size(), platform::NarrowToWide(whole, out)};
}

DecodedText DecodeUtf8Part(std::string_view bytes, char16_t* out) {
    Utf8Progress progress;
    bool isMalformed = false;
    try {
        DecodeUtf8(bytes, out, bytes.size(), progress);
    } catch (const IllegalSequence&) {
        isMalformed = true;
    }
    return {progress.consumed, progress.written, isMalformed};
}

template <class Load>
DecodedText DecodeUtf16(std::string_view bytes, char16_t* out, Load load) {
    const auto* units = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const std::size_t count = bytes.size() / 2;
    for (std::size_t i = 0; i < count; ++i) out[i] = static_cast<char16_t>(load(units + 2 * i));
    return {2 * count, count};
}

/// Each unit or code point of `text` as a number of its byte order.
template <class Text, class Store>
void EncodeNumbers(const Text& text, std::string& bytes, Store store) {
    using Number = typename Text::value_type;
    bytes.resize(text.size() * sizeof(Number));
    auto* at = reinterpret_cast<std::uint8_t*>(bytes.data());
    for (const Number number : text) {
        store(number, at);
        at += sizeof(Number);
    }
}

bool EncodeUtf8Whole(std::u16string_view text, std::string& bytes) {
    Utf8Progress counted;
    try {
        EncodeUtf8(text, nullptr, 0, counted);
    } catch (const IllegalSequence&) {
        return false;
    }
    bytes.resize(counted.written);
    Utf8Progress filled;
    EncodeUtf8(text, bytes.data(), bytes.size(), filled);
    return true;
}

std::u32string CodePoints(std::u16string_view text) {
    std::u32string codePoints;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char32_t unit = text[at];
        const bool isLone = IsHalfCharacter(text, at);
        const bool isPair = !isLone && platform::IsHighSurrogate(unit);
        codePoints += isPair ? 0x10000 + ((unit & 0x3FF) << 10) + (text[++at] & 0x3FFu) : isLone ? U'\xFFFD' : unit;
    }
    return codePoints;
}

}  // namespace

std::string_view MarkOf(TextEncoding encoding) {
    const auto index = static_cast<std::size_t>(encoding);
    return index < std::size(kMarks) ? kMarks[index] : std::string_view();
}

TextEncoding DetectEncoding(std::string_view start) {
    const auto* found = std::find_if(std::begin(kDetected), std::end(kDetected),
                                     [start](TextEncoding encoding) { return start.starts_with(MarkOf(encoding)); });
    return found != std::end(kDetected) ? *found : TextEncoding::kLocal;
}

DecodedText DecodeText(TextEncoding encoding, std::string_view bytes, bool isLast, char16_t* out) {
    switch (encoding) {
        case TextEncoding::kLocal:
            return DecodeLocal(bytes, isLast, out);
        case TextEncoding::kUtf8:
            return DecodeUtf8Part(bytes, out);
        case TextEncoding::kUtf16Le:
            return DecodeUtf16(bytes, out, LoadLittleEndian<std::uint16_t>);
        case TextEncoding::kUtf16Be:
            return DecodeUtf16(bytes, out, LoadBigEndian<std::uint16_t>);
        default:
            return {};
    }
}

bool EncodeText(TextEncoding encoding, std::u16string_view text, std::string& bytes) {
    bytes.clear();
    switch (encoding) {
        case TextEncoding::kLocal:
            bytes = platform::ToNarrow(text);
            return true;
        case TextEncoding::kUtf8:
            return EncodeUtf8Whole(text, bytes);
        case TextEncoding::kUtf16Be:
            EncodeNumbers(text, bytes, StoreBigEndian<char16_t>);
            return true;
        case TextEncoding::kUtf32Le:
            EncodeNumbers(CodePoints(text), bytes, StoreLittleEndian<char32_t>);
            return true;
        default:
            EncodeNumbers(text, bytes, StoreLittleEndian<char16_t>);
            return true;
    }
}

}  // namespace connectdialog
