// What a dialog can stand over.
#pragma once

namespace connectdialog {

/// A dialog of the library, or a window of the host's: a back end of the dialogs recognises what it made itself and
/// treats any other as no window.
class VWindow {
  public:
    virtual ~VWindow() = default;
};

}  // namespace connectdialog
