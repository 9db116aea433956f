// The keywords of OpenSSH's client configuration and what each takes for arguments.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace connectdialog {

struct SshLine;

/// The keywords whose meaning the reader needs, and one for all others.
enum class SshKeyword : std::uint8_t {
    kOther,
    kHost,
    kMatch,
    kInclude,
    kIgnoreUnknown,
    kHostName,
    kPort,
    kUser,
    kIdentityFile,
    kProxyJump,
    kProxyCommand,
    kCanonicalizeHostname,
    kTag,
};

/// The shape of a keyword's arguments, as far as ssh refuses a file over it.
enum class SshArguments : std::uint8_t {
    kAny,      ///< Not looked at.
    kOne,      ///< One that is not empty.
    kNumber,   ///< One, 0 to 2147483647.
    kTime,     ///< One, "none" or as "1h30m".
    kWord,     ///< One out of the row's words.
    kCiphers,  ///< One, a list of names with an optional + - ^ in front; so the three below.
    kMacs,
    kKeyExchanges,
    kKeyTypes,
};

struct SshKeywordRow {
    std::string_view name;  ///< In lower case.
    SshArguments arguments = SshArguments::kAny;
    SshKeyword keyword = SshKeyword::kOther;
    std::string_view words = {};  ///< For kWord: the words in lower case, separated and enclosed by blanks.
    std::string_view since = {};  ///< The OpenSSH version that has it first when that is later than 9.2.
};

/// The row of a keyword (in lower case); null when OpenSSH has none of that name.
const SshKeywordRow* FindSshKeyword(std::string_view name);

struct SshArgumentCheck {
    std::string error;         ///< What ssh refuses; empty when nothing.
    bool isFirstGood = false;  ///< The first argument is there and would do alone.
};

/// Judges the arguments of `line`, a directive with the keyword of `row`.
SshArgumentCheck CheckSshArguments(const SshKeywordRow& row, const SshLine& line);

/// A port number 1 to 65535 in decimal, as ssh reads one (space and `+` in front allowed); 0 for anything else.
int ParseSshPort(std::string_view text);

}  // namespace connectdialog
