#include "stores/userstore.h"

#include <filesystem>
#include <string>

#include "foundation/textchecks.h"
#include "foundation/vfile.h"
#include "foundation/vpath.h"
#include "foundation/vreportmessageparams.h"
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

/// What the user chose.
struct Choice {
    VUnicodeString folder;    ///< empty: none, or none that can be used
    std::uint32_t fault = 0;  ///< why, where the file that should tell it is there
};

Choice ReadChoice(const VUnicodeString& path) {
    VFile file;
    file.SetShareMode(platform::kShareRead | platform::kShareWrite);
    if (path.IsEmpty()) return {};
    std::string text(kLongestPath + 1, '\0');
    std::size_t length = 0;
    if (!file.Open(path, platform::kGenericRead, platform::kOpenExisting) ||
        !file.Read(text.data(), text.size(), length)) {
        const std::uint32_t fault = platform::GetLastErrorCode();
        const bool isAbsent = fault == platform::kFileNotFound || fault == platform::kPathNotFound;
        return {{}, isAbsent ? 0 : fault};
    }
    text.resize(length);
    if (text.ends_with('\n')) text.pop_back();
    const VUnicodeString folder(platform::FromNativePath(text));
    if (length > kLongestPath || !CanBeStoreFolder(folder)) return {{}, platform::kInvalidData};
    return {folder, 0};
}
Choice ReadChoice() {
    return ReadChoice(VGetConfigurationPath(kChoiceFile));
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
    VUnicodeString folder = ReadChoice().folder;
    if (folder.IsEmpty()) folder = GetUsualStoreFolder();
    if (folder.IsEmpty()) return u"sqlite:"_v;  // a user without a home: refused when it is opened, for want of a path
    return VUnicodeString(u"sqlite:" + platform::ToWide(NativeStoreFile(folder)));
}

bool CheckDefaultStore(VReportMessageParams& report) {
    if (!GetUrlFromEnvironment().IsEmpty()) return true;
    const VUnicodeString path = VGetConfigurationPath(kChoiceFile);
    const Choice choice = ReadChoice(path);
    if (choice.fault != 0) {
        report.Fail(choice.fault);
        report.AddInsert(platform::ToWide(platform::ToNativePath(path)).c_str());
        return false;
    }
    if (choice.folder.IsEmpty()) return true;
    const std::string folder = platform::ToNativePath(choice.folder);
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) return true;
    report.Fail(platform::kPathNotFound);
    report.AddInsert(platform::ToWide(folder).c_str());
    return false;
}

bool IsDefaultStoreKnown() {
    const Choice choice = ReadChoice();
    if (!GetUrlFromEnvironment().IsEmpty() || !choice.folder.IsEmpty() || choice.fault != 0) return true;
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
