// A popup menu as it is about to be shown.
#pragma once

#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

/// Entries in order. The texts have the letter after "&" as mnemonic and, behind a tab, the shortcut that is shown.
class VPopupMenu {
  public:
    struct Entry {
        int command = 0;  ///< 0: a separator, or a sub-menu when there are children
        VUnicodeString text;
        bool isEnabled = true;
        bool isChecked = false;
        std::vector<Entry> children;
    };

    void Add(int command, const VUnicodeString& text) { entries.push_back({command, text, true, false, {}}); }
    void AddSeparator() { entries.push_back({0, VUnicodeString(), true, false, {}}); }
    void AddSubMenu(const VUnicodeString& text, const VPopupMenu& menu) {
        entries.push_back({0, text, true, false, menu.entries});
    }
    const std::vector<Entry>& GetEntries() const { return entries; }

    // By command, also in sub-menus; a command that is not there changes nothing.
    void Enable(int command, bool isEnabled);
    void Check(int command, bool isChecked);
    void SetText(int command, const VUnicodeString& text);
    void Remove(int command);
    /// By place in the menu itself; a place that is not there changes nothing.
    void RemoveAt(std::size_t place);
    /// Null when it is not there.
    const Entry* Find(int command) const;

  private:
    Entry* FindEntry(int command);

    std::vector<Entry> entries;
};

}  // namespace connectdialog
