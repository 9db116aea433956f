// What distinguishes one protocol from the next: a row of constants each.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "imports/connectprotocoltable.h"
#include "profile/vprofilecomposite.h"
#include "suite/protocols/protocolsettings.h"

namespace connectdialog {

// The ports that the protocols are registered for.
inline constexpr unsigned short kNoPort = 0;
inline constexpr unsigned short kFtpPort = 21;
inline constexpr unsigned short kSshPort = 22;
inline constexpr unsigned short kTelnetPort = 23;
inline constexpr unsigned short kRLoginPort = 513;
inline constexpr unsigned short kFtpSslPort = 990;
inline constexpr unsigned short kTelnetSslPort = 992;

/// What a session of the protocol is known by, and cannot connect without.
enum class ProtocolTarget : std::uint8_t { kHost, kSerialDevice, kPhoneNumber, kNothing };

/// Which client opens it; see launchclients.cpp.
enum class LaunchClient : std::uint8_t {
    kNone,
    kSsh,
    kSsh1,
    kTelnet,
    kTelnetSsl,
    kRLogin,
    kSerial,
    kShell,
    kRaw,
    kSftp,
    kScp,
    kFtp,
    kFtpSslImplicit,
    kFtpSslExplicit
};

using ProtocolMember = MemberAccess<ProtocolSettings>;

struct ProtocolTraits {
    std::u16string_view name;
    /// What the protocol saves besides host, firewall and user, in storage order.
    std::span<const ProtocolMember> members;
    /// The port's member, or null; and the value it has when nobody set it.
    ProtocolSettings::Port ProtocolSettings::*port;
    unsigned short defaultPort;
    ProtocolTarget target;
    LaunchClient client;
};

/// The protocol of exactly that name, or null.
const ProtocolTraits* FindProtocolTraits(std::u16string_view name);

/// All protocols of all kinds, with their factories; "None" has none. The rows of the running application's kind stand
/// first; the order within each kind is the same in every application.
const ConnectProtocolTable& GetReferenceProtocolTable();

}  // namespace connectdialog
