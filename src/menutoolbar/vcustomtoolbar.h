// A toolbar of a dialog.
#pragma once

#include <span>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vtoolbarstate.h"
#include "menutoolbar/vcustomtoolbarbase.h"

namespace connectdialog {

class IDialogWindow;

/// Keeps which buttons there are and which can be pressed; a window shows them. The host's lock of toolbars is held
/// whenever the window lays them out.
class VCustomToolbar : public VCustomToolbarBase {
  public:
    /// Shows a button a command (0: a separator) as control `id` of the window. Requires: the window does not outlive
    /// this.
    void Create(IDialogWindow& window, int id, std::span<const int> commands);
    /// Shows nothing new any more: the window goes.
    void Detach() { window = nullptr; }
    /// A command that is not on the bar changes nothing.
    void EnableButton(int command, bool isEnabled);

    /// Shows or hides the bar's pane, with that size in pixels, and tells the edit sink.
    virtual void ShowPane(bool isShown, std::int32_t newWidth, std::int32_t newHeight);
    /// Those of the last ShowPane; 0 before.
    std::int32_t GetPaneWidth() const { return width; }
    std::int32_t GetPaneHeight() const { return height; }
    virtual void SetRecordedFlag() { isRecorded = true; }
    bool GetRecordedFlag() const { return isRecorded; }

  protected:
    /// What is shown when the pointer rests on the button: here that of the command in the menus of the process
    /// (VCustomMenuToolbar). False: nothing.
    virtual bool OnUserToolTip(int command, VUnicodeString& text) const;

  private:
    void Show();

    VToolbarState state;
    IDialogWindow* window = nullptr;
    int id = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool isRecorded = false;
};

}  // namespace connectdialog
