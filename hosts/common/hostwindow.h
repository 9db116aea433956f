// The host's windows on the user's screen.
#pragma once

#include <memory>

#include "foundation/vunicodestring.h"
#include "hosts/common/hostkind.h"

namespace connectdialog {
class VIcon;
}

namespace connectdialog::hosts {

/// As long as it lives dialogs can be shown. One at a time.
class HostWindow {
  public:
    virtual ~HostWindow() = default;
    virtual VIcon* GetIcon() = 0;
};

/// Takes the screen. On failure: null, and `fault` tells why: the session has no screen, or this program was built
/// without windows.
std::unique_ptr<HostWindow> OpenHostWindow(const HostKind& kind, VUnicodeString& fault);

}  // namespace connectdialog::hosts
