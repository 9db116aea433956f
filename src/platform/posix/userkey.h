// A key that protects a user's secrets.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace connectdialog::platform {

/// Tells keys apart and tells nothing about them.
using UserKeyId = std::array<std::uint8_t, 16>;

/// 32 bytes in memory that is kept out of swap where the system permits, and wiped. Empty when it was moved from.
class UserKey {
  public:
    static constexpr std::size_t kSize = 32;

    /// All zero. Throws std::bad_alloc.
    UserKey();

    std::uint8_t* GetData() { return bytes.get(); }
    const std::uint8_t* GetData() const { return bytes.get(); }
    void FillWithRandom();
    UserKeyId GetId() const;

  private:
    struct Free {
        void operator()(std::uint8_t* block) const;
    };
    std::unique_ptr<std::uint8_t[], Free> bytes;
};

/// Readies the cryptographic library. On failure: false with the last error set.
bool InitUserKeys();

/// The key file of the user. A file that is a link, belongs to or is open to others, or has another size than a key is
/// never used and never replaced.
/// On failure: false with the last error set; 2 or 3 when there is none.
bool ReadKeyFile(UserKey& key);
/// The same; a missing file is made with a new key. When two processes do so at once, both get the same key.
bool ReadOrMakeKeyFile(UserKey& key);

}  // namespace connectdialog::platform
