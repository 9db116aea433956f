// Which id a path has.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace connectdialog::stores {

inline std::size_t HashOfPath(std::int64_t base, std::u16string_view folded) {
    return std::hash<std::u16string_view>()(folded) ^ static_cast<std::size_t>(base) * 0x9E3779B97F4A7C15U;
}

/// Ids by the key that a name is told from and the folded name. An id belongs to its path as long as its row is there,
/// so an entry is right exactly if its row can be read.
class PathCache {
  public:
    struct Entry {
        std::int64_t id = 0;
        std::int64_t parent = 0;
        std::uint64_t unit = 0;  ///< the unit in which the row was last seen; 0 outside of units
    };

    /// Null when the path is not known. Lives until the next change.
    const Entry* Find(std::int64_t base, std::u16string_view folded) const {
        const auto found = entries.find(KeyView{base, folded});
        return found == entries.end() ? nullptr : &found->second;
    }
    void Remember(std::int64_t base, std::u16string_view folded, const Entry& entry) {
        if (entries.size() >= kMaxEntries) entries.clear();
        entries.insert_or_assign(Key{base, std::u16string(folded)}, entry);
    }
    void Forget(std::int64_t base, std::u16string_view folded) { entries.erase(Key{base, std::u16string(folded)}); }
    void Clear() { entries.clear(); }

  private:
    static constexpr std::size_t kMaxEntries = 65536;
    struct KeyView {
        std::int64_t base;
        std::u16string_view folded;
    };
    struct Key {
        std::int64_t base;
        std::u16string folded;
        operator KeyView() const { return {base, folded}; }  // NOLINT(google-explicit-constructor): one hash for both
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(const KeyView& key) const { return HashOfPath(key.base, key.folded); }
    };
    struct Equal {
        using is_transparent = void;
        bool operator()(const KeyView& a, const KeyView& b) const { return a.base == b.base && a.folded == b.folded; }
    };

    std::unordered_map<Key, Entry, Hash, Equal> entries;
};

}  // namespace connectdialog::stores
