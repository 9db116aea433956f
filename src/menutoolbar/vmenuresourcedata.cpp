#include "menutoolbar/vmenuresourcedata.h"

namespace connectdialog {

VMenuResourceData::VMenuResourceData(std::span<const CmdData> commands) {
    rows.reserve(commands.size());
    for (const CmdData& command : commands) rows.try_emplace(command.name, &command);
}

std::uint32_t VMenuResourceData::GetCommandNumber(std::u16string_view name) const {
    const auto row = rows.find(name);
    return row != rows.end() ? row->second->number : 0;
}

std::int32_t VMenuResourceData::GetBitmapIndex(std::u16string_view name) const {
    const auto row = rows.find(name);
    return row != rows.end() ? row->second->bitmapIndex : -1;
}

}  // namespace connectdialog
