// A tree as a user reads it, whatever shows it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {

/// The item whose path of labels this is, without the root's, or kNone. The empty path is the root.
TreeItem FindItemByPath(const VTreeItems& items, std::u16string_view path);

/// One line a row: two blanks a level, "+" or "-" for an expander, then the label. Before the label "*" selected, "x"
/// cut, ">" drop target; behind it " <" where the caret stands; a line "---" for the insert mark. UTF-8.
std::string ReadTreeRows(const VTreeItems& items, const std::vector<TreeItem>& rows);

/// 0 at the top.
std::int32_t GetTreeLevel(const VTreeItems& items, TreeItem item);

}  // namespace connectdialog
