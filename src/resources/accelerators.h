// The accelerator tables of the library.
#pragma once

#include <cstdint>
#include <span>

namespace connectdialog {

/// One key of an accelerator table. The key is a virtual key: a capital letter or one of kKey….
struct Accelerator {
    enum Modifier : std::uint8_t { kNone = 0, kControl = 1, kAlt = 2, kShift = 4 };

    std::uint8_t modifiers;
    std::uint16_t key;
    std::uint16_t command;
};

constexpr bool IsSameKey(const Accelerator& a, const Accelerator& b) {
    return a.key == b.key && a.modifiers == b.modifiers;
}

inline constexpr std::uint16_t kKeyBack = 0x08;
inline constexpr std::uint16_t kKeyTab = 0x09;
inline constexpr std::uint16_t kKeyReturn = 0x0D;
inline constexpr std::uint16_t kKeyEscape = 0x1B;
inline constexpr std::uint16_t kKeySpace = 0x20;
inline constexpr std::uint16_t kKeyPageUp = 0x21;
inline constexpr std::uint16_t kKeyPageDown = 0x22;
inline constexpr std::uint16_t kKeyEnd = 0x23;
inline constexpr std::uint16_t kKeyHome = 0x24;
inline constexpr std::uint16_t kKeyLeft = 0x25;
inline constexpr std::uint16_t kKeyUp = 0x26;
inline constexpr std::uint16_t kKeyRight = 0x27;
inline constexpr std::uint16_t kKeyDown = 0x28;
inline constexpr std::uint16_t kKeyInsert = 0x2D;
inline constexpr std::uint16_t kKeyDelete = 0x2E;
inline constexpr std::uint16_t kKeyMenu = 0x5D;  ///< the one that asks for the context menu
inline constexpr std::uint16_t kKeyMultiply = 0x6A;
inline constexpr std::uint16_t kKeyAdd = 0x6B;
inline constexpr std::uint16_t kKeySubtract = 0x6D;
inline constexpr std::uint16_t kKeyF1 = 0x70;  ///< the other function keys follow
inline constexpr std::uint16_t kKeyF2 = 0x71;
inline constexpr std::uint16_t kKeyF3 = 0x72;
inline constexpr std::uint16_t kKeyF10 = 0x79;

/// The resource number of the connect dialog's table.
inline constexpr int kConnectAcceleratorsId = 136;

using AcceleratorTable = std::span<const Accelerator>;

/// The table of that resource number; empty when there is none.
AcceleratorTable LoadAcceleratorTable(int resourceId);

}  // namespace connectdialog
