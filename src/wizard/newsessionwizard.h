// The new session wizard: a sheet of pages that sets a new session up.
#pragma once

#include "wizard/newsessionwizardbase.h"
#include "wizard/newsessionwizardpages.h"

namespace connectdialog {

class NewSessionWizard : public VWizardSheet, public NewSessionWizardBase {
  public:
    /// Requires: `config` is a SessionConfig that is in no store yet; its path is the folder where it will stand, and
    /// its name the one that is offered. `applicationKind` is an AppKind; `parent` may be null. `selectPage` is the
    /// index of the first page.
    NewSessionWizard(ISessionConfig* config, int applicationKind, VWindow* parent, unsigned selectPage);

    /// kFinished, and then `config` has what the user chose; any other result is Cancel, and `config` is of no use.
    std::int64_t DoModal();

    int GetFinishPageID() override { return static_cast<int>(finish.GetResourceID()); }
    int GetTransferPageID() override { return static_cast<int>(transfer.GetResourceID()); }
    void SetButtons(unsigned mask, unsigned enabled) override;
    void AddPage(NewSessionWizardPage* page, int& id) override;

  protected:
    void OnInitDialog() override;
    void OnPageNotMade(VPropertyPage& page, bool isBack) override;

  private:
    NewSessionWizardProtocolSinglePage single;
    NewSessionWizardTerminalPage terminal;
    NewSessionWizardTransferPage transfer;
    NewSessionWizardFinishPage finish;
    bool hasPages = false;
};

/// Runs the wizard over a new session for the running application. False when `config` is none that it can set up or
/// the back end has no pages, and nothing was shown. `useWizard` is false when the user wants no wizard for sessions to
/// come.
bool LaunchNewSessionWizard(ISessionConfig& config, VWindow* parent, std::int64_t& result, bool& useWizard);

}  // namespace connectdialog
