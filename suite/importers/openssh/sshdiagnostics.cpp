#include "suite/importers/openssh/sshdiagnostics.h"

#include "foundation/printable.h"
#include "platform/codepage.h"

namespace connectdialog {
namespace {

constexpr std::size_t kMaxQuoted = 80;

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
    return "'" + PrintableStart(platform::ToWide(raw), kMaxQuoted, "...") + "'";
}

}  // namespace connectdialog
