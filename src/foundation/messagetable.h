// Message tables: from a module and a code to the template of a message.
//
// Each module may have tables of its own, which it registers when it starts. The library's tables and the system's are
// always there. A report that finds its code neither in the system's table nor in its own module's asks the fallback
// module, which holds the messages that the library reports in the host's name; a host may register its own wording
// there. All functions may be called from any thread.
#pragma once

#include <cstdint>
#include <span>

#include "platform/modules.h"
#include "resources/messagerow.h"

namespace connectdialog {

using MessageTable = std::span<const MessageRow>;

/// Names the fallback module. It has no file: only message tables belong to it.
ModuleHandle GetFallbackMessageModule();

/// Adds a table to a module; one that it has already is not added again. Where several tables of a module have a code,
/// the one that came last counts. Requires: the rows are sorted by code, and they and their texts stay until the table
/// is removed.
void RegisterMessageTable(ModuleHandle module, MessageTable table);
/// Removes what was registered for the module: to be called before the module is freed.
void RemoveMessageTables(ModuleHandle module);

/// The template of a code in the module's tables, or null.
const char16_t* FindMessage(ModuleHandle module, std::uint32_t code);
/// The template of an error number in the system's table, or null.
const char16_t* FindSystemMessage(std::uint32_t code);

}  // namespace connectdialog
