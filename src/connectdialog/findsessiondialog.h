// Asks what to look for in the session tree.
#pragma once

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

/// A text to look for, and where.
struct FindQuery {
    VUnicodeString text;
    bool inSessionNames = true;
    bool inFolderNames = true;
    bool inDescriptions = true;
    bool inHostnames = true;
    bool matchCase = false;
};

class FindSessionDialog : public VDialog {
  public:
    /// Begins with `remembered`.
    FindSessionDialog(const FindQuery& remembered, VWindow* parent);

    /// After OK: a text that is not empty, and at least one place to look in.
    const FindQuery& GetQuery() const { return query; }

  protected:
    void OnInitDialog() override;
    void DoDataExchange(VDataExchange& exchange) override;
    bool OnCommand(int command) override;
    void OnControlChanged(int id) override;

  private:
    void EnableOk();

    FindQuery query;
};

}  // namespace connectdialog
