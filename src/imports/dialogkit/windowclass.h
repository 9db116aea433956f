// Window classes: a name under which dialogs find the host's icon.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vicon.h"

namespace connectdialog {

/// What a window of the class starts with.
struct WindowClass {
    VUnicodeString name;
    VIcon* icon = nullptr;  ///< the host's; may be null
    std::int32_t dialogExtraBytes = 0;
    std::int32_t backgroundBrush = 0;
};

/// RegisterWindowClass's answer for a name that is taken.
inline constexpr std::uint32_t kClassAlreadyExists = 1410;

/// Remembers the class for the life of the process. 0 on success, kClassAlreadyExists when the name is taken, and then
/// the first registration stands; 87 for an empty name.
std::uint32_t RegisterWindowClass(const WindowClass& windowClass);
/// The class of that name, or null. Owned by the registry.
const WindowClass* FindWindowClass(std::u16string_view name);

}  // namespace connectdialog
