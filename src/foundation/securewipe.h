// Zeroing of memory that held a secret.
#pragma once

#include <cstddef>

namespace connectdialog {

/// Zeroes `size` bytes, also when nothing reads them afterwards: the compiler cannot leave it out, as it may with
/// memset in front of a free. `block` may be null when `size` is 0.
void SecureWipe(void* block, std::size_t size) noexcept;

}  // namespace connectdialog
