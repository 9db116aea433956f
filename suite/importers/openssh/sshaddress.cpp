// IPv4 addresses in all the forms that inet_aton() takes.
#include <charconv>
#include <cstdint>
#include <optional>

#include "suite/importers/openssh/sshconfigeval.h"

namespace connectdialog {
namespace {

/// Reads one part of an address off the front: decimal, octal behind `0`, hexadecimal behind `0x`.
std::optional<std::uint32_t> TakePart(std::string_view& text) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.starts_with('0')) {
        base = 8;
    }
    std::uint32_t part = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), part, base);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return part;
}

}  // namespace

std::string CanonicalIPv4Address(std::string_view text) {
    std::uint32_t address = 0;
    unsigned shift = 32;  // Bits that no part has filled yet.
    while (true) {
        const std::optional<std::uint32_t> part = TakePart(text);
        if (!part) return {};
        if (text.empty()) {
            // The last part fills all that is left.
            if (shift < 32 && *part >> shift != 0) return {};
            address |= *part;
            break;
        }
        if (text.front() != '.' || *part > 0xFF || shift == 8) return {};
        text.remove_prefix(1);
        shift -= 8;
        address |= *part << shift;
    }
    std::string canonical;
    for (int byte = 3; byte >= 0; --byte) {
        canonical += std::to_string((address >> (8 * byte)) & 0xFFU);
        if (byte > 0) canonical += '.';
    }
    return canonical;
}

}  // namespace connectdialog
