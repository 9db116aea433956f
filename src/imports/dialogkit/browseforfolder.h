// Letting the user pick a folder of the disk.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VWindow;

/// Asks for a folder for application data; `path` is the one that is offered first and then the one that was chosen. An
/// item that is no folder of the disk is told, empties `path` and counts as an answer all the same. False when the user
/// gave up, or when there is no back end to ask with; `path` stays then.
bool VBrowseForFolder(VWindow* owner, VUnicodeString& path);

}  // namespace connectdialog
