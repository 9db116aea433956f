#include "config/defaultfolders.h"

#include "foundation/venvironment.h"
#include "foundation/vpath.h"
#include "platform/knownfolders.h"

namespace connectdialog {

namespace {

/// `known` when the system has it, else the first of the fallbacks that there is.
VUnicodeString FindFolder(platform::KnownFolder known, const char16_t* leaf) {
    VUnicodeString folder(platform::GetKnownFolder(known));
    if (!folder.IsEmpty()) return folder;
    if (VIsPortableInstall()) return VJoinPath(u"%u3doc%", leaf);
    if (VGetDocumentsFolder(folder)) return folder;
    return VJoinPath(VGetModuleFolder().GetData(), leaf);
}

}  // namespace

VUnicodeString GetDefaultUploadFolder() {
    static const VUnicodeString folder = FindFolder(platform::KnownFolder::kHome, u"upload");
    return folder;
}

VUnicodeString GetDefaultDownloadFolder() {
    static const VUnicodeString folder = FindFolder(platform::KnownFolder::kDownloads, u"download");
    return folder;
}

}  // namespace connectdialog
