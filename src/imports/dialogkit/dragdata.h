// What travels in a drag, and what becomes of it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// What a drop does to the data.
enum class DropEffect : std::uint8_t { kNone = 0, kCopy = 1, kMove = 2 };

/// One block under one format name. It may come from another process: what it holds is not to be trusted.
class VDragData {
  public:
    VDragData() = default;
    VDragData(VUnicodeString formatName, std::vector<std::byte> block)
        : format(std::move(formatName)), bytes(std::move(block)) {}

    bool HasFormat(std::u16string_view name) const { return !format.IsEmpty() && format == name; }
    const VUnicodeString& GetFormat() const { return format; }
    const std::vector<std::byte>& GetBytes() const { return bytes; }

  private:
    VUnicodeString format;
    std::vector<std::byte> bytes;
};

}  // namespace connectdialog
