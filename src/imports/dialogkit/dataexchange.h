// Moving a dialog's data between its members and its controls.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class IDialogWindow;

/// One pass over the data of a dialog, in one direction. Once a datum is refused, the rest of the pass does nothing.
class VDataExchange {
  public:
    VDataExchange(IDialogWindow& window, bool save) : window(window), save(save) {}

    /// True when the controls' data goes to the members.
    bool IsSaving() const { return save && !refused; }
    /// Keeps the dialog open, with the focus on the control whose datum was bad.
    void Refuse(int id);
    bool IsRefused() const { return refused; }
    IDialogWindow& GetWindow() const { return window; }

  private:
    IDialogWindow& window;
    bool save;
    bool refused = false;
};

// The names are the toolkit's own of old.
// NOLINTBEGIN(readability-identifier-naming)
void DDX_Text(VDataExchange& exchange, int id, VUnicodeString& text);
void DDX_Check(VDataExchange& exchange, int id, bool& isChecked);
// NOLINTEND(readability-identifier-naming)

}  // namespace connectdialog
