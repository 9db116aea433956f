// Which entries of the session tree a search for a text finds.
#pragma once

#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class ISessionConfig;

/// What is looked for, and where. The text is not empty.
struct FindOptions {
    VUnicodeString text;
    bool inSessionNames = true;
    bool inFolderNames = true;
    bool inDescriptions = true;
    bool inHostnames = true;
    bool matchCase = false;
};

/// Whether `text` has the text looked for in it. Without `matchCase` both count by the capital of each character.
bool TextMatches(std::u16string_view text, const FindOptions& options);

/// Whether the label of an entry is looked at, and matches. The root's label is kRootLabel.
bool NameMatches(std::u16string_view label, bool isSession, const FindOptions& options);

/// What of a session's values is looked at: far less than the session takes in memory.
struct SearchedTexts {
    VUnicodeString host;          ///< empty without a protocol
    VUnicodeString transferHost;  ///< the same of the other side
    VUnicodeString description;   ///< its lines joined
};
SearchedTexts GetSearchedTexts(ISessionConfig& session);

/// Whether a host name or the description is looked at, and matches. A session whose name matches need not be asked, so
/// that its values need not be read.
bool SessionMatches(const SearchedTexts& texts, const FindOptions& options);

/// How the root folder is called where it is shown.
inline constexpr char16_t kRootLabel[] = u"Sessions";

/// The message for a search that found nothing.
VUnicodeString DescribeNotFound(const FindOptions& options);

}  // namespace connectdialog
