// A picture of the host's.
#pragma once

namespace connectdialog {

/// What it looks like is known to the back end of the dialogs that the host uses it with; any other shows its own.
class VIcon {
  public:
    virtual ~VIcon() = default;
};

}  // namespace connectdialog
