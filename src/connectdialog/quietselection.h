// Letting the enable rules wait while a command works.
#pragma once

#include "connectdialog/connectdialogbase.h"

namespace connectdialog {

class ConnectDialogBase::QuietSelection {
  public:
    explicit QuietSelection(ConnectDialogBase& dialog) : dialog(dialog) { ++dialog.quietDepth; }
    ~QuietSelection() {
        if (--dialog.quietDepth == 0 && dialog.enableRulesWait) dialog.OnSelectionChanged();
    }
    QuietSelection(const QuietSelection&) = delete;
    QuietSelection& operator=(const QuietSelection&) = delete;

  private:
    ConnectDialogBase& dialog;
};

}  // namespace connectdialog
