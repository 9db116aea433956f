// The side of platform/runninghosts.h that answers.
#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include "platform/lasterror.h"
#include "platform/posix/hostsocket.h"
#include "platform/posix/nativefile.h"
#include "platform/posix/runtimefile.h"
#include "platform/randombytes.h"
#include "platform/runninghosts.h"

namespace connectdialog::platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostPeers = 16;
/// With connections that last.
constexpr std::size_t kMostLastingPeers = 512;
constexpr int kBacklog = 16;
/// What a peer has for sending its message once it is connected.
constexpr std::chrono::seconds kPeerPatience{2};
/// After the system refused to accept: descriptors may be short for a moment.
constexpr std::chrono::milliseconds kAcceptPause{50};
/// A socket that has no final name for so long belongs to a process that ended while it was made.
constexpr std::time_t kLongestMaking = 60;

struct Peer {
    int socket;
    Clock::time_point until;
    std::optional<HostPacket> last;  ///< of a connection that lasts
};

std::string RandomDigits() {
    std::array<std::uint8_t, 8> bytes{};
    std::string digits;
    if (!FillRandomBytes(bytes.data(), bytes.size())) return digits;
    for (const std::uint8_t byte : bytes) {
        digits += "0123456789abcdef"[byte >> 4];
        digits += "0123456789abcdef"[byte & 0xF];
    }
    return digits;
}

bool IsUnfinished(int folder, const std::string& name) {
    struct stat info {};
    return name.starts_with(kUnfinishedPrefix) && fstatat(folder, name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISSOCK(info.st_mode) && info.st_mtime < std::time(nullptr) - kLongestMaking;
}

bool IsOfDeadHost(int folder, const std::string& name, const std::string& prefix) {
    if (!name.starts_with(prefix)) return false;
    const OwnedDescriptor socket(MakeHostSocket());
    const sockaddr_un address = HostAddress(folder, name);
    return socket.number >= 0 &&
           connect(socket.number, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 &&
           errno == ECONNREFUSED;
}

/// Of hosts, those whose name begins with `prefix`. Whoever looks for a class removes them too, but nobody may.
void RemoveSocketsOfTheDead(int folder, const std::string& prefix) {
    DIR* const listing = fdopendir(fcntl(folder, F_DUPFD_CLOEXEC, 0));
    if (listing == nullptr) return;
    while (const dirent* entry = readdir(listing)) {
        const std::string name = entry->d_name;
        if (IsUnfinished(folder, name) || IsOfDeadHost(folder, name, prefix)) unlinkat(folder, name.c_str(), 0);
    }
    closedir(listing);
}

}  // namespace

/// The socket and the thread that serves it.
class HostAnnouncement::Listener {
  public:
    Listener(HostMessageHandler handler, HostGoneHandler gone)
        : handler(std::move(handler)),
          gone(std::move(gone)),
          folder(OpenRuntimeFolder()),
          socket(MakeHostSocket()),
          wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() {
        if (!name.empty()) unlinkat(folder.number, name.c_str(), 0);
        if (!thread.joinable()) return;
        eventfd_write(wake.number, 1);
        thread.join();
    }

    /// On failure: false with the last error.
    bool Start(std::u16string_view className) {
        if (folder.number < 0 || socket.number < 0) return false;
        if (wake.number < 0) return FailFromErrno();
        const std::string digits = RandomDigits();
        if (digits.empty()) return false;
        // It gets its name when it listens: before that it would look like the socket of a dead host.
        const std::string prefix = HostNamePrefix(className);
        RemoveSocketsOfTheDead(folder.number, prefix);
        const std::string unfinished = kUnfinishedPrefix + digits;
        const sockaddr_un address = HostAddress(folder.number, unfinished);
        if (bind(socket.number, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
            return FailFromErrno();
        const std::string finished = prefix + digits;
        if (listen(socket.number, kBacklog) != 0 ||
            renameat(folder.number, unfinished.c_str(), folder.number, finished.c_str()) != 0) {
            FailFromErrno();
            unlinkat(folder.number, unfinished.c_str(), 0);
            return false;
        }
        name = finished;
        StartThread();
        return true;
    }

    const std::string& GetName() const { return name; }

  private:
    /// Signals are for the threads that the application knows of.
    void StartThread() {
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
        thread = std::thread([this] { Serve(); });
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    void Serve() {
        while (true) {
            std::vector<pollfd> events = {{wake.number, POLLIN, 0}};
            for (const Peer& peer : peers) events.push_back({peer.socket, POLLIN, 0});
            const std::size_t most = gone ? kMostLastingPeers : kMostPeers;
            if (peers.size() < most) events.push_back({socket.number, POLLIN, 0});
            const bool hasDeadline =
                !std::ranges::all_of(peers, [](const Peer& peer) { return peer.last.has_value(); });
            poll(events.data(), static_cast<nfds_t>(events.size()), hasDeadline ? 100 : -1);
            if (events[0].revents != 0) break;
            ServePeers(events);
            if (events.back().fd == socket.number && events.back().revents != 0) Accept();
        }
        for (const Peer& peer : peers) close(peer.socket);
    }

    /// `events` has that of peer i at i + 1.
    void ServePeers(const std::vector<pollfd>& events) {
        const Clock::time_point now = Clock::now();
        std::vector<Peer> waiting;
        for (std::size_t i = 0; i < peers.size(); ++i) {
            const bool isServed = events[i + 1].revents != 0 && Answer(peers[i]);
            if (isServed || peers[i].until < now)
                close(peers[i].socket);
            else
                waiting.push_back(peers[i]);
        }
        peers = std::move(waiting);
    }

    /// True when nothing more is to be expected of the peer.
    bool Answer(Peer& peer) {
        HostPacket packet;
        const Received received = ReceivePacket(peer.socket, packet);
        if (received == Received::kNothingYet) return false;
        if (received != Received::kPacket) {
            if (peer.last) gone(ToMessage(peer.socket, *peer.last));
            return true;
        }
        SendPacket(peer.socket, {packet.message, handler(ToMessage(peer.socket, packet)), 0});
        if (!gone) return true;
        peer.last = packet;
        peer.until = Clock::time_point::max();
        return false;
    }
    static HostMessage ToMessage(int peer, const HostPacket& packet) {
        return {packet.message, packet.first, packet.second, [peer] { return IsPeerThere(peer); }};
    }

    void Accept() {
        const int peer = accept4(socket.number, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (peer >= 0 && IsOwnPeer(peer))
            peers.push_back({peer, Clock::now() + kPeerPatience, std::nullopt});
        else if (peer >= 0)
            close(peer);
        else if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED)
            std::this_thread::sleep_for(kAcceptPause);
    }

    const HostMessageHandler handler;
    const HostGoneHandler gone;
    const OwnedDescriptor folder;
    const OwnedDescriptor socket;
    const OwnedDescriptor wake;
    std::string name;
    std::vector<Peer> peers;  ///< the thread's own
    std::thread thread;
};

HostAnnouncement::HostAnnouncement(std::u16string_view className, HostMessageHandler handler)
    : HostAnnouncement(className, std::move(handler), nullptr) {}

HostAnnouncement::HostAnnouncement(std::u16string_view className, HostMessageHandler handler, HostGoneHandler gone)
    : listener(std::make_unique<Listener>(std::move(handler), std::move(gone))) {
    if (className.empty())
        error = kInvalidParameter;
    else if (!listener->Start(className))
        error = GetLastErrorCode();
}

HostAnnouncement::~HostAnnouncement() = default;

const HostName& HostAnnouncement::GetName() const {
    return listener->GetName();
}

}  // namespace connectdialog::platform
