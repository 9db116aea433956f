// A printer on a serial line.
#pragma once

#include <span>

#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "profile/vprofilecomposite.h"

namespace connectdialog {

/// A part of PrinterConfig. Its numbers are the platform's serial codes; they are only stored here.
class VSerialDeviceConfig : public VProfileComposite<VSerialDeviceConfig> {
  public:
    /// `key` may be null: then every member has its default.
    explicit VSerialDeviceConfig(VProfileKey* key);

    /// In storage order; the index is what GetMember takes.
    static std::span<const MemberAccess<VSerialDeviceConfig>> Members();

    VProfile<int> baudRate;
    VProfile<int> parity;
    VProfile<int> stopBits;
    VProfile<int> dataBits;
    VProfile<bool> dsrFlow;
    VProfile<int> dtrFlowControl;
    VProfile<bool> ctsFlow;
    VProfile<int> rtsFlowControl;
    VProfile<bool> xonFlow;
    VProfileText port;
};

}  // namespace connectdialog
