// The buttons of a toolbar and which of them can be pressed.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "foundation/vunicodestring.h"
#include "imports/dialogkit/vicon.h"

namespace connectdialog {

class VToolbarState {
  public:
    struct Button {
        int command = 0;  ///< 0: a separator
        VUnicodeString tip;
        bool isEnabled = true;
        VUnicodeString text;                 ///< beside or instead of a picture; a line feed in it begins a second line
        VUnicodeString prompt;               ///< for the status line, while the pointer rests on it
        int picture = 0;                     ///< the command whose picture it has; 0: its own
        std::shared_ptr<const VIcon> image;  ///< instead of a command's; null: none
    };

    void Add(const Button& button) { buttons.push_back(button); }
    void Add(int command, const VUnicodeString& tip) {
        Button& button = buttons.emplace_back();
        button.command = command;
        button.tip = tip;
    }
    void AddSeparator() { buttons.emplace_back(); }
    /// A place that is not there changes nothing.
    void RemoveAt(std::size_t place) {
        if (place < buttons.size()) buttons.erase(buttons.begin() + static_cast<std::ptrdiff_t>(place));
    }
    /// A command that is not on the bar changes nothing.
    void Enable(int command, bool isEnabled) {
        for (Button& button : buttons)
            if (button.command == command) button.isEnabled = isEnabled;
    }
    /// Asks for the command of each button whether it can be pressed.
    template <class IsEnabled>
    void EnableEach(IsEnabled isEnabled) {
        for (Button& button : buttons)
            if (button.command != 0) button.isEnabled = isEnabled(button.command);
    }
    std::span<const Button> GetButtons() const { return buttons; }

  private:
    std::vector<Button> buttons;
};

}  // namespace connectdialog
