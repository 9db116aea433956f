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

inline constexpr std::uint16_t kKeyReturn = 0x0D;
inline constexpr std::uint16_t kKeyEscape = 0x1B;
inline constexpr std::uint16_t kKeyLeft = 0x25;
inline constexpr std::uint16_t kKeyUp = 0x26;
inline constexpr std::uint16_t kKeyRight = 0x27;
inline constexpr std::uint16_t kKeyDown = 0x28;
inline constexpr std::uint16_t kKeyDelete = 0x2E;
inline constexpr std::uint16_t kKeyF2 = 0x71;
inline constexpr std::uint16_t kKeyF3 = 0x72;

/// The resource number of the connect dialog's table.
inline constexpr int kConnectAcceleratorsId = 136;

using AcceleratorTable = std::span<const Accelerator>;

/// The table of that resource number; empty when there is none.
AcceleratorTable LoadAcceleratorTable(int resourceId);

}  // namespace connectdialog
