#include "suite/importers/openssh/sshdiagnostics.h"

namespace connectdialog {
namespace {

constexpr std::size_t kMaxQuoted = 80;

unsigned char ByteAt(std::string_view text, std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

/// The length of the printable character at `at`; 0 for a control character or malformed UTF-8. Over-long forms and
/// the C1 controls are malformed here: terminals may act on both.
std::size_t PrintableLength(std::string_view text, std::size_t at) {
    const unsigned lead = ByteAt(text, at);
    if (lead < 0x80) return lead >= 0x20 && lead != 0x7F ? 1 : 0;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((ByteAt(text, at + i) & 0xC0U) != 0x80) return 0;
    }
    const unsigned second = ByteAt(text, at + 1);
    const bool isOverlong = (lead == 0xE0 || lead == 0xF0) && second < (lead == 0xE0 ? 0xA0U : 0x90U);
    const bool isControl = lead == 0xC2 && second < 0xA0;
    return isOverlong || isControl ? 0 : length;
}

void AppendOctal(std::string& to, unsigned char byte) {
    to += '\\';
    for (int shift = 6; shift >= 0; shift -= 3) to += static_cast<char>('0' + ((byte >> shift) & 7));
}

}  // namespace

void SshDiagnostics::Add(SshSeverity severity, std::string_view file, std::size_t line, std::string_view text) {
    refused = refused || severity == SshSeverity::kRefused;
    if (kept.size() == kMaxKept) {
        ++dropped;
        return;
    }
    kept.push_back({severity, std::string(file), line, std::string(text)});
}

std::string QuoteForMessage(std::string_view raw) {
    std::string quoted = "'";
    for (std::size_t at = 0; at < raw.size();) {
        if (quoted.size() > kMaxQuoted) {
            quoted += "...";
            break;
        }
        const std::size_t length = PrintableLength(raw, at);
        if (length == 0) {
            AppendOctal(quoted, ByteAt(raw, at));
        } else {
            quoted += raw.substr(at, length);
        }
        at += length == 0 ? 1 : length;
    }
    return quoted + "'";
}

}  // namespace connectdialog
