// What was opened from the main window in this run, and how it fares.
//
// A session opens in a window of a terminal emulator, in which this program runs again and tells this process through
// hosts/common/sessionreport.h. Terminal emulators are started on threads of their own: they may take their time.
#pragma once

#include <cstdint>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "foundation/vunicodestring.h"
#include "hosts/common/hostrun.h"
#include "hosts/common/hostsession.h"
#include "platform/runninghosts.h"

namespace connectdialog::hosts {

class TerminalEmulator;

enum class OpenedState : std::uint8_t { kStarting, kOpen, kEnded, kFailed };

struct OpenedSession {
    std::uint64_t id = 0;  ///< another one each time it is opened
    VUnicodeString path;
    VUnicodeString protocol;
    VUnicodeString host;
    std::vector<std::string> client;  ///< of a connection that no store has; empty for a session
    OpenedState state = OpenedState::kStarting;
    int exitCode = 0;  ///< of kEnded

    bool IsOver() const { return state == OpenedState::kEnded || state == OpenedState::kFailed; }
};

/// For one thread, the one that made it; only what Listen is given is called on others. Requires: Listen comes first,
/// before any other call.
class OpenedSessions {
  public:
    /// `run` stays the caller's and outlives it.
    explicit OpenedSessions(const HostRun& run);
    /// Waits for terminal emulators that are being started, and calls Listen's `tell` meanwhile. What is open stays
    /// open.
    ~OpenedSessions();
    OpenedSessions(const OpenedSessions&) = delete;
    OpenedSessions& operator=(const OpenedSessions&) = delete;

    /// From now on `tell` is called on any thread when there is news to take; it only wakes the thread that takes it.
    /// Requires: once, and `tell` can be called until this is gone. On failure: GetError is not 0.
    void Listen(std::function<void()> tell);

    const std::vector<OpenedSession>& GetRows() const { return rows; }
    /// 0, or the error for which nothing will be told of sessions: they count as open once their window was started.
    std::uint32_t GetError() const { return announcement->GetError(); }

    /// Opens each in a window, with a row at the end, and returns before they are open: kStarting. On failure: TakeNews
    /// tells, and the row is kFailed.
    void Open(const TerminalEmulator& terminal, bool isInTab, const std::vector<HostSession>& sessions);
    /// Opens a session like this in place of a row. Requires: `row` is an index of GetRows, of one that is over.
    void OpenAgain(const TerminalEmulator& terminal, bool isInTab, std::size_t row, const HostSession& session);
    /// A session that is open keeps its row until its end, where that will be told.
    bool CanRemove(const OpenedSession& row) const { return row.state != OpenedState::kOpen || GetError() != 0; }
    /// What is open in it stays open. Requires: `row` is an index of GetRows.
    void Remove(std::size_t row) { rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(row)); }
    void RemoveEnded();
    /// The session at a path stands at another now: all of its rows show that.
    void SetPath(const VUnicodeString& former, const VUnicodeString& path);

    /// Brings the rows up to date. Gives what the user should know: why windows could not be opened.
    std::vector<VUnicodeString> TakeNews();

  private:
    struct News {
        std::uint64_t id;
        OpenedState state;
        int exitCode;
        VUnicodeString fault;
    };
    struct Window {
        std::uint64_t id;
        std::vector<std::string> command;
    };

    Window Describe(OpenedSession& row, const TerminalEmulator& terminal, bool isInTab, const HostSession& session);
    void Start(std::vector<Window> windows);
    void Tell(News told);
    std::uint64_t OnReport(const platform::HostMessage& message);
    void OnReporterGone(const platform::HostMessage& last);

    const HostRun& run;
    std::function<void()> wake;
    std::vector<OpenedSession> rows;
    std::uint64_t lastId = 0;
    std::mutex guard;
    std::vector<News> news;
    std::unique_ptr<platform::HostAnnouncement> announcement;  // these threads use the others
    std::vector<std::future<void>> openers;
};

}  // namespace connectdialog::hosts
