#include "menutoolbar/standardcommands.h"

#include <array>

#include "keymap/keyfunctiontable.h"
#include "menutoolbar/vmenutoolbaritem.h"

namespace connectdialog {

namespace {

constexpr CmdData kArgumentCommands[] = {
    {kMenuTypeSend, u"SEND", 0},
    {kMenuTypeRun, u"RUN", 1},
    {kMenuTypeOpenSession, u"OPEN_SESSION", 2},
    {kMenuTypeOpenSessionTab, u"OPEN_SESSION_TAB", 3},
};

/// SB_LINE_UP: those before it need an argument, or do nothing.
constexpr std::size_t kFirstFunction = 5;
static_assert(kKeyFunctionNames[kFirstFunction] == u"SB_LINE_UP");

constexpr std::size_t kCount = std::size(kArgumentCommands) + std::size(kKeyFunctionNames) - kFirstFunction;

constexpr auto kStandardCommands = [] {
    std::array<CmdData, kCount> commands{};
    std::size_t row = 0;
    for (const CmdData& command : kArgumentCommands) commands[row++] = command;
    for (std::size_t i = kFirstFunction; i < std::size(kKeyFunctionNames); ++i, ++row) {
        commands[row] = {kFirstKeyFunctionCommand + static_cast<std::uint32_t>(i), kKeyFunctionNames[i].data(),
                         static_cast<std::int32_t>(row)};
    }
    return commands;
}();

}  // namespace

const VMenuResourceData& GetStandardMenuCommands() {
    static const VMenuResourceData table(kStandardCommands);
    return table;
}

}  // namespace connectdialog
