#include "suite/dialogkit/qt/qttreerows.h"

#include <utility>

namespace connectdialog {

namespace {

/// The level of the row behind one of `level`: one deeper when it is the first child, else as many higher as expanded
/// folders end in between. All rows together take as many steps up as down.
std::int32_t LevelOfNext(const VTreeItems& items, TreeItem item, std::int32_t level, TreeItem next) {
    const TreeItem parent = items.GetParent(next);
    if (parent == item) return level + 1;
    for (TreeItem outer = items.GetParent(item); outer != parent; outer = items.GetParent(outer)) --level;
    return level;
}

}  // namespace

bool QtTreeRows::Update(const VTreeItems& items) {
    if (std::exchange(shape, items.GetShape()) == items.GetShape()) return false;
    rows.clear();
    rowOf.clear();
    Row row{items.GetFirstChild(TreeItem::kNone), 0};
    while (row.item != TreeItem::kNone) {
        rows.push_back(row);
        const TreeItem next = items.GetNextVisible(row.item);
        if (next != TreeItem::kNone) row.level = LevelOfNext(items, row.item, row.level, next);
        row.item = next;
    }
    rowOf.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) rowOf.emplace(rows[i].item, static_cast<int>(i));
    return true;
}

void QtTreeRows::Clear() {
    rows.clear();
    rowOf.clear();
    shape = 0;
}

}  // namespace connectdialog
