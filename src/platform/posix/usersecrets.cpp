#include "platform/usersecrets.h"

#include <algorithm>
#include <list>
#include <mutex>
#include <sodium.h>

#include "platform/lasterror.h"
#include "platform/posix/secretservice.h"
#include "platform/posix/userkey.h"

namespace connectdialog::platform {

namespace {

// A blob: four letters and the key's id, both authenticated; the nonce; the cipher text with its tag.
constexpr std::array<std::uint8_t, 4> kMark = {'C', 'D', 'U', '1'};
constexpr std::size_t kHeadSize = kMark.size() + std::tuple_size_v<UserKeyId>;
constexpr std::size_t kNonceSize = crypto_aead_xchacha20poly1305_ietf_NPUBBYTES;
constexpr std::size_t kTagSize = crypto_aead_xchacha20poly1305_ietf_ABYTES;
constexpr std::size_t kOverhead = kHeadSize + kNonceSize + kTagSize;
static_assert(crypto_aead_xchacha20poly1305_ietf_KEYBYTES == UserKey::kSize);

/// The keys that this process has read with. They are kept: a service takes milliseconds for an answer.
class KeyRing {
  public:
    const UserKey* Find(const UserKeyId& id) {
        const std::lock_guard lock(mutex);
        const auto found =
            std::find_if(keys.begin(), keys.end(), [&](const UserKey& key) { return key.GetId() == id; });
        return found != keys.end() ? &*found : nullptr;
    }
    const UserKey* Add(UserKey key) {
        const std::lock_guard lock(mutex);
        return &keys.emplace_back(std::move(key));
    }

  private:
    std::mutex mutex;
    std::list<UserKey> keys;
};

/// Never destroyed: settings may be read until the process ends.
KeyRing& Ring() {
    static KeyRing& ring = *new KeyRing();
    return ring;
}

/// Null with the last error set.
const UserKey* FindKey(const UserKeyId& id) {
    if (const UserKey* known = Ring().Find(id)) return known;
    UserKey key;
    std::uint32_t fileError = kKeyNotThere;
    if (ReadKeyFile(key)) {
        if (key.GetId() == id) return Ring().Add(std::move(key));
    } else if (GetLastErrorCode() != kFileNotFound && GetLastErrorCode() != kPathNotFound) {
        fileError = GetLastErrorCode();
    }
    switch (FindServiceKey(id, key)) {
        case ServiceAnswer::kKey:
            return Ring().Add(std::move(key));
        case ServiceAnswer::kLocked:
            SetLastErrorCode(kAccessDenied);
            break;
        case ServiceAnswer::kTimeout:
            SetLastErrorCode(kTimeout);
            break;
        default:
            SetLastErrorCode(fileError);
    }
    return nullptr;
}

}  // namespace

bool ProtectForUser(const void* data, std::size_t size, std::vector<std::uint8_t>& blob) {
    blob.clear();
    if (!InitUserKeys()) return false;
    // Asked anew each time and not taken from the ring: what is protected with a key that was deleted meanwhile would
    // be lost.
    UserKey key;
    if (GetServiceKey(key) != ServiceAnswer::kKey && !ReadOrMakeKeyFile(key)) return false;
    blob.resize(size + kOverhead);
    const UserKeyId id = key.GetId();
    std::ranges::copy(id, std::ranges::copy(kMark, blob.begin()).out);
    std::uint8_t* nonce = blob.data() + kHeadSize;
    randombytes_buf(nonce, kNonceSize);
    crypto_aead_xchacha20poly1305_ietf_encrypt(nonce + kNonceSize, nullptr, static_cast<const std::uint8_t*>(data),
                                               size, blob.data(), kHeadSize, nullptr, nonce, key.GetData());
    return true;
}

bool UnprotectForUser(const std::uint8_t* blob, std::size_t blobSize, std::uint8_t* data, std::size_t& size) {
    if (!InitUserKeys()) return false;
    if (blobSize < kOverhead || !std::equal(kMark.begin(), kMark.end(), blob)) return FailWith(kInvalidData);
    UserKeyId id;
    std::copy_n(blob + kMark.size(), id.size(), id.begin());
    const UserKey* key = FindKey(id);
    if (key == nullptr) return false;
    const std::uint8_t* nonce = blob + kHeadSize;
    unsigned long long written = 0;
    const int result = crypto_aead_xchacha20poly1305_ietf_decrypt(data, &written, nullptr, nonce + kNonceSize,
                                                                  blobSize - kHeadSize - kNonceSize, blob, kHeadSize,
                                                                  nonce, key->GetData());
    size = static_cast<std::size_t>(written);
    return result == 0 || FailWith(kInvalidData);
}

}  // namespace connectdialog::platform
