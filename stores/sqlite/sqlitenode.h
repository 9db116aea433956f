// A key of the SQLite provider.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "stores/common/storetree.h"
#include "stores/sqlite/packedvalues.h"

namespace connectdialog::stores {

class SqliteTree;

/// Where a key stands in the table `tree`. The root has no entry there.
struct TreeEntry {
    std::int64_t id = 0;
    std::int64_t parent = 0;
    std::u16string folded;
};

/// The values of one key as read, with the changes of the unit, until the tree writes them as one row: when the last
/// handle lets go of the key, before a listing or a deletion that must see them, and at commit.
class SqliteNode : public StoreNode {
  public:
    /// A key that has a row.
    SqliteNode(SqliteTree& tree, TreeEntry entry) : tree(tree), entry(std::move(entry)) {}
    /// A key that the current unit creates.
    SqliteNode(SqliteTree& tree, TreeEntry entry, std::u16string_view spelled);
    ~SqliteNode() override;

    bool Read(const char16_t* name, ValueView& value, VReportMessageParams& report) override;
    bool Write(const char16_t* name, const ValueView& value, VReportMessageParams& report) override;
    bool CopyValues(StoreNode& source, VReportMessageParams& report) override;
    bool Erase(const char16_t* name, VReportMessageParams& report) override;
    NodePtr Find(const KeyName& name, bool forCheck, VReportMessageParams& report) override;
    NodePtr Create(const KeyName& name, VReportMessageParams& report) override;
    bool Remove(const KeyName& name, VReportMessageParams& report) override;
    bool ListLists(std::vector<StoreChild>& lists, VReportMessageParams& report) override;
    bool List(std::size_t limit, ChildPage& page, VReportMessageParams& report) override;

    const TreeEntry& GetEntry() const { return entry; }
    /// Reads the row afresh. On failure: false; 1018 when it is gone. A row that cannot be decoded is loaded, and every
    /// use of its values fails.
    bool Load(VReportMessageParams& report);
    /// True when what is in memory cannot have been changed by another process.
    bool IsCurrent() const;
    /// What is in memory may be old: the next use reads the row again.
    void Invalidate();
    /// The unit was abandoned. Gives false when the key is undone by it.
    bool RollBack();
    /// Writes the row. Requires: there are changes.
    bool Flush(VReportMessageParams& report);

  private:
    bool EnsureLoaded(VReportMessageParams& report);
    bool EnsureCurrent(VReportMessageParams& report);
    bool IsThere(VReportMessageParams& report);
    bool CheckReadable(VReportMessageParams& report) const;
    std::size_t FindValue(const char16_t* name);
    bool IsSession();
    void MarkChanged();

    SqliteTree& tree;
    TreeEntry entry;
    std::u16string spelled;  ///< of a key whose row is not written yet
    PackedValues values;
    std::size_t expected = 0;  ///< index of the value that a reader who goes in stored order asks for next
    std::uint64_t loadedUnit = 0;
    bool loaded = false;
    bool changed = false;
    bool hasRow = true;
    bool wasSession = false;  ///< as the kind in the table says
    bool isDeleted = false;
    bool isDamaged = false;
};

}  // namespace connectdialog::stores
