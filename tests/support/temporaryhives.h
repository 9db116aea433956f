// Settings hives in a folder of their own that goes when the test ends.
#pragma once

#include "foundation/vsettingshive.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {

/// Puts both hives of the process into a fresh folder; they do not exist yet. The destructor puts the system's back.
class TemporaryHives {
  public:
    TemporaryHives() { VSettingsHive::SetPaths((Folder() / "machine.reg").u16string(), UserFile().u16string()); }
    TemporaryHives(const TemporaryHives&) = delete;
    TemporaryHives& operator=(const TemporaryHives&) = delete;
    ~TemporaryHives() { VSettingsHive::SetPaths({}, {}); }

    const std::filesystem::path& Folder() const { return folder.GetPath(); }
    std::filesystem::path UserFile() const { return Folder() / "user.reg"; }

    /// Writes a hive of the first line and these lines, in place, as an editor does.
    void WriteMachine(const std::string& lines) const { folder.Write("machine.reg", kFirstLine + lines); }
    void WriteUser(const std::string& lines) const { folder.Write("user.reg", kFirstLine + lines); }

  private:
    static constexpr char kFirstLine[] = "Windows Registry Editor Version 5.00\n";
    TemporaryFolder folder;
};

}  // namespace connectdialog::test
