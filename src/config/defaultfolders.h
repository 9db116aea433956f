// Where files go that a session sends or receives, unless the user says otherwise.
#pragma once

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// The user's home folder; failing that, places that a portable installation or the system gives. Looked up once.
VUnicodeString GetDefaultUploadFolder();
/// The user's downloads folder, or the same.
VUnicodeString GetDefaultDownloadFolder();

}  // namespace connectdialog
