// Message numbers that processes agree on without asking each other.
#pragma once

#include <cstdint>
#include <string_view>

namespace connectdialog::platform {

/// The number of a registered message, 0xC000 to 0xFFFF: the same in every process and at every start, since it comes
/// from the name alone. ASCII letters count without regard to case. Two names may share a number, if seldom: a receiver
/// checks what it gets. The empty name gives 0.
///
/// The number is the 32-bit FNV-1a hash (Fowler, Noll, Vo; offset basis 2166136261, prime 16777619) of the name's code
/// units, low byte first, folded to 14 bits by exclusive or.
std::uint32_t GetRegisteredMessage(std::u16string_view name);

}  // namespace connectdialog::platform
