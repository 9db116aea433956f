#include "stores/userstore.h"

#include <filesystem>
#include <string>

#include "foundation/textchecks.h"
#include "foundation/vfile.h"
#include "foundation/vpath.h"
#include "platform/codepage.h"
#include "platform/environment.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/userfiles.h"

namespace connectdialog::stores {

namespace {

constexpr char16_t kStoreFile[] = u"sessions.db";
constexpr char16_t kChoiceFile[] = u"store-folder";
/// The system takes no longer paths.
constexpr std::size_t kLongestPath = 4096;

VUnicodeString GetUrlFromEnvironment() {
    std::u16string url;
    return platform::GetEnvironmentText(u"BRENNMARK_STORE", url) ? VUnicodeString(url) : VUnicodeString();
}

bool CanBeStoreFolder(const VUnicodeString& folder) {
    return !folder.IsEmpty() && folder[0] == u'\\' && !HasControl(folder);
}

/// The folder that was chosen; empty when none was. A file with anything else in it chooses nothing.
VUnicodeString GetChosenFolder() {
    const VUnicodeString choice = VGetConfigurationPath(kChoiceFile);
    VFile file;
    file.SetShareMode(platform::kShareRead | platform::kShareWrite);
    if (choice.IsEmpty() || !file.Open(choice, platform::kGenericRead, platform::kOpenExisting)) return {};
    std::string text(kLongestPath + 1, '\0');
    std::size_t length = 0;
    if (!file.Read(text.data(), text.size(), length) || length > kLongestPath) return {};
    text.resize(length);
    if (text.ends_with('\n')) text.pop_back();
    const VUnicodeString folder(platform::FromNativePath(text));
    return CanBeStoreFolder(folder) ? folder : VUnicodeString();
}

std::string NativeStoreFile(const VUnicodeString& folder) {
    return platform::ToNativePath(VJoinPath(folder.GetData(), kStoreFile));
}

}  // namespace

VUnicodeString GetUsualStoreFolder() {
    return VUnicodeString(platform::GetKnownFolder(platform::KnownFolder::kData));
}

VUnicodeString GetDefaultStoreUrl() {
    VUnicodeString told = GetUrlFromEnvironment();
    if (!told.IsEmpty()) return told;
    VUnicodeString folder = GetChosenFolder();
    if (folder.IsEmpty()) folder = GetUsualStoreFolder();
    if (folder.IsEmpty()) return u"sqlite:"_v;  // a user without a home: refused when it is opened, for want of a path
    return VUnicodeString(u"sqlite:" + platform::ToWide(NativeStoreFile(folder)));
}

bool IsDefaultStoreKnown() {
    if (!GetUrlFromEnvironment().IsEmpty() || !GetChosenFolder().IsEmpty()) return true;
    const VUnicodeString usual = GetUsualStoreFolder();
    if (usual.IsEmpty()) return false;
    std::error_code error;
    // Whatever stands there, or keeps us from seeing it, is told by who opens it.
    const std::filesystem::file_status status = std::filesystem::symlink_status(NativeStoreFile(usual), error);
    return status.type() != std::filesystem::file_type::not_found;
}

bool ChooseStoreFolder(const VUnicodeString& folder) {
    const std::string path = platform::ToNativePath(folder);
    if (!CanBeStoreFolder(folder) || path.size() > kLongestPath) {
        platform::SetLastErrorCode(platform::kInvalidParameter);
        return false;
    }
    const VUnicodeString choice = VGetConfigurationPath(kChoiceFile);
    return !choice.IsEmpty() &&
           platform::CreateUserFolder(platform::GetKnownFolder(platform::KnownFolder::kConfiguration)) &&
           platform::ReplaceFileWith(choice, path + '\n');
}

}  // namespace connectdialog::stores
