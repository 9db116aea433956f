// A file for targets that read files: it lies in memory.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

#include "foundation/vunicodestring.h"
#include "platform/paths.h"

namespace connectdialog::fuzz {

/// A file in memory with a name.
class MemoryFile {
  public:
    MemoryFile() : descriptor(memfd_create("fuzz", MFD_CLOEXEC)) {}
    VUnicodeString Name() const {
        return VUnicodeString(platform::FromNativePath("/proc/self/fd/" + std::to_string(descriptor)));
    }
    void Write(std::string_view bytes) const {
        const auto size = static_cast<ssize_t>(bytes.size());
        if (ftruncate(descriptor, 0) != 0 || pwrite(descriptor, bytes.data(), bytes.size(), 0) != size) std::abort();
    }

  private:
    int descriptor;
};

}  // namespace connectdialog::fuzz
