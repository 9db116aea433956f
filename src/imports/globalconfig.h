// The global settings record, as far as the library looks into it.
#pragma once

#include "foundation/vunknown.h"
#include "profile/vprofile.h"
#include "profile/vprofile2.h"

namespace connectdialog {

/// How the children of a folder are ordered.
enum class SessionArrangement : int { kAlphabetical = 0, kLogical = 1, kManual = 2 };

/// Typed values that its provider loads and saves under the key "Global". The names in the store are the provider's.
class GlobalConfig : public VUnknown<IUnknownBase> {
  public:
    /// Writes what must be written. On failure: false; the values stay as they are in memory.
    virtual bool Save() = 0;

    /// Tells whether old data still waits for its one-time upgrade.
    VProfileText configUpgradeMarker;
    /// A SessionArrangement; any other number is alphabetical.
    VProfile<int> sessionArrangementMode;
    /// Children whose name begins with "." are not part of the session tree.
    VProfile<bool> hideDotEntries;
    /// Milliseconds; the defaults of the sessions.
    VProfile<int> lineSendDelay;
    VProfile<int> characterSendDelay;

  protected:
    ~GlobalConfig() override = default;
};

}  // namespace connectdialog
