// What the pages of the new session wizard have in common; plug-ins derive theirs from it.
#pragma once

#include "config/sessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "imports/dialogkit/vwizardsheet.h"

namespace connectdialog {

class NewSessionWizardBase;
class VStringArray;

class NewSessionWizardPage : public VPropertyPage {
  public:
    /// A page with a template of the library's resources; the number of the template is the page's. Requires: `config`
    /// is a SessionConfig; a reference is kept.
    NewSessionWizardPage(ISessionConfig* config, unsigned resourceId);
    /// A page with a template of the plug-in's own, which outlives it.
    NewSessionWizardPage(ISessionConfig* config, const DialogTemplate& dialogTemplate);

    /// Told when the page is added to a wizard, which outlives the use of the page.
    void SetWizard(NewSessionWizardBase* newWizard) { wizard = newWizard; }
    /// What went wrong when the page was made; code 0: nothing.
    virtual VReportMessageParams GetLastError() const { return VReportMessageParams(); }
    bool OnKillActive() override;
    std::int64_t OnWizardBack() override;

    /// Appends the names of the rows of the application kind, in row order, but for "None".
    static void PopulateProtocolArray(VStringArray& out, int kind);
    /// What the session may be called, free in its folder, and the description it has.
    void DoSetup(VUnicodeString& name, VUnicodeString& description);

  protected:
    SessionConfig& GetConfig() const { return *config; }
    NewSessionWizardBase& GetWizard() const { return *wizard; }
    /// Takes the data over and notes that Back comes here again. False when a datum was refused.
    bool LeaveForNext();

  private:
    VUnicodeString MakeUsableName(const VUnicodeString& suggestion) const;

    VRef<SessionConfig> config;
    NewSessionWizardBase* wizard = nullptr;
};

}  // namespace connectdialog
