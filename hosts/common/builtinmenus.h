// The description of the hosts' menus that is built into them: hosts/data/menus.txt.
#pragma once

#include <string_view>

namespace connectdialog::hosts {

std::u16string_view GetBuiltInMenus();

}  // namespace connectdialog::hosts
