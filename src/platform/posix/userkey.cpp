#include "platform/posix/userkey.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <sodium.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/posix/nativefile.h"
#include "platform/posix/runtimefile.h"
#include "platform/userfiles.h"

namespace connectdialog::platform {

namespace {

constexpr std::u16string_view kFileName = u"\\user.key";

std::string KeyFilePath() {
    const std::u16string folder = GetKnownFolder(KnownFolder::kData);
    return folder.empty() ? std::string() : ToNativePath(folder + std::u16string(kFileName));
}

bool ReadWhole(int file, UserKey& key) {
    struct stat info {};
    if (fstat(file, &info) != 0) return FailFromErrno();
    if (info.st_size != static_cast<off_t>(UserKey::kSize)) return FailWith(kInvalidData);
    std::size_t done = 0;
    if (!ReadFromFile(file, key.GetData(), UserKey::kSize, done)) return false;
    return done == UserKey::kSize || FailWith(kInvalidData);
}

bool ReadKeyFile(const std::string& path, UserKey& key) {
    if (path.empty()) return FailWith(kPathNotFound);
    const int file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return FailFromErrno();
    const bool isRead = IsPrivateFile(file) && ReadWhole(file, key);
    close(file);
    return isRead;
}

/// Gives a complete file its name, which must be free: a reader sees the whole key or no file.
bool PublishKey(const std::string& draft, int file, const std::string& path, const UserKey& key) {
    if (!WriteToFile(file, key.GetData(), UserKey::kSize)) return false;
    if (fsync(file) != 0 || link(draft.c_str(), path.c_str()) != 0) return FailFromErrno();
    return true;
}

bool MakeKeyFile(const std::string& path) {
    const std::string folder = FolderOf(path);
    if (!CreateUserFolder(FromNativePath(folder))) return false;
    UserKey key;
    key.FillWithRandom();
    std::string draft = path + ".XXXXXX";
    const int file = mkostemp(draft.data(), O_CLOEXEC);  // made 0600
    if (file < 0) return FailFromErrno();
    const bool isPublished = PublishKey(draft, file, path, key);
    const std::uint32_t error = GetLastErrorCode();
    close(file);
    unlink(draft.c_str());
    if (isPublished) return SyncFolder(folder);
    // Another process was faster: its key counts.
    return error == ErrorFromErrno(EEXIST) || FailWith(error);
}

}  // namespace

void UserKey::Free::operator()(std::uint8_t* block) const {
    sodium_free(block);
}

UserKey::UserKey() : bytes(static_cast<std::uint8_t*>(sodium_malloc(kSize))) {
    if (!bytes) throw std::bad_alloc();
    sodium_memzero(bytes.get(), kSize);
}

void UserKey::FillWithRandom() {
    randombytes_buf(bytes.get(), kSize);
}

UserKeyId UserKey::GetId() const {
    static constexpr unsigned char kPurpose[] = "identity of a user key";
    UserKeyId id{};
    crypto_generichash(id.data(), id.size(), kPurpose, sizeof kPurpose, bytes.get(), kSize);
    return id;
}

bool InitUserKeys() {
    static const bool isReady = sodium_init() >= 0;
    return isReady || FailWith(kGeneralFailure);
}

bool ReadKeyFile(UserKey& key) {
    return ReadKeyFile(KeyFilePath(), key);
}

bool ReadOrMakeKeyFile(UserKey& key) {
    const std::string path = KeyFilePath();
    if (ReadKeyFile(path, key)) return true;
    const std::uint32_t error = GetLastErrorCode();
    const bool isMissing = !path.empty() && (error == kFileNotFound || error == kPathNotFound);
    return isMissing && MakeKeyFile(path) && ReadKeyFile(path, key);
}

}  // namespace connectdialog::platform
