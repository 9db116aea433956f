// Running applications of this user, and messages to them: what other systems do with windows of a known class.
//
// An application announces itself under a class name for as long as it runs and answers messages, each a number with
// two arguments and one number as the answer. On POSIX it listens on a socket in the run-time folder of
// platform/filelock.h, under the rules told there; both ends ask the kernel whose process the other one is, and speak
// only to one of the same user. The kernel also tells whether a host still lives: a socket that nobody listens on any
// more is removed by whoever finds it.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog::platform {

/// A message as a host gets it. The arguments come from another process and are not trusted.
struct HostMessage {
    std::uint32_t number = 0;
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    /// False once the asker closed its end; it may have begun anew, so nothing may be written for it then. Ask under
    /// the lock of what is written. Valid during the call.
    std::function<bool()> isAwaited;
};

/// Answers a message with a number. Runs on the announcement's own thread; what it uses with others it guards.
using HostMessageHandler = std::function<std::uint64_t(const HostMessage& message)>;

/// Told the last message of a connection that ended, on the announcement's own thread; not those that the announcement
/// ends itself.
using HostGoneHandler = std::function<void(const HostMessage& last)>;

/// Means nothing to others.
using HostName = std::string;

/// This application, announced as long as the object lives.
class HostAnnouncement {
  public:
    /// `className` is any text that is not empty. One process may announce itself more than once.
    HostAnnouncement(std::u16string_view className, HostMessageHandler handler);
    /// The same for one that is sent messages through a HostConnection, and learns when such a connection ends.
    HostAnnouncement(std::u16string_view className, HostMessageHandler handler, HostGoneHandler gone);
    /// Waits for an answer that is being given.
    ~HostAnnouncement();
    HostAnnouncement(const HostAnnouncement&) = delete;
    HostAnnouncement& operator=(const HostAnnouncement&) = delete;

    /// 0, or the error for which the application could not be announced: others do not find it then.
    std::uint32_t GetError() const { return error; }
    /// Under which this announcement alone is reached.
    const HostName& GetName() const;

  private:
    class Listener;
    std::unique_ptr<Listener> listener;
    std::uint32_t error = 0;
};

struct FoundHosts {
    std::vector<HostName> names;  ///< some may have died without a word
    /// Not 0: there may be others, which cannot be looked for. The run-time folder cannot be used (5, 267...), or this
    /// process was not told which folder its session has, and there is one where it usually is (3).
    std::uint32_t error = 0;
};
/// The hosts that are announced under the class now.
FoundHosts FindHosts(std::u16string_view className);

enum class HostState : std::uint8_t {
    kAnswered,
    kGone,   ///< it runs no more
    kSilent  ///< it did not answer in time, or with what is no answer
};
struct HostAnswer {
    HostState state = HostState::kSilent;
    std::uint64_t value = 0;  ///< of kAnswered
};

/// Sends one message to all these hosts at once and waits until each has answered or is gone, at most until `deadline`.
/// The answers are in the order of the hosts.
std::vector<HostAnswer> SendToHosts(const std::vector<HostName>& hosts, std::uint32_t message, std::uint64_t first,
                                    std::uint64_t second, std::chrono::steady_clock::time_point deadline);

/// A connection that lasts, over which a host learns when this process ends, also when it is killed.
class HostConnection {
  public:
    /// `host` may come from anywhere. What is no host's name, or that of one that is gone, makes no connection.
    explicit HostConnection(const HostName& host);
    ~HostConnection();
    HostConnection(const HostConnection&) = delete;
    HostConnection& operator=(const HostConnection&) = delete;

    /// Sends one message and waits for its answer, up to two seconds. On failure: false, and so is every later call.
    bool Send(std::uint32_t message, std::uint64_t first, std::uint64_t second);

  private:
    void Close();

    int socket = -1;
};

}  // namespace connectdialog::platform
