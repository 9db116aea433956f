// Asks what to look for in the session tree.
#pragma once

#include "imports/dialogkit/vdialog.h"
#include "sessiondb/entrysearch.h"

namespace connectdialog {

class FindSessionDialog : public VDialog {
  public:
    /// Begins with `remembered`.
    FindSessionDialog(const FindOptions& remembered, VWindow* parent);

    /// After OK: a text that is not empty, and at least one place to look in.
    const FindOptions& GetOptions() const { return options; }

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;
    bool OnCommand(int command) override;
    void OnControlChanged(int id) override;

  private:
    void EnableOk();

    FindOptions options;
};

}  // namespace connectdialog
