#include "imports/dialogkit/vpopupmenu.h"

#include <cstddef>

namespace connectdialog {

namespace {

const VPopupMenu::Entry* FindIn(const std::vector<VPopupMenu::Entry>& entries, int command) {
    if (command == 0) return nullptr;
    for (const VPopupMenu::Entry& entry : entries) {
        if (entry.command == command) return &entry;
        if (const VPopupMenu::Entry* found = FindIn(entry.children, command)) return found;
    }
    return nullptr;
}

/// With each entry that has a command.
template <class Act>
void ForEach(std::vector<VPopupMenu::Entry>& entries, const Act& act) {
    for (VPopupMenu::Entry& entry : entries) {
        if (entry.command != 0) act(entry);
        ForEach(entry.children, act);
    }
}

void RemoveFrom(std::vector<VPopupMenu::Entry>& entries, int command) {
    std::erase_if(entries, [&](const VPopupMenu::Entry& entry) { return entry.command == command; });
    for (VPopupMenu::Entry& entry : entries) RemoveFrom(entry.children, command);
}

}  // namespace

const VPopupMenu::Entry* VPopupMenu::Find(int command) const {
    return FindIn(entries, command);
}
void VPopupMenu::Enable(int command, bool isEnabled) {
    ForEach(entries, [&](Entry& entry) {
        if (entry.command == command) entry.isEnabled = isEnabled;
    });
}
void VPopupMenu::Check(int command, bool isChecked) {
    ForEach(entries, [&](Entry& entry) {
        if (entry.command == command) entry.isChecked = isChecked;
    });
}
void VPopupMenu::EnableEach(const std::function<bool(int command)>& isEnabled) {
    ForEach(entries, [&](Entry& entry) { entry.isEnabled = isEnabled(entry.command); });
}
void VPopupMenu::SetText(int command, const VUnicodeString& text) {
    ForEach(entries, [&](Entry& entry) {
        if (entry.command == command) entry.text = text;
    });
}
void VPopupMenu::Remove(int command) {
    if (command != 0) RemoveFrom(entries, command);
}
void VPopupMenu::RemoveAt(std::size_t place) {
    if (place < entries.size()) entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place));
}

}  // namespace connectdialog
