#include "platform/posix/hostsocket.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <span>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/codepage.h"
#include "platform/lasterror.h"

namespace connectdialog::platform {

namespace {

constexpr std::uint32_t kMark = 0x6D684D42;
constexpr std::uint32_t kVersion = 1;

using PacketBytes = std::array<std::uint8_t, HostPacket::kSize>;

template <class Number>
void Put(PacketBytes& bytes, std::size_t at, Number number) {
    for (std::size_t i = 0; i < sizeof number; ++i) bytes[at + i] = static_cast<std::uint8_t>(number >> (8 * i));
}

template <class Number>
Number Take(const PacketBytes& bytes, std::size_t at) {
    Number number = 0;
    for (std::size_t i = sizeof number; i-- > 0;) number = static_cast<Number>(number << 8 | bytes[at + i]);
    return number;
}

}  // namespace

std::string HostNamePrefix(std::u16string_view className) {
    std::uint32_t hash = 0x811C9DC5;
    for (const char character : ToNarrow(className)) hash = (hash ^ static_cast<std::uint8_t>(character)) * 0x01000193;
    std::array<char, 16> prefix{};
    std::snprintf(prefix.data(), prefix.size(), "host.%08x.", hash);
    return prefix.data();
}

sockaddr_un HostAddress(int folder, const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d/%s", folder, name.c_str());
    return address;
}

int MakeHostSocket() {
    const int made = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (made < 0) FailFromErrno();
    return made;
}

bool IsOwnPeer(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

bool IsPeerThere(int socket) {
    char ignored = 0;
    const ssize_t size = recv(socket, &ignored, sizeof ignored, MSG_PEEK | MSG_DONTWAIT);
    return size > 0 || (size < 0 && (errno == EAGAIN || errno == EINTR));
}

bool SendPacket(int socket, const HostPacket& packet) {
    PacketBytes bytes{};
    Put(bytes, 0, kMark);
    Put(bytes, 4, kVersion);
    Put(bytes, 8, packet.message);
    Put(bytes, 16, packet.first);
    Put(bytes, 24, packet.second);
    return send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT) == static_cast<ssize_t>(bytes.size());
}

Received ReceivePacket(int socket, HostPacket& packet) {
    PacketBytes bytes{};
    const ssize_t size = recv(socket, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_TRUNC);
    if (size < 0) return errno == EAGAIN || errno == EINTR ? Received::kNothingYet : Received::kEnd;
    if (size == 0) return Received::kEnd;
    const bool isPacket = size == static_cast<ssize_t>(bytes.size()) && Take<std::uint32_t>(bytes, 0) == kMark &&
                          Take<std::uint32_t>(bytes, 4) == kVersion;
    if (!isPacket) return Received::kGarbage;
    packet = {Take<std::uint32_t>(bytes, 8), Take<std::uint64_t>(bytes, 16), Take<std::uint64_t>(bytes, 24)};
    return Received::kPacket;
}

}  // namespace connectdialog::platform
