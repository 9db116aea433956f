#include "suite/importers/openssh/sshproxyjump.h"

#include <algorithm>

#include "foundation/numbertext.h"
#include "suite/importers/openssh/sshkeywords.h"
#include "suite/importers/openssh/sshlexer.h"

namespace connectdialog {
namespace {

constexpr std::string_view kUriScheme = "ssh://";

/// Replaces `%xx`. Nothing when one is malformed or stands for NUL.
std::optional<std::string> DecodeUri(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        unsigned byte = 0;
        const std::string_view digits = text.substr(i + 1, 2);
        if (digits.size() != 2 || !ReadNumber(digits, byte, 16) || byte == 0) return std::nullopt;
        decoded += static_cast<char>(byte);
        i += 2;
    }
    return decoded;
}

/// Reads `host`, `host:port`, `[address]` or `[address]:port`.
bool ParseHostAndPort(std::string_view text, SshHop& hop) {
    std::size_t end = std::min(text.find_first_of(":/"), text.size());
    if (text.starts_with('[')) {
        end = text.find(']');
        if (end == std::string_view::npos) return false;
        hop.host = text.substr(1, end - 1);
        ++end;
    } else {
        hop.host = text.substr(0, end);
    }
    const std::string_view port = text.substr(end);
    if (hop.host.empty() || (!port.empty() && port.front() != ':')) return false;
    if (port.size() > 1) hop.port = ParseSshPort(port.substr(1));
    return port.size() <= 1 || hop.port != 0;
}

bool ParseUri(std::string_view text, SshHop& hop) {
    text.remove_prefix(kUriScheme.size());
    const std::size_t at = text.find('@');
    if (at != std::string_view::npos) {
        const std::optional<std::string> user = DecodeUri(text.substr(0, std::min(text.find(';'), at)));
        if (!user || user->empty()) return false;
        hop.user = *user;
        text.remove_prefix(at + 1);
    }
    if (text.ends_with('/')) text.remove_suffix(1);
    return ParseHostAndPort(text, hop);
}

bool ParseHop(std::string_view text, SshHop& hop) {
    if (text.starts_with(kUriScheme)) return ParseUri(text, hop);
    const std::size_t at = text.rfind('@');
    if (at == std::string_view::npos) return ParseHostAndPort(text, hop);
    hop.user = text.substr(0, at);
    return !hop.user.empty() && ParseHostAndPort(text.substr(at + 1), hop);
}

}  // namespace

std::string_view TakeProxyJumpArgument(std::string_view rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n="), rest.size()));
    rest = rest.substr(0, rest.find('#'));
    return rest.substr(0, rest.find_first_of(" \t\n\v\f\r"));
}

std::optional<std::vector<SshHop>> ParseProxyJump(std::string_view argument) {
    std::vector<SshHop> hops;
    if (EqualsIgnoringAsciiCase(argument, "none")) return hops;
    while (true) {
        const std::size_t comma = argument.find(',');
        if (!ParseHop(argument.substr(0, comma), hops.emplace_back())) return std::nullopt;
        if (comma == std::string_view::npos) return hops;
        argument.remove_prefix(comma + 1);
    }
}

std::string FormatProxyJump(const std::vector<SshHop>& hops) {
    std::string text;
    for (const SshHop& hop : hops) {
        if (!text.empty()) text += ',';
        if (!hop.user.empty()) text += hop.user + '@';
        text += hop.host.find(':') == std::string::npos ? hop.host : '[' + hop.host + ']';
        if (hop.port != 0) text += ':' + std::to_string(hop.port);
    }
    return text;
}

}  // namespace connectdialog
