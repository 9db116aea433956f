#include "imports/dialogkit/idialogkit.h"

namespace connectdialog {

namespace {
IDialogKit* installed = nullptr;
}  // namespace

void InstallDialogKit(IDialogKit* kit) {
    installed = kit;
}
IDialogKit* GetDialogKit() {
    return installed;
}

}  // namespace connectdialog
