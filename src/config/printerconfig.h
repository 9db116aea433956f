// How a session prints.
#pragma once

#include <span>

#include "config/serialdeviceconfig.h"
#include "profile/vlogfont.h"
#include "profile/vmargindata.h"
#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "profile/vprofilecomposite.h"

namespace connectdialog {

/// A part of SessionConfig, read from the session's key: page, printer font, and the way that pass-through printing
/// goes out. Wrong values are corrected as there.
class PrinterConfig : public VProfileComposite<PrinterConfig> {
  public:
    /// `key` may be null: then every member has its default.
    explicit PrinterConfig(VProfileKey* key);

    /// In storage order; the index is what GetMember takes.
    static std::span<const MemberAccess<PrinterConfig>> Members();

    // The numbers are the platform's printer codes; they are only stored here.

    VProfileMarginData pageMargins;  ///< finite
    VProfileLogFont font;
    VProfile<int> pageOrientation;
    VProfile<int> paperSize;
    VProfile<int> paperSource;
    VProfileText printerName;
    VProfile<bool> disablePassThrough;
    VProfile<bool> bufferPassThrough;
    VProfile<bool> forceBlackOnWhite;
    VProfile<bool> useRawMode;
    VSerialDeviceConfig serialDevice;
    VProfile<bool> usePrinterPort;  ///< never together with useRawMode
};

}  // namespace connectdialog
