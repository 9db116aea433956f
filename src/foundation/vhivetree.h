// The keys and values of a settings hive in memory.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "foundation/casefold.h"
#include "foundation/vhivevalue.h"

namespace connectdialog {

/// A value where it stands: with the comment lines above it in the file, each ended by a line feed.
struct VHiveEntry {
    VHiveValue value;
    std::u16string remarks;
};

/// Names are one when they differ in case alone; the way in which a name was first written is kept.
struct VHiveNameLess {
    using is_transparent = void;
    bool operator()(std::u16string_view a, std::u16string_view b) const { return CompareNoCase(a, b) < 0; }
};
template <class T>
using VHiveNameMap = std::map<std::u16string, T, VHiveNameLess>;

/// One key. Owned by the key above it.
struct VHiveKey {
    VHiveNameMap<VHiveEntry> values;
    VHiveNameMap<std::unique_ptr<VHiveKey>> children;
    std::u16string remarks;
};

/// What one hive file holds. A path is key names joined by `\`; the first is the name of a root, such as
/// HKEY_LOCAL_MACHINE. The empty path is the nameless key above the roots.
///
/// The limits keep what a hostile file can claim within bounds: time and memory grow with the file and no faster.
class VHiveTree {
  public:
    static constexpr std::size_t kMaxKeys = 65536;
    static constexpr std::size_t kMaxDepth = 512;
    static constexpr std::size_t kMaxKeyName = 255;
    static constexpr std::size_t kMaxValueName = 16383;

    /// The key, or null when there is none. Owned by the tree.
    const VHiveKey* Find(std::u16string_view path) const;
    VHiveKey* Find(std::u16string_view path) {
        return const_cast<VHiveKey*>(static_cast<const VHiveTree*>(this)->Find(path));
    }
    /// The key, made together with those above it where they are missing. Null, and nothing made, when a name is empty,
    /// above its limit or unfit for a key's line (see IsFitForHive and FindKeyEnd), or when there would be too many
    /// levels or keys.
    VHiveKey* Create(std::u16string_view path);
    /// Removes the key with all below it. False when there is none, or for the empty path.
    bool Remove(std::u16string_view path);

    /// Comment lines below the last value.
    std::u16string closingRemarks;
    /// The file is UTF-16 with a mark; else UTF-8.
    bool isWide = false;

  private:
    VHiveKey top;
    std::size_t keyCount = 0;
};

/// Whether a name or a text can stand in a line of a hive as it is: no control characters, no lone surrogates.
bool IsFitForHive(std::u16string_view text);

/// Takes the first name off a path and gives it.
std::u16string_view TakeFirstName(std::u16string_view& path);

}  // namespace connectdialog
