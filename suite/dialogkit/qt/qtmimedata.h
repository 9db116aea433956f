// Blocks of bytes under a format name, as they travel on the desktop's clipboard and in its drags.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "imports/dialogkit/dragdata.h"

class QMimeData;

namespace connectdialog {

std::unique_ptr<QMimeData> MakeMimeData(const VUnicodeString& format, std::span<const std::byte> data);

/// False when there is nothing of that format; `data` is empty then. `held` may be null.
bool ReadMimeData(const QMimeData* held, const VUnicodeString& format, std::vector<std::byte>& data);

/// The first block of ours; one without a format when there is none. `held` may be null.
VDragData FindDragData(const QMimeData* held);

}  // namespace connectdialog
