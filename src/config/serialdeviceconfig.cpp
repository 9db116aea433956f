#include "config/serialdeviceconfig.h"

#include <array>

#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {
constexpr int kLineIsHigh = 1;
constexpr int kHandshake = 2;

/// The line at our end follows the switch for the one at the far end until it is stored itself.
int FlowControlBesides(const VProfile<bool>& flow) {
    return flow.Get() ? kHandshake : kLineIsHigh;
}
}  // namespace

std::span<const MemberAccess<VSerialDeviceConfig>> VSerialDeviceConfig::Members() {
    using S = VSerialDeviceConfig;
    static constexpr auto kMembers = std::to_array<MemberAccess<S>>({
        Member<S, &S::baudRate>,
        Member<S, &S::parity>,
        Member<S, &S::stopBits>,
        Member<S, &S::dataBits>,
        Member<S, &S::dsrFlow>,
        Member<S, &S::dtrFlowControl>,
        Member<S, &S::ctsFlow>,
        Member<S, &S::rtsFlowControl>,
        Member<S, &S::xonFlow>,
        Member<S, &S::port>,
    });
    return kMembers;
}

VSerialDeviceConfig::VSerialDeviceConfig(VProfileKey* key) {
    baudRate.Load(key, u"Printer Baud Rate"_v, 38400);
    parity.Load(key, u"Printer Parity"_v, 0);
    stopBits.Load(key, u"Printer Stop Bits"_v, 0);
    dataBits.Load(key, u"Printer Data Bits"_v, 8);
    dsrFlow.Load(key, u"Printer DSR Flow"_v, false);
    dtrFlowControl.Load(key, u"Printer DTR Flow Control"_v, FlowControlBesides(dsrFlow));
    ctsFlow.Load(key, u"Printer CTS Flow"_v, true);
    rtsFlowControl.Load(key, u"Printer RTS Flow Control"_v, FlowControlBesides(ctsFlow));
    xonFlow.Load(key, u"Printer XON Flow"_v, false);
    port.Load(key, u"Printer Port"_v, VUnicodeString());
}

}  // namespace connectdialog
