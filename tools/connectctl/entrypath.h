// From the path that a user typed to the entry of the session tree.
#pragma once

#include <string>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"
#include "tools/connectctl/command.h"

namespace connectdialog {
class ISessionConfig;
}

namespace connectdialog::connectctl {

/// What the arguments that take a path say in their help.
inline constexpr char kPathHelp[] = "Names below the root joined by \\";

struct Entry {
    VUnicodeString path;  ///< empty: the root
    bool isSession = false;
};

/// UTF-8 as the shell gave it. Fails for malformed text, which names nothing and must not be stored changed.
Failure DecodeArgument(const std::string& argument, VUnicodeString& text);

/// A typed path, without the one `\` that it may have at its end. Fails for a path with an empty name in it.
Failure DecodePath(const std::string& argument, VUnicodeString& path);

/// Finds the entry at a typed path. One `\` at its end is allowed, as listings print it behind folders. A name may also
/// be typed in the escaped form in which listings print it.
/// Fails with a hint when there is no such entry.
Failure FindEntry(const std::string& argument, Entry& entry);

/// FindEntry, with the path spelled as it is stored. The template is made when it is not there yet.
Failure FindStoredEntry(const std::string& argument, Entry& entry);

/// Opens the session at a typed path. Fails for a folder too.
Failure OpenSessionAt(const std::string& argument, VRef<ISessionConfig>& session);

}  // namespace connectdialog::connectctl
