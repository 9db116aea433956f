// Which names a session or a folder may have.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"
#include "sessiondb/sessionpaths.h"

namespace connectdialog {

/// Why a name is refused.
enum class SessionNameFault : std::uint8_t {
    kNone,
    kEmpty,
    kTooLong,        ///< more than kMaxSessionNameLength characters
    kSeparator,      ///< `\` separates the names of a path
    kColon,          ///< `:` separates the names of a stored list
    kControl,        ///< a control character
    kHalfCharacter,  ///< a surrogate without its other half
    kBlankAtEdge,    ///< white space at either end
    kDots,           ///< "." or ".."
    kFolderData,     ///< the name under which a folder keeps its arrangement
    kTemplate,       ///< "Default" in the root: the session that new ones are made from
    kTooDeep,        ///< the store has no room in folders that lie in each other so deep
    kTaken           ///< an entry of that name stands beside it
};

/// What the name itself is refused for, wherever it should stand. Asks no store; never gives the last three.
SessionNameFault CheckSessionNameText(const VUnicodeString& name);

/// Whether an entry of the folder `parent` (a session path; empty: the root) may be called `newName`. `oldName` is the
/// name it has now, or empty for a new entry: it may keep it, also in other case.
SessionNameFault CheckSessionName(const VUnicodeString& parent, const VUnicodeString& oldName,
                                  const VUnicodeString& newName);

/// A sentence for the user; empty for kNone. `name` is the refused one.
VUnicodeString DescribeSessionNameFault(SessionNameFault fault, const VUnicodeString& name);
/// The same in the language of the dialogs.
VUnicodeString TranslateSessionNameFault(SessionNameFault fault, const VUnicodeString& name);

}  // namespace connectdialog
