// The interned names of values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace connectdialog {

class VReportMessageParams;

namespace stores {

class SqliteDatabase;

/// What the table `names` holds, in memory. Names are only added, by any process; ids count up from 1.
class NameTable {
  public:
    /// Forgets all: another file will be read.
    void Clear();
    /// The id of a zero-terminated name, or 0 when it is not in memory. Case does not matter. Names mostly come in the
    /// order in which they were first written, or they were asked for before: then nothing is folded and nothing
    /// hashed.
    std::uint32_t Find(const char16_t* name);
    /// True when the id's name is spelled exactly like the zero-terminated `name`: the cheap question of a reader that
    /// goes through values in the order in which they are stored.
    bool IsSpelled(std::uint32_t id, const char16_t* name) const;
    /// As it was first written, by whichever key, until a name is added. Requires: an id from 1 to GetCount().
    std::u16string_view GetSpelled(std::uint32_t id) const {
        const std::size_t begin = id == 1 ? 0 : ends[id - 2];
        return {spelled.data() + begin, ends[id - 1] - begin};
    }
    std::size_t GetCount() const { return ends.size(); }

    /// Reads what was added since. On failure: false, with a report; 1015 when the ids have gaps.
    bool LoadNew(SqliteDatabase& database, VReportMessageParams& report);
    /// The id of a name that Find does not know, added to the table when no other process has done so; 0 on failure.
    /// Requires: a transaction that writes.
    std::uint32_t Intern(SqliteDatabase& database, const char16_t* name, VReportMessageParams& report);
    /// Tells how the transaction ended that interned names.
    void Committed() { keptCount = kAll; }
    void RolledBack();

  private:
    static constexpr std::size_t kAll = static_cast<std::size_t>(-1);
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
    };
    /// A question that was answered: most names are literals, which lie where they lay.
    struct Answer {
        std::u16string name;
        std::uint32_t id = 0;
    };
    static constexpr int kAnswerBits = 8;

    std::uint32_t Search(const char16_t* name);
    std::uint32_t SearchFolded(std::u16string_view name) const;
    void Add(std::u16string_view name, std::u16string_view folded);

    std::u16string spelled;         ///< one after the other
    std::vector<std::size_t> ends;  ///< by id - 1, in `spelled`
    std::unordered_map<std::u16string, std::uint32_t, Hash, std::equal_to<>> idsByFolded;
    std::array<Answer, std::size_t{1} << kAnswerBits> answers;  ///< by the place of the name in memory
    std::uint32_t latest = 0;                                   ///< found last
    std::size_t keptCount = kAll;                               ///< names that stay when the transaction is rolled back
};

}  // namespace stores
}  // namespace connectdialog
