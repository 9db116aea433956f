#include "foundation/percenttext.h"

#include "foundation/hextext.h"
#include "foundation/textchecks.h"

namespace connectdialog {

std::string PercentEncode(std::string_view text) {
    std::string encoded;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (IsAsciiLetterOrDigit(byte) || std::string_view("-_.").find(character) != std::string_view::npos)
            encoded += character;
        else
            encoded += {'%', HexDigit<char>(byte >> 4U, HexCase::kUpper), HexDigit<char>(byte, HexCase::kUpper)};
    }
    return encoded;
}

bool PercentDecode(std::string_view text, std::string& decoded) {
    decoded.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        if (i + 2 >= text.size()) return false;
        const unsigned high = HexDigitValue(static_cast<unsigned char>(text[i + 1]));
        const unsigned low = HexDigitValue(static_cast<unsigned char>(text[i + 2]));
        if (high == kNoHexDigit || low == kNoHexDigit) return false;
        decoded += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return true;
}

}  // namespace connectdialog
