#include "support/childprocess.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace connectdialog::test {

namespace {

constexpr char kVariable[] = "CONNECTDIALOG_TEST_ROLE";
constexpr int kReports = 20;
constexpr int kGo = 21;

std::map<std::string, Role>& Roles() {
    static std::map<std::string, Role> roles;
    return roles;
}

std::vector<std::string> SplitAtTabs(std::string_view text) {
    std::vector<std::string> parts(1);
    for (const char character : text) {
        if (character == '\t') {
            parts.emplace_back();
        } else {
            parts.back().push_back(character);
        }
    }
    return parts;
}

/// Runs before the first test: in a child the role, and then the process ends.
class RolePlayer : public testing::Environment {
  public:
    void SetUp() override {
        const char* text = std::getenv(kVariable);
        if (text == nullptr) return;
        std::vector<std::string> arguments = SplitAtTabs(text);
        const std::string name = arguments.front();
        arguments.erase(arguments.begin());
        RoleSide side;
        Roles().at(name)(arguments, side);
        std::_Exit(0);
    }
};

const testing::Environment* const kPlayer = testing::AddGlobalTestEnvironment(new RolePlayer);

}  // namespace

RoleRegistration::RoleRegistration(const char* name, Role role) {
    Roles()[name] = std::move(role);
}

void RoleSide::Report(std::uint32_t number) {
    if (::write(kReports, &number, sizeof number) != sizeof number) std::_Exit(1);
}

void RoleSide::WaitForGo() {
    char ignored = 0;
    while (::read(kGo, &ignored, 1) > 0) {
    }
}

ChildProcess::ChildProcess(const std::string& role, const std::vector<std::string>& arguments) {
    int reportPipe[2];
    int goPipe[2];
    if (::pipe2(reportPipe, O_CLOEXEC) != 0 || ::pipe2(goPipe, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    std::string setting = std::string(kVariable) + "=" + role;
    for (const std::string& argument : arguments) setting += "\t" + argument;
    std::vector<char*> environment{setting.data()};
    for (char** entry = environ; *entry != nullptr; ++entry) environment.push_back(*entry);
    environment.push_back(nullptr);
    char program[] = "/proc/self/exe";
    char* argv[] = {program, nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, reportPipe[1], kReports);
    posix_spawn_file_actions_adddup2(&actions, goPipe[0], kGo);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int result = posix_spawn(&process, program, &actions, nullptr, argv, environment.data());
    posix_spawn_file_actions_destroy(&actions);
    ::close(reportPipe[1]);
    ::close(goPipe[0]);
    reports = reportPipe[0];
    go = goPipe[1];
    if (result != 0) throw std::runtime_error("cannot start the test program again");
}

ChildProcess::~ChildProcess() {
    Kill();
    LetGo();
    ::close(reports);
}

bool ChildProcess::ReadReport(std::uint32_t& number) {
    return ::read(reports, &number, sizeof number) == sizeof number;
}

void ChildProcess::LetGo() {
    if (go >= 0) ::close(go);
    go = -1;
}

void ChildProcess::Kill() {
    if (process < 0) return;
    ::kill(process, SIGKILL);
    Wait();
}

bool ChildProcess::Wait() {
    int status = 0;
    const bool waited = process >= 0 && ::waitpid(process, &status, 0) == process;
    process = -1;
    return waited && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace connectdialog::test
