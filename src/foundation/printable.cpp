#include "foundation/printable.h"

#include "foundation/textchecks.h"
#include "platform/codepage.h"

namespace connectdialog {

namespace {

constexpr char16_t kHexDigits[] = u"0123456789ABCDEF";
constexpr std::size_t kDigits = 4;
constexpr std::size_t kEscapeLength = kPrintableStart.size() + kDigits + kPrintableEnd.size();

std::u16string HexOf(char16_t character) {
    std::u16string hex;
    for (int shift = 12; shift >= 0; shift -= 4) hex += kHexDigits[(character >> shift) & 0xF];
    return hex;
}

bool ParseHex(std::u16string_view digits, char16_t& value) {
    unsigned number = 0;
    for (const char16_t digit : digits) {
        const std::size_t place = std::u16string_view(kHexDigits).find(digit);
        if (place == std::u16string_view::npos) return false;
        number = number * 16 + static_cast<unsigned>(place);
    }
    value = static_cast<char16_t>(number);
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
                              ParseHex(text.substr(kPrintableStart.size(), kDigits), character);
        result += isEscape ? character : text.front();
        text.remove_prefix(isEscape ? kEscapeLength : 1);
    }
    return result;
}

}  // namespace connectdialog
