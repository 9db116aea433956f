// Random bytes of the system, fit for keys.
//
// They come from the generator of the kernel, which gathers entropy from the hardware and never runs dry; there is
// nothing to open or to keep, and it may be asked from any thread. A program that starts before the system has gathered
// enough waits for it once, early at boot.
#pragma once

#include <cstddef>

namespace connectdialog::platform {

/// Fills `size` bytes at `buffer`; with a size of 0 it does nothing and gives true.
/// On failure: false with the last error set, when the system refuses the call; what `buffer` holds then must not be
/// used.
bool FillRandomBytes(void* buffer, std::size_t size);

}  // namespace connectdialog::platform
