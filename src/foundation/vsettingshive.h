// The settings of the machine and of the user that stand beside the profile store: policies and product roots.
//
// Each is one file (platform/settingshives.h) in the form of a registry export (foundation/vhivereader.h), so that an
// administrator can write a policy with an editor and a file exported on another machine can be dropped in. What a file
// holds under another root than its own is kept and not seen.
//
// A file with faults is read as far as it is good, so that one typing error does not lift the other policies; what is
// missing in it is then answered with code 1015 instead of 2. It is never written until it is mended.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/vhivereader.h"
#include "foundation/vhivetree.h"
#include "platform/settingshives.h"

namespace connectdialog {

using platform::HiveScope;

/// How an operation ended.
struct VHiveStatus {
    /// 0 after success; 2 for an absent value (and a key, where it is looked for), 1018 for a key that is not there, 87
    /// for a name that cannot be stored, 1015 for a file with faults, 223 for one above kMaxBytes, else the platform's.
    std::uint32_t code = 0;
    /// With the codes of files: which file, as the system writes its path, and which line of it is wrong. English.
    std::u16string detail;
    explicit operator bool() const { return code == 0; }
};

/// One hive. Key paths begin below the hive's root, and the empty path is the root, which is always there; names are
/// compared without regard to case.
///
/// Every read looks whether the file has changed and reads it again if so. Every write reads the file afresh, changes
/// it and replaces it, all under the file's lock, so that writers in several processes lose nothing; a write that fails
/// leaves the file as it was. One thread uses an object at a time.
class VSettingsHive {
  public:
    /// The largest file that is read or written.
    static constexpr std::size_t kMaxBytes = 8U << 20;

    /// The hive of the machine or of the user. Owned by the library.
    static VSettingsHive& Of(HiveScope scope);
    /// Where Of finds the files from now on; an empty path is that of the system. For tests. Requires: nobody keeps a
    /// hive that Of gave, and no VRegistryKey is open.
    static void SetPaths(std::u16string machinePath, std::u16string userPath);

    VSettingsHive(HiveScope scope, std::u16string path);

    /// Names joined by `\`. Empty when the system tells none; the hive is then empty and cannot be written.
    const std::u16string& Path() const { return path; }

    VHiveStatus FindKey(std::u16string_view key);
    /// On failure: `value` stays.
    VHiveStatus ReadValue(std::u16string_view key, std::u16string_view name, VHiveValue& value);
    /// The names of the keys just below, in their order. On failure: `names` stays.
    VHiveStatus ListKeys(std::u16string_view key, std::vector<std::u16string>& names);

    /// Whether this user may write the file, whatever is in it now. The code is 5 or the platform's.
    VHiveStatus CanWrite() const;

    /// Makes the key and those above it; one that is there already stays as it is.
    VHiveStatus CreateKey(std::u16string_view key);
    /// The key must be there.
    VHiveStatus WriteValue(std::u16string_view key, std::u16string_view name, VHiveValue value);
    /// The same; makes the key and those above it in the same step when they are missing.
    VHiveStatus WriteValueAndKey(std::u16string_view key, std::u16string_view name, VHiveValue value);
    VHiveStatus DeleteValue(std::u16string_view key, std::u16string_view name);
    /// With all below it, in one step; code 2 when there is none. The root itself cannot be deleted (5).
    VHiveStatus DeleteKey(std::u16string_view key);
    /// Puts what a file of the same form holds under this hive's root on top of what is there. A file with faults is
    /// refused as a whole (code 13), and so is one whose keys all stand under other roots (2).
    VHiveStatus Import(std::string_view bytes);

    /// Any change in one step. When `change` fails nothing is written and its status comes back. The keys below the
    /// root are those of FullPath.
    VHiveStatus Update(const std::function<VHiveStatus(VHiveTree&)>& change);
    std::u16string FullPath(std::u16string_view key) const;

    /// The keys as the file holds them now. Valid until the next call.
    const VHiveTree& Tree();
    /// Whether the whole file can be read; else why not, or its first fault.
    VHiveStatus Health();

  private:
    void Refresh();
    void Load();
    void Forget();
    VHiveStatus FileStatus() const;
    VHiveStatus Absence(std::uint32_t code) const;
    VHiveStatus Failed(std::uint32_t code) const;

    const HiveScope scope;
    const std::u16string path;
    VHiveTree tree;
    std::vector<VHiveFault> faults;
    /// Why the file cannot be read; 0 for a file that was, or that is not there.
    std::uint32_t fileError = 0;
    /// The file that `tree` was read from; all zero for none.
    platform::HiveStamp stamp = {};
};

}  // namespace connectdialog
