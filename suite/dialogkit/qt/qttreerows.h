// The rows of a tree as they stand below each other on the screen.
#pragma once

#include <unordered_map>
#include <vector>

#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {

/// Finds the rows anew when they changed, not in each change: many changes cost as much as one.
class QtTreeRows {
  public:
    struct Row {
        TreeItem item;
        std::int32_t level;  ///< 0 at the top
    };

    /// False when nothing changed since the last time. Takes time by the number of rows.
    bool Update(const VTreeItems& items);
    void Clear();

    int GetCount() const { return static_cast<int>(rows.size()); }
    /// Requires: 0 <= row < GetCount().
    const Row& operator[](int row) const { return rows[static_cast<std::size_t>(row)]; }
    /// -1 when the item has no row.
    int Find(TreeItem item) const {
        const auto found = rowOf.find(item);
        return found != rowOf.end() ? found->second : -1;
    }

  private:
    std::vector<Row> rows;
    std::unordered_map<TreeItem, int> rowOf;
    std::uint64_t shape = 0;
};

}  // namespace connectdialog
