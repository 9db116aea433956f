// The commands that the items of menus and toolbars can name.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>

#include "foundation/vunicodestring.h"

namespace connectdialog {

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): hosts write their rows in this order
struct CmdData {
    std::uint32_t number;
    const char16_t* name;  ///< not owned
    std::int32_t bitmapIndex;
};

/// The host's table of commands. Names are compared whole and with regard to case; of rows with one name the first
/// counts. The numbers 16 and 2048 are taken by popups and separators, 17 to 20 by the functions with an argument
/// (MenuItemType).
class VMenuResourceData {
  public:
    /// Requires: rows and names outlive the table.
    explicit VMenuResourceData(std::span<const CmdData> commands);

    /// 0 when there is no such name.
    std::uint32_t GetCommandNumber(std::u16string_view name) const;
    /// -1 when there is no such name.
    std::int32_t GetBitmapIndex(std::u16string_view name) const;

    struct Command {
        std::uint32_t number = 0;
        std::int32_t bitmapIndex = -1;
        VUnicodeString name;
    };
    /// The row of that name, or null. Owned by the table.
    const Command* Find(std::u16string_view name) const;

  private:
    std::unordered_map<std::u16string_view, Command> rows;
};

}  // namespace connectdialog
