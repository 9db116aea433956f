// What both ends of a message between hosts share: where the sockets stand and how a packet looks.
//
// A socket in the run-time folder is named `host.CCCCCCCC.NNNNNNNNNNNNNNNN`: the FNV-1a hash of the class name (UTF-8)
// and random digits, both hexadecimal; so no name is ever used twice. While it is being made it is called `new.` and
// the digits. Each connection carries one packet (SOCK_SEQPACKET) there and one back.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/un.h>

namespace connectdialog::platform {

/// How the names of sockets begin that do not listen yet.
inline constexpr char kUnfinishedPrefix[] = "new.";
/// And of those that do.
inline constexpr char kHostPrefix[] = "host.";

/// `host.` with the hash and the dot behind it: how the names of all hosts of the class begin.
std::string HostNamePrefix(std::u16string_view className);

/// The address of a socket in an open folder. A path through the descriptor is short, however long that of the folder
/// is, and leads into the folder that was looked at.
sockaddr_un HostAddress(int folder, const std::string& name);

/// A socket for packets, closed when another program is started; -1 with the last error.
int MakeHostSocket();

/// Whether the process at the other end belongs to this user.
bool IsOwnPeer(int socket);

/// Whether the other end is still open.
bool IsPeerThere(int socket);

/// A message or its answer (then `first` is the value). In the packet: the mark "BMhm", a version and the message (32
/// bits each), 4 zero bytes and the two numbers (64 bits each), all little-endian.
struct HostPacket {
    static constexpr std::size_t kSize = 32;
    std::uint32_t message = 0;
    std::uint64_t first = 0;
    std::uint64_t second = 0;
};

/// Never waits and never raises a signal. False when the packet does not leave.
bool SendPacket(int socket, const HostPacket& packet);

enum class Received : std::uint8_t { kPacket, kNothingYet, kEnd, kGarbage };
/// Never waits.
Received ReceivePacket(int socket, HostPacket& packet);

}  // namespace connectdialog::platform
