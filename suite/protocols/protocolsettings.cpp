#include "suite/protocols/protocolsettings.h"

#include <limits>

#include "profile/vprofilekey.h"
#include "suite/protocols/protocoltraits.h"

namespace connectdialog {

namespace {

/// The stored number is looked at before it is cut down to 16 bits, where 65558 would read as 22.
void LoadPort(VProfileKey* key, ProtocolSettings::Port& port, const VUnicodeString& name, unsigned short usual) {
    std::uint32_t number = 0;
    const bool found = key != nullptr && key->ReadDword(name.GetData(), number);
    const bool isPort = number <= std::numeric_limits<unsigned short>::max() && (number != 0 || usual == kNoPort);
    if (!found || isPort) {
        port.Load(key, name, usual);
        return;
    }
    port.Load(nullptr, name, 0);
    port.Set(usual);
}

void LoadBounded(VProfileKey* key, VProfile<int>& value, const VUnicodeString& name, const NumberRange& range) {
    value.Load(key, name, range.usual);
    if (value.Get() < range.least || value.Get() > range.most) value.Set(range.usual);
}

void LoadText(VProfileKey* key, VProfileText& text, const VUnicodeString& name) {
    text.Load(key, name, VUnicodeString());
}

}  // namespace

ProtocolSettings::ProtocolSettings(VProfileKey* key) {
    LoadPort(key, sshPort, u"SSH Port"_v, kSshPort);
    LoadText(key, sshIdentityFile, u"SSH Identity File"_v);
    LoadText(key, sshJumpHost, u"SSH Jump Host"_v);
    sshForwardAgent.Load(key, u"SSH Forward Agent"_v, false);
    sshForwardX11.Load(key, u"SSH Forward X11"_v, false);
    LoadText(key, sshRemoteCommand, u"SSH Remote Command"_v);

    LoadPort(key, telnetPort, u"Telnet Port"_v, kTelnetPort);
    LoadPort(key, telnetSslPort, u"Telnet/SSL Port"_v, kTelnetSslPort);
    LoadPort(key, rloginPort, u"RLogin Port"_v, kRLoginPort);
    LoadPort(key, rawPort, u"Raw Port"_v, kNoPort);
    LoadPort(key, ftpPort, u"FTP Port"_v, kFtpPort);
    LoadPort(key, ftpSslPort, u"FTP/SSL Port"_v, kFtpSslPort);

    LoadText(key, serialDevice, u"Serial Device"_v);
    LoadBounded(key, serialBaudRate, u"Serial Baud Rate"_v, kSerialBaudRates);
    LoadBounded(key, serialDataBits, u"Serial Data Bits"_v, kSerialDataBits);
    LoadBounded(key, serialParity, u"Serial Parity"_v, kSerialParities);
    LoadBounded(key, serialStopBits, u"Serial Stop Bits"_v, kSerialStopBits);
    LoadBounded(key, serialFlowControl, u"Serial Flow Control"_v, kSerialFlowControls);

    LoadText(key, tapiPhoneNumber, u"TAPI Phone Number"_v);
    LoadText(key, tapiModemDevice, u"TAPI Modem Device"_v);
    LoadText(key, localShellCommand, u"Local Shell Command"_v);
}

}  // namespace connectdialog
