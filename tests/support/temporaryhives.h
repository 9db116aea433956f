// Settings hives in a folder of their own that goes when the test ends.
#pragma once

#include "support/temporaryfolder.h"

namespace connectdialog::testsupport {

using test::ReadFile;

/// Puts both hives of the process into a fresh folder; they do not exist yet. The destructor puts the system's back.
class TemporaryHives {
  public:
    TemporaryHives();
    TemporaryHives(const TemporaryHives&) = delete;
    TemporaryHives& operator=(const TemporaryHives&) = delete;
    ~TemporaryHives();

    const std::filesystem::path& Folder() const { return folder.GetPath(); }
    std::filesystem::path MachineFile() const { return Folder() / "machine.reg"; }
    std::filesystem::path UserFile() const { return Folder() / "user.reg"; }

    /// Writes a hive of the first line and these lines, in place, as an editor does.
    void WriteMachine(std::string_view lines) const;
    void WriteUser(std::string_view lines) const;

  private:
    test::TemporaryFolder folder;
};

}  // namespace connectdialog::testsupport
