// Letting the user pick a folder of the disk.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VWindow;

/// What the back end of the dialogs offers for it.
class IFolderBrowser {
  public:
    virtual ~IFolderBrowser() = default;
    /// Shows the folders from the desktop down under a title, with `path` selected where it is there. Only what is a
    /// folder of the disk can be chosen where the back end can tell; what is none leaves `path` empty. False when the
    /// user gave up, and then `path` stays. `owner` may be null.
    virtual bool Browse(VWindow* owner, const char16_t* title, VUnicodeString& path) = 0;
    /// Shows a warning with an OK button.
    virtual void Warn(VWindow* owner, const char16_t* text) = 0;
};

/// Installs the back end's, which stays the caller's; null removes it.
void InstallFolderBrowser(IFolderBrowser* browser);

/// Asks for a folder for application data; `path` is the one that is offered first and then the one that was chosen. An
/// item that is no folder of the disk is told, empties `path` and counts as an answer all the same. False when the user
/// gave up, or when there is no back end to ask with; `path` stays then.
bool VBrowseForFolder(VWindow* owner, VUnicodeString& path);

}  // namespace connectdialog
