// A file of a benchmark's own, which goes when the benchmark ends.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

#include "foundation/vunicodestring.h"
#include "platform/paths.h"

namespace connectdialog::bench {

class ScratchFile {
  public:
    /// Only names the file: whoever derives writes it.
    explicit ScratchFile(const std::string& name) : path(std::filesystem::temp_directory_path() / name) {}
    ~ScratchFile() {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    VUnicodeString Name() const { return VUnicodeString(platform::FromNativePath(path.string())); }

  protected:
    const std::filesystem::path path;
};

}  // namespace connectdialog::bench
