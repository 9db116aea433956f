// What stands behind an item of the session tree.
#pragma once

#include <memory>

#include "config/isessionconfig.h"
#include "foundation/vunknown.h"
#include "sessiondb/entrysearch.h"

namespace connectdialog {

enum class EntryKind : int { kSession = 1, kFolder = 2 };

/// Made when the item is inserted, and gone with it.
struct SessionItemData {
    EntryKind kind = EntryKind::kSession;
    /// The sessions of this folder are in the tree.
    bool sessionsLoaded = false;
    /// Null until somebody asked for the session.
    VRef<ISessionConfig> config;
    /// What a search read of a session that nobody else asked for; null otherwise.
    std::unique_ptr<SearchedTexts> searched;
};

}  // namespace connectdialog
