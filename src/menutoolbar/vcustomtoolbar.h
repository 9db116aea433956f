// A toolbar of a dialog.
#pragma once

#include <span>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vtoolbarstate.h"

namespace connectdialog {

class IDialogWindow;

/// Keeps which buttons there are and which can be pressed; a window shows them. The host's lock of toolbars is held
/// whenever the window lays them out.
class VCustomToolbar {
  public:
    VCustomToolbar() = default;
    VCustomToolbar(const VCustomToolbar&) = delete;
    VCustomToolbar& operator=(const VCustomToolbar&) = delete;
    virtual ~VCustomToolbar() = default;

    /// Shows a button a command (0: a separator) as control `id` of the window. Requires: the window does not outlive
    /// this.
    void Create(IDialogWindow& window, int id, std::span<const int> commands);
    /// Shows nothing new any more: the window goes.
    void Detach() { window = nullptr; }
    /// A command that is not on the bar changes nothing.
    void EnableButton(int command, bool isEnabled);

  protected:
    /// What is shown when the pointer rests on the button. False: nothing.
    virtual bool OnUserToolTip(int command, VUnicodeString& text) const = 0;

  private:
    void Show();

    VToolbarState state;
    IDialogWindow* window = nullptr;
    int id = 0;
};

}  // namespace connectdialog
