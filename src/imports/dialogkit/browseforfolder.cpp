#include "imports/dialogkit/browseforfolder.h"

namespace connectdialog {

namespace {
constexpr char16_t kTitle[] = u"Select a folder for storing application data:";
constexpr char16_t kNoPath[] = u"Failed to retrieve a valid path.";

IFolderBrowser* installed = nullptr;
}  // namespace

void InstallFolderBrowser(IFolderBrowser* browser) {
    installed = browser;
}

bool VBrowseForFolder(VWindow* owner, VUnicodeString& path) {
    if (installed == nullptr || !installed->Browse(owner, kTitle, path)) return false;
    if (path.IsEmpty()) installed->Warn(owner, kNoPath);
    return true;
}

}  // namespace connectdialog
