// A dialog that leads the user through pages with Back, Next, Finish and Cancel.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "imports/dialogkit/vdialog.h"

namespace connectdialog {

/// A page of a sheet. Its number is that of its template.
class VPropertyPage : public VPluginDialog {
  public:
    /// An answer of OnWizardBack or OnWizardNext: the page is not left.
    static constexpr std::int64_t kStay = -1;
    /// The neighbour in the order in which the pages were added.
    static constexpr std::int64_t kNeighbour = 0;

    explicit VPropertyPage(const DialogTemplate& dialogTemplate)
        : VPluginDialog(dialogTemplate, nullptr), resourceId(static_cast<unsigned>(dialogTemplate.id)) {}

    /// A template of the library's resources.
    explicit VPropertyPage(unsigned resourceId)
        : VPluginDialog(static_cast<int>(resourceId), nullptr), resourceId(resourceId) {}

    unsigned GetResourceID() const { return resourceId; }
    void SetResourceID(unsigned id) { resourceId = id; }

    /// The page comes to show; its controls are there.
    virtual void OnSetActive() {}
    /// Whether the page may be left: its data are taken over.
    virtual bool OnKillActive() { return UpdateData(true); }
    /// The number of the page to go to, or one of the answers above.
    virtual std::int64_t OnWizardBack() { return kNeighbour; }
    virtual std::int64_t OnWizardNext() { return kNeighbour; }
    /// Whether the sheet may end.
    virtual bool OnWizardFinish() { return OnKillActive(); }

  private:
    unsigned resourceId;
};

/// Pages lie over the control `WizardIds::kPageArea` and are made when they first show, once the page before has given
/// its data. To one that cannot be made, or throws when it is made, the sheet does not go; when that is the first, it
/// does not show.
class VWizardSheet : public VDialog {
  public:
    /// What a sheet ends with when the user pressed Finish.
    static constexpr std::int64_t kFinished = 12325;
    /// What it ends with when there is nothing that it could show.
    static constexpr std::int64_t kNotShown = 0;

    /// `selectPage` is the index of the page that shows first; one that does not exist is the first.
    VWizardSheet(const DialogTemplate& dialogTemplate, VWindow* parent, unsigned selectPage)
        : VDialog(dialogTemplate, parent), firstPage(selectPage) {}

    /// Requires: the page outlives the sheet's window; added before that shows.
    void AddSheetPage(VPropertyPage& page) { pages.push_back(&page); }

  protected:
    /// Shows the first page, or ends.
    void OnInitDialog() override;
    bool OnCommand(int command) override;
    void OnDestroy() override;
    /// `page` could not be gone to; the page that shows stays. `isBack`: it was on the way back.
    virtual void OnPageNotMade(VPropertyPage& page, bool isBack);

  private:
    bool MakeWindow(VPropertyPage& page);
    bool Activate(VPropertyPage& page);
    /// Leaves the page for that with the number `answer`, or for the neighbour `step` pages on.
    void GoTo(std::int64_t answer, std::ptrdiff_t step);

    std::vector<VPropertyPage*> pages;
    VPropertyPage* active = nullptr;
    unsigned firstPage;
};

}  // namespace connectdialog
