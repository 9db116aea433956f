// The page of the session options that lists every setting of the session.
#pragma once

#include "foundation/vunicodestring.h"
#include "suite/dialogkit/lists/optionlist.h"
#include "suite/sessionoptions/optionfield.h"

namespace connectdialog {

class ISessionConfig;
class VDialog;

/// A part of SessionOptionsDialog, in whose window its controls stand. A row is "name = value", with a star before it
/// once the setting is changed; the filter looks into names, the labels of other pages, and values. What is typed
/// counts at once where the setting takes it.
class AllSettingsPage {
  public:
    AllSettingsPage(VDialog& dialog, ISessionConfig& session);

    void Attach();
    /// Shows or hides the controls; what is listed is read anew.
    void Show(bool isShown);
    /// The user changed the filter or the value.
    void OnControlChanged(int id);
    /// Empties the secret that is chosen.
    void Forget();
    /// On failure: false with a sentence for the user; the focus is where the bad value stands.
    bool Take(VUnicodeString& refusal);

  private:
    bool Choose(const VProfileData* setting);
    void Fill();
    bool Fits(VProfileData& setting) const;
    VUnicodeString RowText(VProfileData& setting) const;
    void RefreshRow();
    void ShowEditor(VProfileData* setting);
    int GetEditor() const;

    VDialog& dialog;
    ISessionConfig& session;
    OptionList list;
    VProfileData* current = nullptr;
    OptionField field{FieldKind::kText, u"", u""};
};

}  // namespace connectdialog
