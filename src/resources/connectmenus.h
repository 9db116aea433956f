// The menus and the toolbar of the connect dialog, and what is told of their commands.
#pragma once

#include <span>

namespace connectdialog {

/// In the lists of commands: a line between entries, and the place of the sub-menu of arrangements.
inline constexpr int kMenuSeparator = 0;
inline constexpr int kMenuArrangements = -1;

/// A menu that pops up over the tree, as it is before the dialog fits it to the selection.
struct ConnectPopup {
    std::span<const int> commands;
    const char16_t* arrangementsLabel;
};

extern const ConnectPopup kPopupSession;
extern const ConnectPopup kPopupFolder;
extern const ConnectPopup kPopupMultiple;
extern const std::span<const int> kPopupArrangements;

extern const std::span<const int> kConnectToolbarCommands;

/// The label of a menu entry, with the mark of its letter and, behind a tab, its key. Empty when there is none.
const char16_t* GetMenuLabel(int command);
/// What a command does, "\n", and its name; the commands of the toolbar have the name alone. Empty when there is none.
const char16_t* GetCommandText(int command);

/// Stands for the command to connect in the menus of a transfer application.
inline constexpr const char16_t* kConnectSessionLabel = u"连接会话(&C)\tAlt+C";

}  // namespace connectdialog
