// From a host of an OpenSSH configuration to the settings of a session.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class ProtocolConfig;
struct SshHost;

/// What an import sets of a session, in the form that the SSH2 protocol keeps.
struct SshSession {
    VUnicodeString hostName;
    VUnicodeString user;
    VUnicodeString identityFile;  ///< In the library's form of a path; empty when there is none.
    VUnicodeString jumpHost;
    std::uint16_t port = 22;
};

/// The name of the session of `alias`. What a name cannot hold is written as in URLs: `%` and two hexadecimal digits
/// for a character up to U+00FF, `%u` and four beyond. That are `\`, `:` and `%` itself, white space at either end, and
/// the first character of a name that is taken as a whole: ".", "..", "__FolderData__", and in the root folder
/// "Default". So no two aliases have the same name unless they differ in nothing but case.
std::u16string MakeSshSessionName(std::u16string_view alias, bool isInRoot);

/// Makes the settings. Values that a client could take for an option (a leading `-`), that hold control characters or
/// are too long to be any are refused, whichever of them it is: a session without its jump host would connect another
/// way than the file says.
/// On failure: false, and `problem` tells why. On success `problem` tells what stands in the way of connecting, if
/// anything does; such a session can be corrected before it is opened.
bool MakeSshSession(const SshHost& host, SshSession& session, std::string& problem);

/// Sets what differs, and gives the names of those settings, which live as long as `config`. User names are left alone
/// where policies forbid to keep them.
std::vector<std::u16string_view> ApplySshSession(const SshSession& session, ProtocolConfig& config);

}  // namespace connectdialog
