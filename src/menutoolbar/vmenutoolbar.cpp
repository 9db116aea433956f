#include "menutoolbar/vmenutoolbar.h"

namespace connectdialog {

void BuildMenuToolbar(const VMenuToolbar& block, IMenuToolbarBuilder& builder) {
    for (const MenuEntryPtr<VMenuToolbarItem>& item : block.GetItems()) {
        // Not by type: a toolbar may have a plain item with the number of popups.
        if (const auto* popup = dynamic_cast<const VMenuToolbar*>(item.get())) {
            VUnicodeString label;
            popup->GetText(label);
            builder.BeginPopup(label);
            BuildMenuToolbar(*popup, builder);
            builder.EndPopup();
        } else if (item->GetType() == kMenuTypeSeparator) {
            builder.AddSeparator();
        } else {
            builder.AddItem(*item);
        }
    }
}

}  // namespace connectdialog
