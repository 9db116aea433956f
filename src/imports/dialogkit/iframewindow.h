// The main window of a host: menu bar, toolbars, a list and a status line.
//
// What stands in it is data that the host hands over whole, whenever it changed; a back end shows it and reports what
// the user does, as the windows of dialogs do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vwindow.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

class VIcon;
class VPopupMenu;
class VToolbarState;
struct Accelerator;

/// A row of the list: a text a column. A column that a row has no text for is empty.
struct FrameRow {
    std::vector<VUnicodeString> texts;
};

/// What a back end tells the host. What code sets raises no event.
class IFrameEvents {
  public:
    virtual ~IFrameEvents() = default;
    /// An entry of a menu, a button of a bar, or an accelerator was chosen.
    virtual void OnFrameCommand(int command) = 0;
    /// A row was double-clicked, or the Return key pressed on it.
    virtual void OnRowActivated(std::size_t row) = 0;
    /// The menu of the list is wanted at a point of the screen; the selection is what it is for.
    virtual void OnListMenu(VPoint point) = 0;
    /// The rows that are selected are others now.
    virtual void OnSelectionChanged() = 0;
    /// The user wants to close the window. False: it stays.
    virtual bool OnFrameClose() = 0;
    /// Wake was called.
    virtual void OnFrameWoken() = 0;
};

/// Dialogs can stand over it. A menu or a bar that is set anew takes the place of the one before.
class IFrameWindow : public VWindow {
  public:
    /// Shows the window and handles what the user does until Close was called.
    virtual void Run() = 0;
    /// Ends Run as soon as the event at hand is over.
    virtual void Close() = 0;
    /// Lets Run call OnFrameWoken soon; several calls before that may count as one. From any thread, as long as the
    /// window lives.
    virtual void Wake() = 0;

    virtual void SetTitle(const VUnicodeString& title) = 0;
    virtual void SetIcon(const VIcon& icon) = 0;
    /// Each sub-menu is a menu of the bar, in order. Requires: no separator among them.
    virtual void SetMenuBar(const VPopupMenu& menu) = 0;
    /// Shows a bar under the menu: those with lower numbers first. One without buttons is not shown.
    virtual void SetToolbar(int bar, const VToolbarState& toolbar) = 0;
    /// Keys that give a command wherever the focus is in the window, whether or not a menu tells them; also one that a
    /// menu has disabled.
    virtual void SetAccelerators(std::span<const Accelerator> accelerators) = 0;
    /// The headings of the list.
    virtual void SetColumns(std::span<const VUnicodeString> headings) = 0;
    /// The rows of the list; rows at the same places stay selected.
    virtual void SetRows(std::span<const FrameRow> rows) = 0;
    /// In rising order.
    virtual std::vector<std::size_t> GetSelectedRows() const = 0;
    /// The text of the status line.
    virtual void SetStatus(const VUnicodeString& text) = 0;

    /// Where it stands: the normal rectangle is that of the window's inside.
    virtual VWindowPlacement GetPlacement() const = 0;
    /// As far as the screen has room; before Run.
    virtual void SetPlacement(const VWindowPlacement& placement) = 0;
};

}  // namespace connectdialog
