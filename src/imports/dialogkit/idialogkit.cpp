#include "imports/dialogkit/idialogkit.h"

#include "imports/dialogkit/iframewindow.h"

namespace connectdialog {

namespace {
IDialogKit* installed = nullptr;
}  // namespace

std::unique_ptr<IFrameWindow> IDialogKit::CreateFrameWindow(IFrameEvents&) {
    return nullptr;
}

void InstallDialogKit(IDialogKit* kit) {
    installed = kit;
}
IDialogKit* GetDialogKit() {
    return installed;
}

}  // namespace connectdialog
