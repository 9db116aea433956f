#include "hosts/common/openedsessions.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "hosts/common/sessionreport.h"
#include "hosts/common/terminalemulator.h"

namespace connectdialog::hosts {

namespace {

constexpr char16_t kClassName[] = u"Brennmark Software - sessions of a main window";

/// Exit codes are those of processes; what comes from another process may be anything.
constexpr std::uint64_t kGreatestExitCode = 255;

}  // namespace

OpenedSessions::OpenedSessions(const HostRun& run) : run(run) {}

OpenedSessions::~OpenedSessions() = default;

void OpenedSessions::Listen(std::function<void()> tell) {
    wake = std::move(tell);
    announcement = std::make_unique<platform::HostAnnouncement>(
        kClassName, [this](const platform::HostMessage& message) { return OnReport(message); },
        [this](const platform::HostMessage& last) { OnReporterGone(last); });
}

void OpenedSessions::Open(const TerminalEmulator& terminal, bool isInTab, const std::vector<HostSession>& sessions) {
    std::vector<Window> windows;
    windows.reserve(sessions.size());
    for (const HostSession& session : sessions)
        windows.push_back(Describe(rows.emplace_back(), terminal, isInTab, session));
    Start(std::move(windows));
}

void OpenedSessions::OpenAgain(const TerminalEmulator& terminal, bool isInTab, std::size_t row,
                               const HostSession& session) {
    rows[row] = {};
    std::vector<Window> windows;
    windows.push_back(Describe(rows[row], terminal, isInTab, session));
    Start(std::move(windows));
}

OpenedSessions::Window OpenedSessions::Describe(OpenedSession& row, const TerminalEmulator& terminal, bool isInTab,
                                                const HostSession& session) {
    row.id = ++lastId;
    row.path = session.path;
    row.protocol = session.protocol;
    row.host = session.host;
    if (!session.isStored) row.client = session.command.arguments;
    const std::string word = GetError() == 0 ? MakeReportWord(announcement->GetName(), row.id) : std::string();
    return {row.id, MakeWindowCommand(terminal, isInTab, run.storeUrl, session, word)};
}

void OpenedSessions::RemoveEnded() {
    std::erase_if(rows, &OpenedSession::IsOver);
}

void OpenedSessions::SetPath(const VUnicodeString& former, const VUnicodeString& path) {
    for (OpenedSession& row : rows)
        if (row.client.empty() && row.path == former) row.path = path;
}

/// One after the other: one that fails does not keep the others from opening. What opened the first window may end at
/// once, and then the others wait for nothing.
void OpenedSessions::Start(std::vector<Window> windows) {
    const auto isOver = [](const std::future<void>& opener) {
        return opener.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
    };
    std::erase_if(openers, isOver);
    openers.push_back(std::async(std::launch::async, [this, started = std::move(windows)] {
        std::chrono::milliseconds patience = kWindowPatience;
        VUnicodeString fault;
        for (const Window& window : started) {
            if (!StartWindow(window.command, patience, fault)) {
                Tell({window.id, OpenedState::kFailed, 0, fault});
                continue;
            }
            if (GetError() != 0) Tell({window.id, OpenedState::kOpen, 0, {}});
            patience = {};
        }
    }));
}

void OpenedSessions::Tell(News told) {
    {
        const std::scoped_lock lock(guard);
        news.push_back(std::move(told));
    }
    wake();
}

std::uint64_t OpenedSessions::OnReport(const platform::HostMessage& message) {
    const int exitCode = static_cast<int>(std::min(message.second, kGreatestExitCode));
    if (message.number == kReportOpen) Tell({message.first, OpenedState::kOpen, 0, {}});
    if (message.number == kReportEnded) Tell({message.first, OpenedState::kEnded, exitCode, {}});
    if (message.number == kReportFailed) Tell({message.first, OpenedState::kFailed, 0, {}});
    return 0;
}

void OpenedSessions::OnReporterGone(const platform::HostMessage& last) {
    if (last.number == kReportStarting) Tell({last.first, OpenedState::kFailed, 0, {}});
    if (last.number == kReportOpen) Tell({last.first, OpenedState::kEnded, 0, {}});
}

std::vector<VUnicodeString> OpenedSessions::TakeNews() {
    std::vector<News> taken;
    {
        const std::scoped_lock lock(guard);
        taken.swap(news);
    }
    std::vector<VUnicodeString> faults;
    for (const News& one : taken) {
        const auto row = std::ranges::find(rows, one.id, &OpenedSession::id);
        // A terminal emulator may end with its session's exit code; that opened its window.
        if (row == rows.end() || row->IsOver() || (!one.fault.IsEmpty() && row->state != OpenedState::kStarting))
            continue;
        row->state = one.state;
        row->exitCode = one.exitCode;
        // What kept several windows from opening is told once.
        if (!one.fault.IsEmpty() && (faults.empty() || faults.back() != one.fault)) faults.push_back(one.fault);
    }
    return faults;
}

}  // namespace connectdialog::hosts
