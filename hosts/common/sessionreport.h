// How a host that runs in a window of a terminal emulator tells the main window that opened it how its session fares.
//
// The main window is announced (platform/runninghosts.h); its name and the number of the session stand among the words
// that open the window. The connection's end is the session's end, so that of a window that was killed is told too.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/runninghosts.h"

namespace connectdialog::hosts {

/// Each has the number of the session as the first argument. kReportEnded has the exit code as the second.
enum ReportMessage : std::uint32_t { kReportStarting = 1, kReportOpen = 2, kReportEnded = 3, kReportFailed = 4 };

/// The word that names a session of a main window: `window` is the name of its announcement, `session` a number that it
/// knows the session by.
std::string MakeReportWord(const platform::HostName& window, std::uint64_t session);

/// For one thread. Each call waits for the main window's answer, up to two seconds; after one that got none nothing
/// more is sent. The first that ends the session holds.
class SessionReport {
  public:
    /// Of the session that the word names. A word that names none, and a main window that runs no more, is told
    /// nothing.
    explicit SessionReport(const std::string& word);

    /// Whether the main window answered so far.
    bool IsHeard() const { return connection != nullptr; }

    /// The client is being started.
    void Open() { Tell(kReportOpen, 0); }
    /// The last client ended. Requires: `exitCode` is a process's, 0 to 255.
    void End(int exitCode) { Tell(kReportEnded, static_cast<std::uint64_t>(exitCode)); }
    /// No client could be started.
    void Fail() { Tell(kReportFailed, 0); }

  private:
    void Tell(ReportMessage message, std::uint64_t value);

    std::unique_ptr<platform::HostConnection> connection;
    std::uint64_t session = 0;
};

}  // namespace connectdialog::hosts
