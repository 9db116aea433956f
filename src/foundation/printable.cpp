#include "foundation/printable.h"

#include <iterator>

#include "foundation/hextext.h"
#include "foundation/textchecks.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

constexpr std::size_t kDigits = 4;
constexpr std::size_t kEscapeLength = kPrintableStart.size() + kDigits + kPrintableEnd.size();

std::u16string HexOf(char16_t character) {
    std::u16string hex;
    for (int shift = 12; shift >= 0; shift -= 4) hex += HexDigit(unsigned{character} >> shift, HexCase::kUpper);
    return hex;
}

bool ReadHex(std::u16string_view digits, char16_t& character) {
    std::uint8_t bytes[kDigits / 2] = {};
    if (DecodeHex(digits, bytes) != std::size(bytes)) return false;
    character = static_cast<char16_t>(bytes[0] << 8 | bytes[1]);
    return true;
}

}  // namespace

std::string Printable(std::u16string_view text, std::u16string_view before, std::u16string_view after) {
    std::u16string escaped;
    std::size_t clean = 0;  // where the run begins that needs no escaping
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!IsControl(text[i]) && !IsHalfCharacter(text, i)) continue;
        escaped.append(text.substr(clean, i - clean)).append(before).append(HexOf(text[i])).append(after);
        clean = i + 1;
    }
    if (clean == 0) return platform::ToNarrow(text);
    return platform::ToNarrow(escaped.append(text.substr(clean)));
}

std::string PrintableStart(std::u16string_view text, std::size_t most, std::string_view more) {
    if (text.size() <= most) return Printable(text);
    return Printable(StartOf(text, most)).append(more);
}

std::u16string FromPrintable(std::u16string_view text) {
    std::u16string result;
    while (!text.empty()) {
        char16_t character = 0;
        const bool isEscape = text.starts_with(kPrintableStart) &&
                              text.substr(0, kEscapeLength).ends_with(kPrintableEnd) && text.size() >= kEscapeLength &&
                              ReadHex(text.substr(kPrintableStart.size(), kDigits), character);
        result += isEscape ? character : text.front();
        text.remove_prefix(isEscape ? kEscapeLength : 1);
    }
    return result;
}

}  // namespace connectdialog
