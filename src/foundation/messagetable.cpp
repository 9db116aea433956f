#include "foundation/messagetable.h"

#include <algorithm>
#include <mutex>
#include <vector>

#include "resources/hostmessages.h"
#include "resources/librarymessages.h"
#include "resources/systemmessages.h"

namespace connectdialog {

namespace {

constexpr bool ComesBefore(const MessageRow& a, const MessageRow& b) {
    return a.code < b.code;
}
static_assert(std::is_sorted(std::begin(kLibraryMessages), std::end(kLibraryMessages), ComesBefore));
static_assert(std::is_sorted(std::begin(kHostMessages), std::end(kHostMessages), ComesBefore));
static_assert(std::is_sorted(std::begin(kSystemMessages), std::end(kSystemMessages), ComesBefore));

const char16_t* FindIn(MessageTable table, std::uint32_t code) {
    const auto row = std::lower_bound(table.begin(), table.end(), MessageRow{code, nullptr}, ComesBefore);
    return row != table.end() && row->code == code ? row->text : nullptr;
}

struct RegisteredTable {
    ModuleHandle module;
    MessageTable table;
};
struct Registry {
    std::mutex mutex;
    std::vector<RegisteredTable> tables{{platform::GetLibraryModule(), kLibraryMessages},
                                        {GetFallbackMessageModule(), kHostMessages}};
};

/// Never destroyed: a report may be asked for its text until the process ends.
Registry& GetRegistry() {
    static Registry& registry = *new Registry();
    return registry;
}

}  // namespace

ModuleHandle GetFallbackMessageModule() {
    static char name;
    return &name;
}

void RegisterMessageTable(ModuleHandle module, MessageTable table) {
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto isSame = [&](const RegisteredTable& registered) {
        return registered.module == module && registered.table.data() == table.data();
    };
    if (std::ranges::none_of(registry.tables, isSame)) registry.tables.push_back({module, table});
}

void RemoveMessageTables(ModuleHandle module) {
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    std::erase_if(registry.tables, [module](const RegisteredTable& registered) { return registered.module == module; });
}

const char16_t* FindMessage(ModuleHandle module, std::uint32_t code) {
    Registry& registry = GetRegistry();
    const std::lock_guard lock(registry.mutex);
    for (auto registered = registry.tables.rbegin(); registered != registry.tables.rend(); ++registered) {
        if (registered->module != module) continue;
        if (const char16_t* text = FindIn(registered->table, code)) return text;
    }
    return nullptr;
}

const char16_t* FindSystemMessage(std::uint32_t code) {
    return FindIn(kSystemMessages, code);
}

}  // namespace connectdialog
