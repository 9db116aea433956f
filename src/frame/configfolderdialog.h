// Asks on the first run where the configuration data shall live.
#pragma once

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

class VIcon;

/// Cancel means that the application ends. The folder is made when the user accepts it; one that cannot be made or
/// written to is told, and the dialog stays.
class ConfigFolderDialog : public VDialog {
  public:
    /// `initialPath` is offered at first; `icon` may be null and outlives the dialog.
    ConfigFolderDialog(VUnicodeString initialPath, const VIcon* icon, VWindow* parent);

    /// The folder, after the dialog was accepted.
    const VUnicodeString& GetPath() const { return path; }

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;
    bool OnCommand(int command) override;

  private:
    const VIcon* icon;
    VUnicodeString path;
    VUnicodeString appName;
};

}  // namespace connectdialog
