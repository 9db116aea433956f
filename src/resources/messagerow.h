// One row of a message table.
#pragma once

#include <cstdint>

namespace connectdialog {

/// A code and the template of its message (see foundation/messageformat.h). Tables are sorted by code.
struct MessageRow {
    std::uint32_t code;
    const char16_t* text;
};

}  // namespace connectdialog
