// The strip of command buttons at the top of the connect dialog.
#pragma once

#include <cstdint>

#include "menutoolbar/vcustomtoolbar.h"

namespace connectdialog {

/// Sends the commands of the menus and keys; it has none of its own.
class ConnectToolbar : public VCustomToolbar {
  public:
    ConnectToolbar();

    int GetId() const { return toolbarId; }
    /// Shows it in the window; in browse mode without the buttons that connect.
    void CreateBar(IDialogWindow& window, bool browseMode);
    /// The width that the window needs for it, pixels; 0 before CreateBar.
    std::int32_t GetMinBarWidth() const { return minBarWidth; }

  protected:
    bool OnUserToolTip(int command, VUnicodeString& text) const override;

  private:
    int toolbarId;
    std::int32_t minBarWidth = 0;
};

}  // namespace connectdialog
