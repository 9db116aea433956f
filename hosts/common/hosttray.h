// An icon in the desktop's tray, with a menu.
#pragma once

#include <memory>
#include <vector>

#include "foundation/vunicodestring.h"
#include "hosts/common/hostkind.h"
#include "hosts/common/traymenu.h"

namespace connectdialog::hosts {

/// What the tray asks and tells.
class ITrayEvents {
  public:
    virtual ~ITrayEvents() = default;
    /// The entries of a menu that is about to open: `opened` is the entry that it hangs on, null for the icon's own.
    virtual std::vector<TrayEntry> ListMenu(const TrayEntry* opened) = 0;
    /// A session or a command was chosen. Dialogs may be shown from here; what the user does in the tray meanwhile is
    /// told all the same.
    virtual void OnChosen(const TrayEntry& entry) = 0;
    /// The icon itself was clicked.
    virtual void OnIconClicked() = 0;
};

class HostTray {
  public:
    virtual ~HostTray() = default;
    /// Handles what the user does until Close was called, or the desktop ends.
    virtual void Run() = 0;
    /// Closes dialogs too, as the user would; one that does not let itself be closed stays, and so does the tray.
    virtual void Close() = 0;
    /// Brings the dialog that is open, if any, before the user's eyes.
    virtual void ShowDialog() = 0;
};

/// Whether this desktop has a tray. Requires: a host window (hosts/common/hostwindow.h) is open.
/// On failure: false, and `fault` tells why.
bool HasTray(VUnicodeString& fault);

/// Shows the host's icon. A menu has entries only once it opens, and lists them anew each time. Requires: HasTray; the
/// host window outlives it, and so do the events.
std::unique_ptr<HostTray> OpenHostTray(const HostKind& kind, ITrayEvents& events);

}  // namespace connectdialog::hosts
