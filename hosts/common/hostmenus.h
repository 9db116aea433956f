// The menus, bars and keys of the main window: the user's description over the one that is built in.
//
// Shown are the MENU "main", the POPUPMENU "list" (the context menu of the list) and every TOOLBAR. A block that the
// user's file does not have is the built-in one's.
#pragma once

#include <functional>
#include <vector>

#include "imports/dialogkit/vpopupmenu.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "menutoolbar/vcustommenutoolbar.h"
#include "resources/accelerators.h"

namespace connectdialog {
class IFrameWindow;
}

namespace connectdialog::hosts {

/// Whether the user can choose a command now.
using IsCommandEnabled = std::function<bool(int command)>;

/// Where the user's description lies; empty when there is no such place.
VUnicodeString GetUserMenusFile();

/// Registers what it has in the commands of the process (VCustomMenuToolbar): one at a time.
class HostMenus {
  public:
    /// So many mistakes of the user's file are told; of the others how many there are.
    static constexpr std::size_t kMostTold = 10;
    /// The bars of descriptions; others come behind them.
    static constexpr int kMostBars = 8;

    /// Reads the user's file; one that is not there is no fault. Gives what the user should know, in lines: what was
    /// left out of the file, or why all of it is; else the empty text.
    VUnicodeString Load(const VUnicodeString& userFile);

    /// Gives the window its menu bar, its toolbars and its accelerators; again whenever what is enabled changed.
    void Show(IFrameWindow& window, const IsCommandEnabled& isEnabled) const;
    /// Whether the user wants to see the toolbars; a next Show heeds it.
    void SetWanted(bool areBarsWanted) { isWanted = areBarsWanted; }
    bool IsWanted() const { return isWanted; }
    /// A mark before each entry of the menus that has the command.
    void Check(int command, bool isChecked);

    /// As the description has it: every entry can be chosen.
    const VPopupMenu& GetMenuBar() const { return menuBar; }
    VPopupMenu MakeListMenu(const IsCommandEnabled& isEnabled) const;

    /// What a command of the menus means: its function's number as type, and an argument where it takes one. False when
    /// no description has it.
    static bool FindFunction(int command, VMenuToolbarItem& item);

  private:
    void AddBlocks(const VMenuToolbarRep& rep, const VMenuToolbarRep* over);
    void AddHostKeys();

    VPopupMenu menuBar;
    VPopupMenu listMenu;
    std::vector<VToolbarState> bars;
    std::vector<Accelerator> keys;
    bool isWanted = true;
};

}  // namespace connectdialog::hosts
