// The pages of the protocols: one class for quick connect and one for the new session wizard, over a table of fields.
#pragma once

#include "imports/dialogkit/vdialog.h"
#include "suite/protocols/pagefields.h"
#include "wizard/newsessionwizardpage.h"

namespace connectdialog {

class ProtocolConfig;

/// The fields of one page in its dialog.
class ProtocolPageFields {
  public:
    /// Requires: both outlive it.
    ProtocolPageFields(VDialog& dialog, const ProtocolPage& page) : dialog(dialog), page(page) {}

    /// The session's settings that the page edits; null when the protocol that is selected there is not the page's.
    ProtocolConfig* FindConfig(ISessionConfig& session) const;
    /// Fills the combo boxes.
    void Attach();
    /// Moves the data. What a client would not take is refused with a message that names the field; an empty field is
    /// no fault.
    void Exchange(VDataExchange& exchange, ProtocolConfig& config);
    /// Takes over at once what decides whether the settings are complete. True when that was it.
    bool TakeTyped(int id, ProtocolConfig& config);

  private:
    const PageField* FindField(int id) const;
    void Show(IDialogWindow& window, int id, const PageField& field, ProtocolConfig& config);
    /// False when it was refused; `refusal` then tells why.
    bool Take(const IDialogWindow& window, int id, const PageField& field, ProtocolConfig& config,
              VUnicodeString& refusal);

    VDialog& dialog;
    const ProtocolPage& page;
};

/// A number of decimal digits alone, at most `most`. Blanks at the ends do not count. On failure: false, `number`
/// stays.
bool ReadPageNumber(const VUnicodeString& text, int least, int most, int& number);

/// Why a field was refused, for the user. `label` is the field's.
VUnicodeString WordPageFault(LaunchFault fault, std::u16string_view label);

/// The factories of the protocol table; null where the protocol has no page.
using MakeWizardPage = NewSessionWizardPage* (*)(ISessionConfig* config);
MakeWizardPage FindWizardPageMaker(std::u16string_view protocol);
void DestroyWizardPage(NewSessionWizardPage* page);
/// The page of the protocol that is selected in the session on the side of the running application; null where it has
/// none.
VPluginDialog* MakeQuickPage(VWindow* parent, ISessionConfig* config);

}  // namespace connectdialog
