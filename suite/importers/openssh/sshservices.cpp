#include "suite/importers/openssh/sshservices.h"

#include <algorithm>
#include <sstream>
#include <vector>

#include "suite/importers/openssh/sshfiles.h"
#include "suite/importers/openssh/sshkeywords.h"

namespace connectdialog {
namespace {

constexpr std::size_t kMaxBytes = std::size_t{1} << 20U;

}  // namespace

int SshServices::FindPort(const std::string& service) {
    if (!ports) Load();
    const auto found = ports->find(service);
    return found == ports->end() ? 0 : found->second;
}

void SshServices::Load() {
    ports.emplace();
    std::string text;
    std::string error;
    if (files.Read("/etc/services", kMaxBytes, text, error) != SshReadResult::kRead) return;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) AddLine(std::string_view(line).substr(0, line.find('#')));
}

void SshServices::AddLine(std::string_view line) {
    std::istringstream words{std::string(line)};
    std::string name;
    std::string port;
    if (!(words >> name >> port) || !port.ends_with("/tcp")) return;
    const int number = ParseSshPort(std::string_view(port).substr(0, port.find('/')));
    do {
        ports->emplace(name, number);
    } while (words >> name);
}

}  // namespace connectdialog
