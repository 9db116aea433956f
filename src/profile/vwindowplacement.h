// Where a window stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "profile/vprofile2.h"

namespace connectdialog {

struct VPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
    friend bool operator==(const VPoint&, const VPoint&) = default;
};

/// Edges; right and bottom lie outside.
struct VRectangle {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend bool operator==(const VRectangle&, const VRectangle&) = default;
};

/// The published placement record of 44 bytes, in its order; pixels of the screen.
struct VWindowPlacement {
    static constexpr std::size_t kStoredSize = 44;
    // What showState says.
    static constexpr std::uint32_t kShowNormal = 1;
    static constexpr std::uint32_t kShowMaximized = 3;

    std::uint32_t length = 0;
    std::uint32_t flags = 0;
    std::uint32_t showState = 0;
    VPoint minimized;
    VPoint maximized;
    VRectangle normal;

    /// A window that was never placed: shown in the usual way, with an empty normal rectangle.
    static VWindowPlacement Unplaced();

    void Pack(std::span<std::byte, kStoredSize> record) const;
    static VWindowPlacement Unpack(std::span<const std::byte, kStoredSize> record);

    friend bool operator==(const VWindowPlacement&, const VWindowPlacement&) = default;
};

class VProfileWindowPlacement : public VProfile2<VWindowPlacement, VProfileBinary> {};

}  // namespace connectdialog
