// A folder of its own for a test, removed with everything in it at the end; whole files read and written.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "foundation/vunicodestring.h"

namespace connectdialog::test {

/// The whole file; empty when there is none.
std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, std::string_view bytes);
/// The bits of access; 0 when there is no such file.
unsigned ModeOf(const std::filesystem::path& file);

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& GetPath() const { return path; }
    std::string operator/(const std::string& name) const { return (path / name).string(); }
    /// The name of a file in it as the library writes it.
    VUnicodeString Name(const std::string& leaf) const;

    std::string Read(const std::string& leaf) const { return ReadFile(path / leaf); }
    /// Gives the file's path.
    std::string Write(const std::string& leaf, std::string_view bytes) const;
    /// A program of the shell's; gives its path.
    std::string WriteProgram(const std::string& leaf, const std::string& script) const;

  private:
    std::filesystem::path path;
};

}  // namespace connectdialog::test
