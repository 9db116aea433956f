// The margins of a page.
#pragma once

#include <cstddef>
#include <span>

#include "profile/vprofile2.h"

namespace connectdialog {

/// Four numbers of 64 bits, in this order.
struct VMarginData {
    static constexpr std::size_t kStoredSize = 32;

    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    void Pack(std::span<std::byte, kStoredSize> record) const;
    static VMarginData Unpack(std::span<const std::byte, kStoredSize> record);

    friend bool operator==(const VMarginData&, const VMarginData&) = default;
};

using VProfileMarginData = VProfile2<VMarginData, VProfileBinary>;

}  // namespace connectdialog
