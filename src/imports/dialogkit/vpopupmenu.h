// A popup menu as it is about to be shown.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// Entries in order. The texts have the letter after "&" as mnemonic and, behind a tab, the shortcut that is shown.
class VPopupMenu {
  public:
    struct Entry {
        int command = 0;  ///< 0: a separator or a sub-menu
        VUnicodeString text;
        bool isEnabled = true;
        bool isChecked = false;
        bool isSubMenu = false;  ///< with its children, if any
        std::vector<Entry> children;
        VUnicodeString prompt;  ///< for the status line, while it is the one to be chosen
    };

    void Add(const Entry& entry) { entries.push_back(entry); }
    void Add(int command, const VUnicodeString& text) {
        Entry& entry = entries.emplace_back();
        entry.command = command;
        entry.text = text;
    }
    void AddSeparator() { entries.emplace_back(); }
    void AddSubMenu(const VUnicodeString& text, VPopupMenu menu) {
        Entry& entry = entries.emplace_back();
        entry.text = text;
        entry.isSubMenu = true;
        entry.children = std::move(menu.entries);
    }
    const std::vector<Entry>& GetEntries() const { return entries; }

    // All entries of a command, also in sub-menus; a command that is not there changes nothing.
    void Enable(int command, bool isEnabled);
    void Check(int command, bool isChecked);
    /// Asks for the command of each entry whether it can be chosen.
    void EnableEach(const std::function<bool(int command)>& isEnabled);
    void SetText(int command, const VUnicodeString& text);
    void Remove(int command);
    /// By place in the menu itself; a place that is not there changes nothing.
    void RemoveAt(std::size_t place);
    /// The first of the command; null when it is not there.
    const Entry* Find(int command) const;

  private:
    std::vector<Entry> entries;
};

}  // namespace connectdialog
