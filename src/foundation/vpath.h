// Joining and splitting paths. Names are joined by `\`; splitting also takes `/`.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// Both parts with a `\` between them; where one of them brings it, it is not doubled. Null counts as empty. An empty
/// first part gives a leading `\`: who may hold one tests for it first.
VUnicodeString VJoinPath(const char16_t* first, const char16_t* second);

/// Gives the folder part and puts the leaf out. Separators that end the path are dropped first; a folder that would be
/// empty because the only separator starts the path is that separator. A drive root and a lone separator have neither.
VUnicodeString VSplitPath(const VUnicodeString& path, VUnicodeString& leaf);

/// True for a letter with a colon, with or without a backslash; `letter` is that letter, or 0. Null is none.
bool VIsDriveRoot(const char* path, char& letter);

/// What VResolveDotPath resolves against, for the whole process; empty at start, and then nothing is resolved.
void VSetDotPathBase(const VUnicodeString& folder);
/// A path that is `.` or `..` or begins with one of them and a separator, with the base folder or the folder above it
/// in their place. Any other path comes back as it is, and so does `..` when the base has no separator.
VUnicodeString VResolveDotPath(const VUnicodeString& path);

/// The executable of this process; empty when it cannot be told.
VUnicodeString VGetModulePath();
/// The folder part of that.
VUnicodeString VGetModuleFolder();
/// The path of a name in the user's configuration folder; empty for a user without a home.
VUnicodeString VGetConfigurationPath(const char16_t* name);
/// The user's documents folder. On failure: false, and `path` stays.
bool VGetDocumentsFolder(VUnicodeString& path);

}  // namespace connectdialog
