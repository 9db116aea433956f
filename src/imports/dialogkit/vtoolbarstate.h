// The buttons of a toolbar and which of them can be pressed.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class VToolbarState {
  public:
    struct Button {
        int command = 0;  ///< 0: a separator
        VUnicodeString tip;
        bool isEnabled = true;
        VUnicodeString text;  ///< beside or instead of a picture; a line feed in it begins a second line
    };

    void Add(int command, const VUnicodeString& tip) { buttons.push_back({command, tip, true, {}}); }
    void Add(int command, const VUnicodeString& tip, const VUnicodeString& text) {
        buttons.push_back({command, tip, true, text});
    }
    void AddSeparator() { buttons.push_back({}); }
    /// A place that is not there changes nothing.
    void RemoveAt(std::size_t place) {
        if (place < buttons.size()) buttons.erase(buttons.begin() + static_cast<std::ptrdiff_t>(place));
    }
    /// A command that is not on the bar changes nothing.
    void Enable(int command, bool isEnabled) {
        for (Button& button : buttons)
            if (button.command == command) button.isEnabled = isEnabled;
    }
    std::span<const Button> GetButtons() const { return buttons; }

  private:
    std::vector<Button> buttons;
};

}  // namespace connectdialog
