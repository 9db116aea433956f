// The side of platform/runninghosts.h that asks.
#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/knownfolders.h"
#include "platform/lasterror.h"
#include "platform/posix/hostsocket.h"
#include "platform/posix/nativefile.h"
#include "platform/posix/runtimefile.h"
#include "platform/runninghosts.h"

namespace connectdialog::platform {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// Hosts of the session announce themselves in its run-time folder; a process that was not told of it looks elsewhere.
bool IsElsewhere() {
    const std::string usual = "/run/user/" + std::to_string(geteuid());
    return GetKnownFolder(KnownFolder::kRuntime).empty() && access(usual.c_str(), F_OK) == 0;
}

/// How long a host whose queue is full is left alone.
constexpr milliseconds kConnectPause{10};
/// How long a connection that lasts waits for an answer.
constexpr milliseconds kAnswerPatience{2000};

milliseconds TimeUntil(Clock::time_point deadline) {
    return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(deadline - Clock::now()));
}

/// One message on its way to one host.
class Dispatch {
  public:
    Dispatch(int folder, const HostName& name, const HostPacket& packet)
        : folder(folder), name(name), packet(packet), socket(MakeHostSocket()) {
        if (socket.number < 0) Settle(HostState::kSilent);
    }

    bool IsSettled() const { return isSettled; }
    bool IsConnected() const { return isConnected; }
    int GetSocket() const { return socket.number; }
    const HostAnswer& GetAnswer() const { return answer; }

    /// Stays unconnected while the host's queue is full.
    void Connect() {
        const sockaddr_un address = HostAddress(folder, name);
        if (connect(socket.number, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
            isConnected = true;
            if (!IsOwnPeer(socket.number) || !SendPacket(socket.number, packet)) Settle(HostState::kSilent);
        } else if (errno == ECONNREFUSED) {
            unlinkat(folder, name.c_str(), 0);
            Settle(HostState::kGone);
        } else if (errno == ENOENT) {
            Settle(HostState::kGone);
        } else if (errno != EAGAIN && errno != EINTR) {
            Settle(HostState::kSilent);
        }
    }
    void Receive() {
        HostPacket received;
        switch (ReceivePacket(socket.number, received)) {
            case Received::kPacket:
                answer.value = received.first;
                Settle(received.message == packet.message ? HostState::kAnswered : HostState::kSilent);
                break;
            case Received::kEnd:
                Settle(HostState::kGone);
                break;
            case Received::kGarbage:
                Settle(HostState::kSilent);
                break;
            case Received::kNothingYet:
                break;
        }
    }

  private:
    void Settle(HostState state) {
        answer.state = state;
        isSettled = true;
    }

    int folder;
    const HostName& name;
    const HostPacket& packet;
    OwnedDescriptor socket;
    HostAnswer answer;
    bool isConnected = false;
    bool isSettled = false;
};

/// Brings every message one step further; waits for the hosts, until the deadline at most.
void Advance(std::vector<std::unique_ptr<Dispatch>>& dispatches, Clock::time_point deadline) {
    std::vector<pollfd> events;
    std::vector<Dispatch*> waiting;
    bool isConnecting = false;
    for (const auto& dispatch : dispatches) {
        if (!dispatch->IsSettled() && !dispatch->IsConnected()) dispatch->Connect();
        if (dispatch->IsSettled()) continue;
        isConnecting = isConnecting || !dispatch->IsConnected();
        if (!dispatch->IsConnected()) continue;
        events.push_back({dispatch->GetSocket(), POLLIN, 0});
        waiting.push_back(dispatch.get());
    }
    if (waiting.empty() && !isConnecting) return;
    const milliseconds wait = isConnecting ? std::min(kConnectPause, TimeUntil(deadline)) : TimeUntil(deadline);
    poll(events.data(), static_cast<nfds_t>(events.size()), static_cast<int>(wait.count()));
    for (std::size_t i = 0; i < waiting.size(); ++i)
        if (events[i].revents != 0) waiting[i]->Receive();
}

}  // namespace

FoundHosts FindHosts(std::u16string_view className) {
    const int folder = OpenRuntimeFolder();
    if (folder < 0) return {{}, GetLastErrorCode()};
    DIR* const listing = fdopendir(folder);
    if (listing == nullptr) {
        FailFromErrno();
        close(folder);
        return {{}, GetLastErrorCode()};
    }
    FoundHosts hosts{{}, IsElsewhere() ? kPathNotFound : kSuccess};
    const std::string prefix = HostNamePrefix(className);
    while (const dirent* entry = readdir(listing))
        if (std::string_view(entry->d_name).starts_with(prefix)) hosts.names.emplace_back(entry->d_name);
    closedir(listing);
    return hosts;
}

std::vector<HostAnswer> SendToHosts(const std::vector<HostName>& hosts, std::uint32_t message, std::uint64_t first,
                                    std::uint64_t second, Clock::time_point deadline) {
    const OwnedDescriptor folder(hosts.empty() ? -1 : OpenRuntimeFolder());
    std::vector<HostAnswer> answers;
    if (folder.number < 0) {
        answers.resize(hosts.size());
        return answers;
    }
    const HostPacket packet{message, first, second};
    std::vector<std::unique_ptr<Dispatch>> dispatches;
    dispatches.reserve(hosts.size());
    for (const HostName& host : hosts) dispatches.push_back(std::make_unique<Dispatch>(folder.number, host, packet));
    const auto isSettled = [](const auto& dispatch) { return dispatch->IsSettled(); };
    do {
        Advance(dispatches, deadline);
    } while (!std::ranges::all_of(dispatches, isSettled) && Clock::now() < deadline);
    for (const auto& dispatch : dispatches) answers.push_back(dispatch->GetAnswer());
    return answers;
}

HostConnection::HostConnection(const HostName& host) {
    const bool isName = host.starts_with(kHostPrefix) && host.find('/') == std::string::npos;
    const OwnedDescriptor folder(isName ? OpenRuntimeFolder() : -1);
    if (folder.number < 0) return;
    socket = MakeHostSocket();
    const sockaddr_un address = HostAddress(folder.number, host);
    const bool isConnected =
        socket >= 0 && connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (!isConnected || !IsOwnPeer(socket)) Close();
}

HostConnection::~HostConnection() {
    Close();
}

void HostConnection::Close() {
    if (socket >= 0) close(socket);
    socket = -1;
}

bool HostConnection::Send(std::uint32_t message, std::uint64_t first, std::uint64_t second) {
    if (socket < 0) return false;
    // An answer that nobody reads would undo what was sent when this end closes.
    HostPacket answer;
    pollfd event{socket, POLLIN, 0};
    const bool isAnswered = SendPacket(socket, {message, first, second}) &&
                            poll(&event, 1, static_cast<int>(kAnswerPatience.count())) == 1 &&
                            ReceivePacket(socket, answer) == Received::kPacket && answer.message == message;
    if (!isAnswered) Close();
    return isAnswered;
}

}  // namespace connectdialog::platform
