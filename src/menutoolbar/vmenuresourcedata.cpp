#include "menutoolbar/vmenuresourcedata.h"

namespace connectdialog {

VMenuResourceData::VMenuResourceData(std::span<const CmdData> commands) {
    rows.reserve(commands.size());
    for (const CmdData& command : commands)
        rows.try_emplace(command.name, Command{command.number, command.bitmapIndex, command.name});
}

const VMenuResourceData::Command* VMenuResourceData::Find(std::u16string_view name) const {
    const auto row = rows.find(name);
    return row != rows.end() ? &row->second : nullptr;
}

std::uint32_t VMenuResourceData::GetCommandNumber(std::u16string_view name) const {
    const Command* command = Find(name);
    return command != nullptr ? command->number : 0;
}

std::int32_t VMenuResourceData::GetBitmapIndex(std::u16string_view name) const {
    const Command* command = Find(name);
    return command != nullptr ? command->bitmapIndex : -1;
}

}  // namespace connectdialog
