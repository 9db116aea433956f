// Session paths and the keys they stand for.
//
// A session path is a string of names joined by a single `\`, relative to the key "Sessions"; the empty string is the
// root folder. The leaf is the part behind the last `\`.
#pragma once

#include <cstddef>
#include <string_view>

#include "foundation/vunicodestring.h"
#include "resources/storenames.h"

namespace connectdialog {

/// The longest name that a user can give to an entry, characters. Stores have room for longer ones.
inline constexpr std::size_t kMaxSessionNameLength = 255;

/// The key of the entry at `path`.
VUnicodeString BuildSessionKeyPath(const VUnicodeString& path);
/// The key of the arrangement data of the folder at `path`.
VUnicodeString BuildFolderDataKeyPath(const VUnicodeString& path);

/// The text behind the last `\`, or the whole path.
VUnicodeString GetEntryLeaf(const VUnicodeString& path);
/// The path up to the last `\`, or the empty path.
VUnicodeString GetEntryParent(const VUnicodeString& path);
/// Whether `path` is `folder` or lies in it, by whole names, case ignored. Everything lies in the root.
bool IsSameOrInside(const VUnicodeString& path, const VUnicodeString& folder);
/// The path of `leaf` in the folder `parent`, which may be the root.
VUnicodeString JoinEntryPath(const VUnicodeString& parent, const VUnicodeString& leaf);
/// Whether the entry is the template of new sessions, which is no session of the user's. Case is ignored: no store
/// holds another entry beside it.
bool IsTemplateEntry(std::u16string_view folder, std::u16string_view name);

}  // namespace connectdialog
