// Asks for the label of a desktop shortcut.
#pragma once

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

class ShortcutNameDialog : public VDialog {
  public:
    /// `sessionPath` is that of the session or folder, of the first one where there are several.
    ShortcutNameDialog(const VUnicodeString& sessionPath, bool multiple, VWindow* parent);

    /// The label, without blanks at its ends; after OK never empty.
    VUnicodeString GetShortcutName() const { return shortcutName; }

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;

  private:
    VUnicodeString shortcutName;
    VUnicodeString sessionPathText;
    VUnicodeString introText;
};

}  // namespace connectdialog
