#include "hosts/common/sessionreport.h"

#include <charconv>

namespace connectdialog::hosts {

namespace {
/// Stands before the number.
constexpr char kBeforeNumber = '-';
}  // namespace

std::string MakeReportWord(const platform::HostName& window, std::uint64_t session) {
    return window + kBeforeNumber + std::to_string(session);
}

SessionReport::SessionReport(const std::string& word) {
    const std::size_t end = word.rfind(kBeforeNumber);
    if (end == std::string::npos) return;
    const auto [last, error] = std::from_chars(word.data() + end + 1, word.data() + word.size(), session);
    if (error != std::errc() || last != word.data() + word.size()) return;
    connection = std::make_unique<platform::HostConnection>(word.substr(0, end));
    Tell(kReportStarting, 0);
}

void SessionReport::Tell(ReportMessage message, std::uint64_t value) {
    if (connection && !connection->Send(message, session, value)) connection.reset();
}

}  // namespace connectdialog::hosts
