#include "platform/processlaunch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "platform/lasterror.h"

extern char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace connectdialog::platform {

namespace {

/// Sets the last error when it is no such file.
bool IsExecutableFile(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return FailWith(kFileNotFound);
    const bool isExecutable = S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
    return isExecutable || FailWith(kAccessDenied);
}

std::string FindInSearchPath(std::string_view name) {
    const char* variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
    std::uint32_t error = kFileNotFound;
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        if (!folder.starts_with('/')) continue;
        std::string path = std::string(folder) + '/' + std::string(name);
        if (IsExecutableFile(path)) return path;
        if (GetLastErrorCode() == kAccessDenied) error = kAccessDenied;
    }
    SetLastErrorCode(error);
    return {};
}

/// An argument vector in the form that the system takes. Refers to the arguments that it was made from.
class NativeCommand {
  public:
    /// On failure: false with the last error.
    bool Prepare(const std::vector<std::string>& arguments) {
        const auto holdsZero = [](const std::string& argument) { return argument.find('\0') != argument.npos; };
        if (arguments.empty() || std::any_of(arguments.begin(), arguments.end(), holdsZero)) {
            return FailWith(kInvalidParameter);
        }
        program = FindProgram(arguments[0]);
        // The system's calls do not write to the arguments; their type is older than const.
        for (const std::string& argument : arguments) vector.push_back(const_cast<char*>(argument.c_str()));
        vector.push_back(nullptr);
        return !program.empty();
    }
    const char* GetProgram() const { return program.c_str(); }
    char* const* GetArguments() const { return vector.data(); }

  private:
    std::string program;
    std::vector<char*> vector;
};

/// The program that this process waits for; 0 when there is none.
volatile std::sig_atomic_t waitedFor = 0;
/// The last signal that was passed on, or 0.
volatile std::sig_atomic_t passedOn = 0;

void PassOn(int signal) {
    passedOn = signal;
    if (waitedFor > 0) kill(static_cast<pid_t>(waitedFor), signal);
}

/// Leaves the terminal to another program as long as it lives.
class StandBack {
  public:
    StandBack() {
        struct sigaction action {};
        sigemptyset(&action.sa_mask);
        action.sa_flags = SA_RESTART;
        for (std::size_t i = 0; i < kSignals.size(); ++i) {
            sigaction(kSignals[i], nullptr, &before[i]);
            if (IsIgnored(i)) continue;
            action.sa_handler = i < kLeftToProgram ? SIG_IGN : PassOn;
            sigaction(kSignals[i], &action, nullptr);
        }
    }
    StandBack(const StandBack&) = delete;
    StandBack& operator=(const StandBack&) = delete;
    ~StandBack() {
        waitedFor = 0;
        for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &before[i], nullptr);
    }

    /// What the program must have as usual: signals that were ignored before stay ignored in it.
    void AddDefaults(sigset_t& signals) const {
        for (std::size_t i = 0; i < kLeftToProgram; ++i)
            if (!IsIgnored(i)) sigaddset(&signals, kSignals[i]);
    }

  private:
    static constexpr std::array<int, 5> kSignals = {SIGINT, SIGQUIT, SIGTSTP, SIGTERM, SIGHUP};
    static constexpr std::size_t kLeftToProgram = 3;  ///< the others are passed on

    bool IsIgnored(std::size_t i) const { return before[i].sa_handler == SIG_IGN; }

    std::array<struct sigaction, kSignals.size()> before{};
};

/// The signal settings a program starts with.
class SpawnAttributes {
  public:
    explicit SpawnAttributes(const StandBack& standBack) : SpawnAttributes(0, &standBack) {}
    /// `moreFlags` are those of posix_spawnattr_setflags beside the signals'.
    explicit SpawnAttributes(short moreFlags, const StandBack* standBack = nullptr) {
        sigset_t signals;
        posix_spawnattr_init(&attributes);
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        if (standBack != nullptr) standBack->AddDefaults(signals);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        const int flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | moreFlags;
        posix_spawnattr_setflags(&attributes, static_cast<short>(flags));
    }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { posix_spawnattr_destroy(&attributes); }
    const posix_spawnattr_t* Get() const { return &attributes; }

  private:
    posix_spawnattr_t attributes;
};

/// Starts a program that speaks to nobody. On failure: false with the last error.
bool SpawnMute(const std::vector<std::string>& arguments, short moreFlags, pid_t& process) {
    NativeCommand command;
    if (!command.Prepare(arguments)) return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
    const SpawnAttributes attributes(moreFlags);
    const int error =
        posix_spawn(&process, command.GetProgram(), &actions, attributes.Get(), command.GetArguments(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 || FailWith(ErrorFromErrno(error));
}

/// Waits for the end of a program, up to `patience`.
bool HasEnded(pid_t process, std::chrono::milliseconds patience, int& status) {
    constexpr std::chrono::milliseconds kStep{5};
    const auto end = std::chrono::steady_clock::now() + patience;
    while (waitpid(process, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(kStep);
    }
    return true;
}

/// Programs that were started and go on by themselves; each stays the system's until somebody asks for its end.
class StartedPrograms {
  public:
    void Add(pid_t process) {
        const std::scoped_lock lock(guard);
        processes.push_back(process);
    }
    void ForgetEnded() {
        const std::scoped_lock lock(guard);
        std::erase_if(processes, [](pid_t process) { return waitpid(process, nullptr, WNOHANG) != 0; });
    }

  private:
    std::mutex guard;
    std::vector<pid_t> processes;
};

StartedPrograms& GetStartedPrograms() {
    static StartedPrograms programs;
    return programs;
}

bool WaitForEnd(pid_t process, int& exitCode) {
    waitedFor = process;
    int status = 0;
    while (true) {
        if (waitpid(process, &status, WUNTRACED) < 0) {
            if (errno != EINTR) return FailFromErrno();
        } else if (WIFSTOPPED(status)) {
            raise(SIGSTOP);  // whoever waits for this process sees the program stopped
            kill(process, SIGCONT);
        } else {
            break;
        }
    }
    exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return true;
}

}  // namespace

std::string FindProgram(std::string_view name) {
    const std::string path(name);
    if (path.find('/') == path.npos && !path.empty()) return FindInSearchPath(name);
    return IsExecutableFile(path) ? path : std::string();
}

bool ReplaceProcess(const std::vector<std::string>& arguments) {
    NativeCommand command;
    if (!command.Prepare(arguments)) return false;
    sigset_t none;
    sigset_t before;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, &before);
    const auto pipeHandler = std::signal(SIGPIPE, SIG_DFL);
    execv(command.GetProgram(), command.GetArguments());
    const int error = errno;
    std::signal(SIGPIPE, pipeHandler);
    sigprocmask(SIG_SETMASK, &before, nullptr);
    return FailWith(ErrorFromErrno(error));
}

bool RunAndWait(const std::vector<std::string>& arguments, int& exitCode) {
    NativeCommand command;
    if (!command.Prepare(arguments)) return false;
    const StandBack standBack;
    const SpawnAttributes attributes(standBack);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, command.GetProgram(), nullptr, attributes.Get(), command.GetArguments(), environ);
    if (error != 0) return FailWith(ErrorFromErrno(error));
    return WaitForEnd(process, exitCode);
}

bool WasAskedToEnd() {
    return passedOn != 0;
}

bool HasTerminal() {
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

bool RunQuietly(const std::vector<std::string>& arguments, std::chrono::milliseconds patience) {
    pid_t process = 0;
    int status = 0;
    if (!SpawnMute(arguments, 0, process)) return false;
    if (!HasEnded(process, patience, status)) {
        kill(process, SIGKILL);
        waitpid(process, &status, 0);
        return FailWith(kTimeout);
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool StartProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds patience) {
    pid_t process = 0;
    int status = 0;
    GetStartedPrograms().ForgetEnded();
    if (!SpawnMute(arguments, POSIX_SPAWN_SETSID, process)) return false;
    if (!HasEnded(process, patience, status)) {
        GetStartedPrograms().Add(process);
        return true;
    }
    return (WIFEXITED(status) && WEXITSTATUS(status) == 0) || FailWith(kProcessAborted);
}

}  // namespace connectdialog::platform
