// Protection of bytes for this user: only the same user on the same machine can read them back.
//
// Authenticated encryption under a key of the user's own. Where that key is kept is this service's affair; it never
// asks the user, and it never gives plain bytes or cipher bytes in place of what cannot be had. On POSIX the key lies
// in the desktop's Secret Service when one answers within a few seconds and is unlocked, and otherwise in the file
// `user.key` of the library's data folder, mode 0600. A blob names its key, so keys of both places stay in use side by
// side.
//
// The functions may be called from any thread. Who protects a secret wipes his own copy of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace connectdialog::platform {

/// Sets `blob` to the protected form of `size` bytes; equal bytes give different blobs.
/// On failure: false with the last error set; `blob` is empty.
bool ProtectForUser(const void* data, std::size_t size, std::vector<std::uint8_t>& blob);

/// Writes what was protected to `data` and its size to `size`, which is less than that of the blob.
/// Requires: `data` has room for `blobSize` bytes.
/// On failure: false with the last error set, and `data` holds nothing of the secret: kInvalidData when this is no blob
/// or was altered, kKeyNotThere when it was protected by another user, elsewhere, or with a key that is gone; kTimeout
/// or kAccessDenied when its key may lie with the Secret Service, which does not answer or is locked; the error of the
/// key file.
bool UnprotectForUser(const std::uint8_t* blob, std::size_t blobSize, std::uint8_t* data, std::size_t& size);

}  // namespace connectdialog::platform
