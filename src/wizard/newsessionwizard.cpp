#include "wizard/newsessionwizard.h"

#include <utility>

#include "imports/configpanels.h"
#include "imports/protocolpagefault.h"
#include "resources/connectiontemplates.h"

namespace connectdialog {

namespace {

struct ButtonBit {
    int id;
    unsigned bit;
};
constexpr ButtonBit kButtons[] = {
    {WizardIds::kBack, kWizardBack}, {WizardIds::kNext, kWizardNext}, {WizardIds::kFinish, kWizardFinish}};

}  // namespace

NewSessionWizard::NewSessionWizard(ISessionConfig* config, int applicationKind, VWindow* parent, unsigned selectPage)
    : VWizardSheet(kWizardSheetTemplate, parent, selectPage),
      NewSessionWizardBase(config, applicationKind),
      single(config, applicationKind),
      terminal(config),
      transfer(config),
      finish(config) {}

std::int64_t NewSessionWizard::DoModal() {
    if (!std::exchange(hasPages, true)) InitPages(single, terminal, transfer, finish);
    // A run begins without a way back.
    while (GetPreviousID() != 0) continue;
    return VWizardSheet::DoModal();
}

void NewSessionWizard::OnInitDialog() {
    // Finish has a place of its own beside Next, where Cancel stood, and Cancel that of the help that there is none of.
    ShowControl(WizardIds::kHelp, false);
    const VRectangle cancel = GetWindow()->GetRectangle(kIdCancel);
    GetWindow()->SetRectangle(kIdCancel, GetWindow()->GetRectangle(WizardIds::kHelp));
    GetWindow()->SetRectangle(WizardIds::kFinish, cancel);
    VWizardSheet::OnInitDialog();
}

void NewSessionWizard::OnPageNotMade(VPropertyPage& page, bool isBack) {
    if (isBack) SetPreviousID(page.GetResourceID());
    TellNoProtocolPage(this, GetProtocolOf(page));
}

void NewSessionWizard::SetButtons(unsigned mask, unsigned enabled) {
    for (const ButtonBit& button : kButtons) {
        const bool isShown = (mask & button.bit) != 0;
        ShowControl(button.id, isShown);
        EnableControl(button.id, isShown && (enabled & button.bit) != 0);
    }
}

void NewSessionWizard::AddPage(NewSessionWizardPage* page, int& id) {
    AddSheetPage(*page);
    id = static_cast<int>(page->GetResourceID());
}

bool LaunchNewSessionWizard(ISessionConfig& config, VWindow* parent, std::int64_t& result, bool& useWizard) {
    if (dynamic_cast<SessionConfig*>(&config) == nullptr) return false;
    NewSessionWizard wizard(&config, static_cast<int>(GetCurrentAppProductID()), parent, 0);
    result = wizard.DoModal();
    useWizard = wizard.GetUseWizard();
    return result != VWizardSheet::kNotShown;
}

}  // namespace connectdialog
