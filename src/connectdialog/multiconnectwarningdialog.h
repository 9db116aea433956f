// Asks before many sessions are opened at once.
#pragma once

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

/// More sessions than this are opened only after asking.
inline constexpr int kMultiConnectLimit = 20;

class MultiConnectWarningDialog : public VDialog {
  public:
    /// On OK, `suppressed` is whether the user wants no such warning any more; on Cancel it stays. It must outlive the
    /// dialog.
    MultiConnectWarningDialog(bool& suppressed, VWindow* parent);

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;

  private:
    bool dontShowAgain = false;
    bool& suppressValue;
    int limit = kMultiConnectLimit;
};

}  // namespace connectdialog
