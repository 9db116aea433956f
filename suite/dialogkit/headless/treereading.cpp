#include "suite/dialogkit/headless/treereading.h"

#include <algorithm>

#include "platform/codepage.h"

namespace connectdialog {

namespace {

std::string ReadRow(const VTreeItems& items, TreeItem item) {
    const auto has = [&](TreeItemState state) { return items.HasState(item, state); };
    std::string text(2 * static_cast<std::size_t>(GetTreeLevel(items, item)), ' ');
    text += !items.HasChildrenOrExpander(item) ? " " : has(kTreeExpanded) ? "-" : "+";
    if (has(kTreeSelected)) text += '*';
    if (has(kTreeCut)) text += 'x';
    if (has(kTreeDropTarget)) text += '>';
    return text + platform::ToNarrow(items.GetText(item)) + (items.GetCaret() == item ? " <\n" : "\n");
}

}  // namespace

TreeItem FindItemByPath(const VTreeItems& items, std::u16string_view path) {
    TreeItem item = items.GetFirstChild(TreeItem::kNone);
    while (!path.empty() && item != TreeItem::kNone) {
        const std::u16string_view name = path.substr(0, path.find(u'\\'));
        path.remove_prefix(std::min(path.size(), name.size() + 1));
        item = items.GetFirstChild(item);
        while (item != TreeItem::kNone && items.GetText(item) != name) item = items.GetNextSibling(item);
    }
    return item;
}

std::string ReadTreeRows(const VTreeItems& items, const std::vector<TreeItem>& rows) {
    bool isBehind = false;
    const TreeItem mark = items.GetInsertMark(isBehind);
    std::string text;
    for (const TreeItem item : rows) {
        if (item == mark && !isBehind) text += "---\n";
        text += ReadRow(items, item);
        if (item == mark && isBehind) text += "---\n";
    }
    return text;
}

std::int32_t GetTreeLevel(const VTreeItems& items, TreeItem item) {
    std::int32_t level = 0;
    while ((item = items.GetParent(item)) != TreeItem::kNone) ++level;
    return level;
}

}  // namespace connectdialog
