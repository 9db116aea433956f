// Settings hives in a folder of their own that goes when the test ends.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace connectdialog::testsupport {

/// Puts both hives of the process into a fresh folder; they do not exist yet. The destructor puts the system's back.
class TemporaryHives {
  public:
    TemporaryHives();
    TemporaryHives(const TemporaryHives&) = delete;
    TemporaryHives& operator=(const TemporaryHives&) = delete;
    ~TemporaryHives();

    const std::filesystem::path& Folder() const { return folder; }
    std::filesystem::path MachineFile() const { return folder / "machine.reg"; }
    std::filesystem::path UserFile() const { return folder / "user.reg"; }

    /// Writes a hive of the first line and these lines, in place, as an editor does.
    void WriteMachine(std::string_view lines) const;
    void WriteUser(std::string_view lines) const;

  private:
    std::filesystem::path folder;
};

/// The whole file; empty when there is none.
std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace connectdialog::testsupport
