// The pictures of the tree and of the toolbar: our own drawings, in the colours of the desktop and crisp in every size.
#pragma once

#include <QIcon>
#include <cstdint>

namespace connectdialog {

/// The picture of a tree item by its number: an open folder, a closed one, a session. A null icon for other numbers.
const QIcon& TreeIcon(std::uint8_t image);

/// The picture of a command; a null icon when the command has none.
QIcon CommandIcon(int command);

}  // namespace connectdialog
