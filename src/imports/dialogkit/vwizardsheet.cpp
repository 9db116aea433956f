#include "imports/dialogkit/vwizardsheet.h"

#include <algorithm>
#include <utility>

#include "resources/dialogids.h"

namespace connectdialog {

void VWizardSheet::OnInitDialog() {
    VDialog::OnInitDialog();
    VPropertyPage* const first = pages.empty() ? nullptr : pages[firstPage < pages.size() ? firstPage : 0];
    if (first == nullptr || !MakeWindow(*first) || !Activate(*first)) EndDialog(kNotShown);
}

bool VWizardSheet::MakeWindow(VPropertyPage& page) {
    return page.GetWindow() != nullptr ||
           page.CreatePage(*this, GetWindow()->GetRectangle(WizardIds::kPageArea), kNoId);
}

bool VWizardSheet::Activate(VPropertyPage& page) {
    VPropertyPage* const former = std::exchange(active, &page);
    try {
        page.OnSetActive();
    } catch (...) {
        // Its controls are filled here: a plug-in's failure is no reason to lose the sheet.
        active = former;
        return false;
    }
    if (former != nullptr) former->ShowPage(false);
    page.ShowPage(true);
    page.FocusFirstControl();
    return true;
}

void VWizardSheet::GoTo(std::int64_t answer, std::ptrdiff_t step) {
    if (answer == VPropertyPage::kStay) return;
    const auto from = std::find(pages.begin(), pages.end(), active);
    auto to = std::find_if(pages.begin(), pages.end(),
                           [&](const VPropertyPage* page) { return page->GetResourceID() == answer; });
    if (answer == VPropertyPage::kNeighbour) {
        const std::ptrdiff_t place = from - pages.begin() + step;
        to = place >= 0 && place < std::ssize(pages) ? pages.begin() + place : pages.end();
    }
    if (to == pages.end() || to == from || !active->OnKillActive()) return;
    if (MakeWindow(**to) && Activate(**to)) return;
    active->OnSetActive();
    OnPageNotMade(**to, step < 0);
}

void VWizardSheet::OnPageNotMade(VPropertyPage&, bool) {}

bool VWizardSheet::OnCommand(int command) {
    if (active == nullptr) return VDialog::OnCommand(command);
    switch (command) {
        case WizardIds::kBack:
            GoTo(active->OnWizardBack(), -1);
            return true;
        case WizardIds::kNext:
            GoTo(active->OnWizardNext(), 1);
            return true;
        case WizardIds::kFinish:
            if (active->OnWizardFinish()) EndDialog(kFinished);
            return true;
        default:
            return VDialog::OnCommand(command);
    }
}

void VWizardSheet::OnDestroy() {
    for (VPropertyPage* page : pages) page->Destroy();
    active = nullptr;
}

}  // namespace connectdialog
