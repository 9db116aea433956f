// The user's button bar under the toolbars of the main window.
#pragma once

#include <functional>

#include "foundation/vunicodestring.h"
#include "hosts/common/hostmenus.h"
#include "menutoolbar/buttonline.h"
#include "sessiondb/userbuttonbar.h"

namespace connectdialog {
class IFrameWindow;
}

namespace connectdialog::hosts {

/// Which bar a session wants.
struct ButtonBarChoice {
    VUnicodeString name;
    bool isShown = true;

    friend bool operator==(const ButtonBarChoice&, const ButtonBarChoice&) = default;
};
/// That of the session at a path; that of everybody for the empty path, and for a session that is gone.
ButtonBarChoice ChooseButtonBar(const VUnicodeString& sessionPath);

class HostButtons {
  public:
    /// Its place among the toolbars of the window: behind those of descriptions.
    static constexpr int kBar = HostMenus::kMostBars;

    /// Reads the bar from the store. False when it is the one that was read last and `again` is not set.
    bool Load(const ButtonBarChoice& choice, bool again);
    const VUnicodeString& GetName() const { return choice.name; }

    /// Shows the bar, without buttons where the session or the user wants none. Asks for the function of each button
    /// whether it can be pressed now.
    void Show(IFrameWindow& window, const std::function<bool(std::int32_t function)>& isEnabled) const;
    /// Whether the user wants to see the bar; a next Show heeds it.
    void SetWanted(bool isBarWanted) { isWanted = isBarWanted; }
    bool IsWanted() const { return isWanted; }

    /// What a command of the bar does, or null.
    const UserButton* Find(int command) const;

  private:
    ButtonBarChoice choice;
    UserButtonBar bar;
    bool isWanted = true;
};

}  // namespace connectdialog::hosts
