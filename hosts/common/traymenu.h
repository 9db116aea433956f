// What the menus of the tray launcher hold: the session tree, a menu a folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog::hosts {

/// A menu has no more entries of a folder than this.
inline constexpr std::size_t kMostTrayEntries = 40;

/// A folder, or a part of a large one: its children are counted folders first, as the tree shows them.
struct TrayRange {
    VUnicodeString folder;
    std::size_t first = 0;
    std::size_t count = std::numeric_limits<std::size_t>::max();

    bool operator==(const TrayRange&) const = default;
};

enum class TrayCommand : std::uint8_t { kNone, kQuickConnect, kConnect, kAbout, kExit };

struct TrayEntry {
    enum class Kind : std::uint8_t { kMenu, kSession, kCommand, kNote, kSeparator };

    Kind kind = Kind::kSeparator;
    VUnicodeString label;  ///< with the marks of a menu's text
    TrayRange range;       ///< kMenu: what it opens
    VUnicodeString path;   ///< kSession
    TrayCommand command = TrayCommand::kNone;

    bool operator==(const TrayEntry&) const = default;
};

/// The entries of a menu, from one look at the store: every child in the tree's order, or menus for parts of the
/// range where it is too large for one. A range that reaches behind the folder's end is cut there; what has nothing to
/// show is a note.
std::vector<TrayEntry> ListTrayMenu(const TrayRange& range);

/// The icon's own menu: the root folder, then what else the launcher does.
std::vector<TrayEntry> ListTrayRootMenu();

}  // namespace connectdialog::hosts
