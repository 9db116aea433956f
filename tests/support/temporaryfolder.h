// A folder of its own for a test, removed with everything in it at the end.
#pragma once

#include <filesystem>
#include <string>

namespace connectdialog::test {

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return path; }
    std::string File(const char* name) const { return (path / name).string(); }

  private:
    std::filesystem::path path;
};

}  // namespace connectdialog::test
