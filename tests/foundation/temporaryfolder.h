// A folder of its own for a test, gone with all that is in it when the test ends.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp
#include <string>
#include <string_view>

#include "foundation/vunicodestring.h"
#include "platform/paths.h"

namespace connectdialog {

class TemporaryFolder {
  public:
    TemporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "connectdialogXXXXXX";
        path = mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    const std::filesystem::path& Path() const { return path; }
    /// The name of a file in the folder as the library writes it.
    VUnicodeString Name(const char* leaf) const {
        return VUnicodeString(platform::FromNativePath((path / leaf).string()));
    }

    void Write(const char* leaf, std::string_view bytes) const {
        std::ofstream(path / leaf, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string Read(const char* leaf) const {
        std::ifstream file(path / leaf, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::filesystem::path path;
};

}  // namespace connectdialog
