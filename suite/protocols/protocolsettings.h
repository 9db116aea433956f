// The values that the protocols of one session save, all in one object.
#pragma once

#include <vector>

#include "config/numberrange.h"
#include "imports/connectconfig.h"
#include "profile/vprofile.h"
#include "profile/vprofile2.h"

namespace connectdialog {

/// Made once for each session, by the first protocol that asks, and read from the session's key in one pass; the
/// protocols are views on it. So a session's twenty protocols cost one object, and protocols of one family (SSH2, SSH1,
/// SFTP, SCP) have one port and one identity file between them.
///
/// A value's name in the store is its family and what it sets: "SSH Port", "Serial Baud Rate". All names, defaults and
/// corrections stand in protocolsettings.cpp. A number out of its range is corrected in the value and not in the stored
/// copy, so that the session shows as changed and its next save repairs it.
class ProtocolSettings : public VUnknown<ISharedConfig> {
  public:
    /// `key` may be null: then every value has its default.
    explicit ProtocolSettings(VProfileKey* key);

    ISharedConfig* Clone() const override { return new ProtocolSettings(*this); }

    using Port = VProfile<unsigned short>;  ///< 1 to 65535; 0 only where the family has no default: not set

    // SSH2, SSH1, SFTP, SCP.
    Port sshPort;
    VProfileText sshIdentityFile;  ///< a path; empty: what the client finds itself
    VProfileText sshJumpHost;      ///< hops from near to far: `[user@]host[:port]`, separated by commas
    VProfile<bool> sshForwardAgent;
    VProfile<bool> sshForwardX11;
    VProfileText sshRemoteCommand;  ///< run there in place of a login shell

    // One family each.
    Port telnetPort;
    Port telnetSslPort;
    Port rloginPort;
    Port rawPort;
    Port ftpPort;     ///< FTP, and FTP/SSL (explicit)
    Port ftpSslPort;  ///< FTP/SSL (implicit)

    // Serial.
    VProfileText serialDevice;  ///< a path, or a name in /dev
    VProfile<int> serialBaudRate;
    VProfile<int> serialDataBits;     ///< 5 to 8
    VProfile<int> serialParity;       ///< a SerialParity
    VProfile<int> serialStopBits;     ///< 1 or 2
    VProfile<int> serialFlowControl;  ///< a SerialFlowControl

    // TAPI.
    VProfileText tapiPhoneNumber;
    VProfileText tapiModemDevice;

    /// A program with its arguments: words separated by blanks, `"` round a word that has blanks in it. Empty: the
    /// user's shell.
    VProfileText localShellCommand;

    /// Those that do not go over to a protocol of another family. Not saved.
    std::vector<Port ProtocolSettings::*> releasedPorts;

  private:
    ProtocolSettings(const ProtocolSettings&) = default;
    ~ProtocolSettings() override = default;
};

inline constexpr NumberRange kSerialBaudRates{9600, 50, 4000000};
inline constexpr NumberRange kSerialDataBits{8, 5, 8};
inline constexpr NumberRange kSerialParities{0, 0, 2};
inline constexpr NumberRange kSerialStopBits{1, 1, 2};
inline constexpr NumberRange kSerialFlowControls{0, 0, 2};

enum class SerialParity : int { kNone = 0, kOdd = 1, kEven = 2 };
enum class SerialFlowControl : int { kNone = 0, kHardware = 1, kSoftware = 2 };

}  // namespace connectdialog
