// The back end of all dialogs: what the host installs so that dialogs can be shown.
//
// A dialog is data (a template of src/resources) and logic (a class derived from VDialog). A back end renders any
// template and reports what the user does by control id; it knows no particular dialog, and no dialog knows its back
// end. Everything here is called from the user-interface thread, and events come on it.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class IDialogEvents;
class IDialogWindow;
class IFrameEvents;
class IFrameWindow;
class VPopupMenu;
class VWindow;
struct DialogTemplate;
struct VPoint;

class IDialogKit {
  public:
    virtual ~IDialogKit() = default;

    /// Makes the window of a dialog, hidden. `parent` may be null. Requires: `events` outlives the window.
    /// On failure: null.
    virtual std::unique_ptr<IDialogWindow> CreateDialogWindow(const DialogTemplate& dialog, IDialogEvents& events,
                                                              VWindow* parent) = 0;

    /// Makes a main window, hidden. Requires: `events` outlives the window. On failure, and where a back end has none:
    /// null.
    virtual std::unique_ptr<IFrameWindow> CreateFrameWindow(IFrameEvents& events);

    /// Shows a box with a text and waits. `flags` are those of vmessagebox.h. Gives one of its answers.
    virtual int ShowMessageBox(VWindow* parent, const VUnicodeString& title, const VUnicodeString& text,
                               unsigned flags) = 0;

    /// Lets the user pick a folder of the disk; `path` is selected first where it is there. An item that is no folder
    /// of the disk empties `path` and counts as an answer. False when the user gave up; `path` stays then.
    virtual bool BrowseForFolder(VWindow* owner, const VUnicodeString& title, VUnicodeString& path) = 0;

    /// Shows a menu at a point of the screen and waits. Gives the command that was chosen, or 0.
    virtual int TrackPopupMenu(VWindow* owner, const VPopupMenu& menu, VPoint point) = 0;

    // The clipboard, by format name. Other processes see it and write to it: what is read is not to be trusted.

    /// Replaces what the clipboard holds. On failure: false, and it holds nothing of this format.
    virtual bool SetClipboardData(const VUnicodeString& format, std::span<const std::byte> data) = 0;
    /// False when the clipboard holds nothing of that format, or cannot be read; `data` is empty then.
    virtual bool GetClipboardData(const VUnicodeString& format, std::vector<std::byte>& data) = 0;

    /// Shows that the application is busy, until it was switched off as often as on.
    virtual void ShowWaitCursor(bool isShown) = 0;
};

/// Installs the back end, which stays the caller's; null removes it. Without one nothing can be shown: a dialog or a
/// box is closed at once with nothing chosen.
void InstallDialogKit(IDialogKit* kit);
IDialogKit* GetDialogKit();

/// Shows the wait cursor while it lives.
class VWaitCursor {
  public:
    VWaitCursor() : kit(GetDialogKit()) {
        if (kit != nullptr) kit->ShowWaitCursor(true);
    }
    ~VWaitCursor() {
        if (kit != nullptr) kit->ShowWaitCursor(false);
    }
    VWaitCursor(const VWaitCursor&) = delete;
    VWaitCursor& operator=(const VWaitCursor&) = delete;

  private:
    IDialogKit* kit;
};

}  // namespace connectdialog
