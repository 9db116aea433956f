#include "foundation/securewipe.h"

#include <cstring>

namespace connectdialog {

namespace {
// Read anew at every call: the compiler cannot know that it is memset, and so not that the stores are dead.
void* (*volatile fill)(void*, int, std::size_t) = std::memset;
}  // namespace

void SecureWipe(void* block, std::size_t size) noexcept {
    if (size != 0) fill(block, 0, size);
}

}  // namespace connectdialog
