#include "menutoolbar/standardcommands.h"

#include <algorithm>
#include <array>

#include "keymap/keyfunctiontable.h"
#include "menutoolbar/vmenutoolbaritem.h"
#include "resources/connectcommands.h"

namespace connectdialog {

namespace {

constexpr CmdData kArgumentCommands[] = {
    {kMenuTypeSend, u"SEND", 0},
    {kMenuTypeRun, u"RUN", 1},
    {kMenuTypeOpenSession, u"OPEN_SESSION", 2},
    {kMenuTypeOpenSessionTab, u"OPEN_SESSION_TAB", 3},
};

/// Those before it need an argument, or do nothing.
constexpr std::size_t kFirstFunction = KeyFunctionNumber(u"SB_LINE_UP");

/// Their bitmap indices follow from their places.
constexpr CmdData kHostCommands[] = {
    {kMenuNewSession, u"MENU_NEW_SESSION", 0},
    {kMenuProperties, u"MENU_PROPERTIES", 0},
    {kMenuRemove, u"MENU_REMOVE", 0},
    {kMenuOptions, u"MENU_OPTIONS", 0},
    {kMenuEditButtons, u"MENU_EDIT_BUTTONS", 0},
    {kMenuHelp, u"MENU_HELP", 0},
    {kMenuRemoveEnded, u"MENU_REMOVE_ENDED", 0},
};

constexpr std::size_t kCount =
    std::size(kArgumentCommands) + std::size(kKeyFunctionNames) - kFirstFunction + std::size(kHostCommands);

struct PictureRow {
    std::u16string_view function;
    int picture;
};
constexpr PictureRow kPictures[] = {
    {u"MENU_CONNECT", ConnectCommands::kConnect},
    {u"MENU_QUICK_CONNECT", ConnectCommands::kQuickConnect},
    {u"MENU_RECONNECT", ConnectCommands::kConnect},
    {u"MENU_COPY", ConnectCommands::kBarCopy},
    {u"MENU_PASTE", ConnectCommands::kBarPaste},
    {u"MENU_FIND", ConnectCommands::kFind},
    {u"MENU_NEW_SESSION", ConnectCommands::kBarNewSession},
    {u"MENU_PROPERTIES", ConnectCommands::kBarProperties},
    {u"MENU_REMOVE", ConnectCommands::kBarDelete},
    {u"MENU_HELP", ConnectCommands::kHelp},
    {u"OPEN_SESSION", ConnectCommands::kConnect},
    {u"OPEN_SESSION_TAB", ConnectCommands::kConnect},
};

constexpr auto kStandardCommands = [] {
    std::array<CmdData, kCount> commands{};
    std::size_t row = 0;
    for (const CmdData& command : kArgumentCommands) commands[row++] = command;
    for (std::size_t i = kFirstFunction; i < std::size(kKeyFunctionNames); ++i, ++row) {
        commands[row] = {kFirstKeyFunctionCommand + static_cast<std::uint32_t>(i), kKeyFunctionNames[i].data(),
                         static_cast<std::int32_t>(row)};
    }
    for (const CmdData& command : kHostCommands) {
        commands[row] = {command.number, command.name, static_cast<std::int32_t>(row)};
        ++row;
    }
    return commands;
}();

}  // namespace

const VMenuResourceData& GetStandardMenuCommands() {
    static const VMenuResourceData table(kStandardCommands);
    return table;
}

int GetStandardPicture(std::int32_t bitmapIndex) {
    if (bitmapIndex < 0 || static_cast<std::size_t>(bitmapIndex) >= kCount) return 0;
    const char16_t* const name = kStandardCommands[static_cast<std::size_t>(bitmapIndex)].name;
    const auto* row = std::ranges::find(kPictures, std::u16string_view(name), &PictureRow::function);
    return row != std::end(kPictures) ? row->picture : 0;
}

}  // namespace connectdialog
