#include "imports/dialogkit/vpopupmenu.h"

#include <cstddef>

namespace connectdialog {

namespace {

template <class Entries>
auto FindIn(Entries& entries, int command) -> decltype(entries.data()) {
    if (command == 0) return nullptr;
    for (auto& entry : entries) {
        if (entry.command == command) return &entry;
        if (auto* found = FindIn(entry.children, command)) return found;
    }
    return nullptr;
}

void RemoveFrom(std::vector<VPopupMenu::Entry>& entries, int command) {
    std::erase_if(entries, [&](const VPopupMenu::Entry& entry) { return entry.command == command; });
    for (VPopupMenu::Entry& entry : entries) RemoveFrom(entry.children, command);
}

void EnableIn(std::vector<VPopupMenu::Entry>& entries, const std::function<bool(int)>& isEnabled) {
    for (VPopupMenu::Entry& entry : entries) {
        if (entry.command != 0) entry.isEnabled = isEnabled(entry.command);
        EnableIn(entry.children, isEnabled);
    }
}

}  // namespace

const VPopupMenu::Entry* VPopupMenu::Find(int command) const {
    return FindIn(entries, command);
}
VPopupMenu::Entry* VPopupMenu::FindEntry(int command) {
    return FindIn(entries, command);
}
void VPopupMenu::Enable(int command, bool isEnabled) {
    if (Entry* entry = FindEntry(command)) entry->isEnabled = isEnabled;
}
void VPopupMenu::Check(int command, bool isChecked) {
    if (Entry* entry = FindEntry(command)) entry->isChecked = isChecked;
}
void VPopupMenu::EnableEach(const std::function<bool(int command)>& isEnabled) {
    EnableIn(entries, isEnabled);
}
void VPopupMenu::SetText(int command, const VUnicodeString& text) {
    if (Entry* entry = FindEntry(command)) entry->text = text;
}
void VPopupMenu::Remove(int command) {
    if (command != 0) RemoveFrom(entries, command);
}
void VPopupMenu::RemoveAt(std::size_t place) {
    if (place < entries.size()) entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place));
}

}  // namespace connectdialog
