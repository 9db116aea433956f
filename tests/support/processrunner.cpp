#include "tests/support/processrunner.h"

#include <array>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace connectdialog::test {

namespace {

constexpr std::chrono::seconds kPatience(60);

struct Pipe {
    int ends[2];
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
    }
    ~Pipe() {
        for (const int end : ends)
            if (end >= 0) close(end);
    }
    void CloseWriteEnd() {
        close(ends[1]);
        ends[1] = -1;
    }
};

std::vector<char*> Pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::string NameOf(const std::string& pair) {
    return pair.substr(0, pair.find('=') + 1);
}

std::vector<std::string> MergeEnvironment(const std::vector<std::string>& changes) {
    std::vector<std::string> merged = changes;
    for (char** pair = environ; *pair != nullptr; ++pair) {
        bool isReplaced = false;
        for (const std::string& change : changes) isReplaced = isReplaced || NameOf(change) == NameOf(*pair);
        if (!isReplaced) merged.emplace_back(*pair);
    }
    return merged;
}

/// A file without a name that holds the text, at its start.
class InputFile {
  public:
    explicit InputFile(const std::string& text) : descriptor(memfd_create("input", MFD_CLOEXEC)) {
        const auto size = static_cast<ssize_t>(text.size());
        if (pwrite(descriptor, text.data(), text.size(), 0) != size) throw std::runtime_error("memfd_create");
    }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;
    ~InputFile() { close(descriptor); }
    const int descriptor;
};

pid_t Spawn(std::vector<std::string> arguments, const std::vector<std::string>& changes, int input, int output,
            int errors) {
    std::vector<std::string> environment = MergeEnvironment(changes);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, 0);
    posix_spawn_file_actions_adddup2(&actions, output, 1);
    posix_spawn_file_actions_adddup2(&actions, errors, 2);
    pid_t process = 0;
    const int failure = posix_spawn(&process, arguments.front().c_str(), &actions, nullptr, Pointers(arguments).data(),
                                    Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0) throw std::runtime_error("cannot start " + arguments.front());
    return process;
}

/// Reads until both pipes end. False when that takes too long.
bool Collect(Pipe& output, Pipe& errors, ProcessResult& result) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    std::array<pollfd, 2> sources = {{{output.ends[0], POLLIN, 0}, {errors.ends[0], POLLIN, 0}}};
    const std::array<std::string*, 2> texts = {&result.output, &result.errors};
    while (sources[0].fd >= 0 || sources[1].fd >= 0) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        poll(sources.data(), sources.size(), 1000);
        for (std::size_t i = 0; i < sources.size(); ++i) {
            if (sources[i].fd < 0 || sources[i].revents == 0) continue;
            std::array<char, 65536> block;
            const ssize_t count = read(sources[i].fd, block.data(), block.size());
            if (count > 0)
                texts[i]->append(block.data(), static_cast<std::size_t>(count));
            else
                sources[i].fd = -1;
        }
    }
    return true;
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                         const std::string& input) {
    const InputFile inputFile(input);
    Pipe output;
    Pipe errors;
    const pid_t process = Spawn(arguments, environment, inputFile.descriptor, output.ends[1], errors.ends[1]);
    output.CloseWriteEnd();
    errors.CloseWriteEnd();
    ProcessResult result;
    if (!Collect(output, errors, result)) kill(process, SIGKILL);
    int status = 0;
    waitpid(process, &status, 0);
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return result;
}

}  // namespace connectdialog::test
