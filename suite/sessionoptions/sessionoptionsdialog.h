// The window of the session options.
#pragma once

#include <vector>

#include "config/isessionconfig.h"
#include "imports/dialogkit/vdialog.h"
#include "suite/dialogkit/lists/optionlist.h"
#include "suite/sessionoptions/allsettingspage.h"
#include "suite/sessionoptions/optiontemplate.h"

namespace connectdialog {

/// Edits a copy of the session, which the caller takes over when the dialog was accepted. Fields whose setting the
/// session does not have (those of other protocols) are not shown.
class SessionOptionsDialog : public VDialog {
  public:
    /// Requires: `session` outlives the dialog.
    SessionOptionsDialog(ISessionConfig& session, const VUnicodeString& firstPage, bool isMulti, bool isNew,
                         VWindow* parent);

    /// The page that is shown, as the global settings remember it: with a "+" where pages stand below it.
    VUnicodeString GetPagePath() const;

  protected:
    void OnInitDialog() override;
    bool OnCommand(int command) override;
    void OnControlChanged(int id) override;
    void OnOK() override;

  private:
    struct Field : OptionControl {
        bool isShown;
    };

    void ListPages();
    bool ChoosePage(const OptionPage& chosen);
    void ShowPage();
    /// Shows the fields that the session has, under each other, and fills those that were not shown.
    void LayOutFields();
    void Place(const Field& field, std::int16_t top);
    void Fill(const Field& field, VProfileData* setting);
    VProfileData* FindSettingOf(const Field& field) const;
    VUnicodeString GetShown(const Field& field) const;
    /// Takes over what stands on the page; false when something was refused, which was told then.
    bool TakePage();
    bool TakeName(const Field& field);
    void TakeProtocol(const Field& choice);
    bool IsAllSettings() const { return page->fields.empty(); }

    ISessionConfig& session;
    const OptionPage* page;
    bool isMulti;
    bool isNew;
    std::vector<Field> fields;
    OptionList pages;
    AllSettingsPage allSettings;
};

}  // namespace connectdialog
