// The table of protocols that the plug-ins bring.
#pragma once

#include <cstdint>

#include "foundation/varray.h"
#include "foundation/vunicodestring.h"

namespace connectdialog {

class ConnectConfig;
class ICommonConfig;
class ISessionConfig;
class NewSessionWizardPage;
class VPluginDialog;
class VProfileKey;
class VWindow;

/// Application kinds: which application a row, a session side or a process belongs to.
enum class AppKind : std::int32_t { kUnknown = -1, kHalden = 1, kNorHalden = 3, kTessaly = 6, kOther = 7 };

/// One protocol.
struct ConnectProtocolTableElement {
    /// As stored in a session, shown and compared.
    VUnicodeString name;
    /// kHalden and kNorHalden are terminal-side rows, kTessaly file-transfer rows; the library has no use for others.
    AppKind kind = AppKind::kUnknown;
    /// Makes the protocol's settings from a session's key; key and common config may be null. Null: the row has none.
    /// One reference for the caller.
    ConnectConfig* (*createConfig)(VProfileKey* key, ICommonConfig* common,
                                   const ConnectProtocolTableElement& row) = nullptr;
    /// Whether all that the object holds lies in the common config, which it has in common with the objects of every
    /// other such row. Then one of them, made from the session's key, is enough: the others are made when they are
    /// used, and without a key.
    bool sharesSettings = false;
    /// For the new session wizard; null where the row has no page.
    NewSessionWizardPage* (*createPage)(ISessionConfig* config) = nullptr;
    void (*destroyPage)(NewSessionWizardPage* page) = nullptr;
    /// For quick connect: a page that edits the session's settings of this protocol; the caller deletes it. Null where
    /// the row has no page. Requires: the session outlives the page.
    VPluginDialog* (*createQuickPage)(VWindow* parent, ISessionConfig* config) = nullptr;
};

/// Lives for the whole process; the order of its rows never changes.
using ConnectProtocolTable = VArray<ConnectProtocolTableElement>;

}  // namespace connectdialog
