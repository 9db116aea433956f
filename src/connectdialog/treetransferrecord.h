// The block that travels on the clipboard and in a drag when an item of the session tree is moved or copied.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vtreeitems.h"

namespace connectdialog {

/// The format's name.
inline constexpr char16_t kTreeTransferFormat[] = u"FolderTree";

/// 1056 bytes, little-endian: the handle of the item (8), two texts of 260 characters with a zero behind them (520
/// each), the flag (4), padding (4). A longer text is cut. The handle means something inside one process only, and the
/// block may come from anywhere: who reads one looks the handle up and compares the path.
struct TreeTransferRecord {
    static constexpr std::size_t kSize = 1056;
    static constexpr std::size_t kTextLength = 259;

    TreeItem sourceItem = TreeItem::kNone;
    VUnicodeString sourcePath;
    /// On the clipboard the path of the folder above, in a drag the label of that folder's item.
    VUnicodeString sourceLocation;
    bool isCut = false;

    std::vector<std::byte> Pack() const;
    /// Nothing when the block has another size.
    static std::optional<TreeTransferRecord> Unpack(std::span<const std::byte> block);
};

}  // namespace connectdialog
