// A second process for tests of what processes share.
#pragma once

#include <csignal>
#include <cstdint>
#include <sys/wait.h>
#include <unistd.h>

namespace connectdialog::test {

/// Runs a function in a forked process, whose exit code is what the function gives. What the function opens is its own.
/// The child reports numbers and waits to be let go on.
class ChildProcess {
  public:
    /// `run` takes the child's end: it may call Report and WaitForGo on it. Requires: the parent has no store open in a
    /// file that the child opens.
    template <class Run>
    explicit ChildProcess(Run run) {
        int toChild[2];
        int toParent[2];
        if (pipe(toChild) != 0 || pipe(toParent) != 0) return;
        process = fork();
        const bool isChild = process == 0;
        input = isChild ? toChild[0] : toParent[0];
        output = isChild ? toParent[1] : toChild[1];
        close(isChild ? toChild[1] : toChild[0]);
        close(isChild ? toParent[0] : toParent[1]);
        if (!isChild) return;
        alarm(kPatience);
        _exit(run(*this));
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() {
        Kill();
        close(input);
        close(output);
    }

    void Report(std::uint32_t number = 0) {
        if (write(output, &number, sizeof number) != sizeof number) _exit(1);
    }
    /// Waits until the parent lets go, or is gone.
    void WaitForGo() {
        char ignored = 0;
        (void)!read(input, &ignored, 1);
    }

    /// The next number that the child reported, waiting for it; false when it ended first.
    bool ReadReport(std::uint32_t& number) { return read(input, &number, sizeof number) == sizeof number; }
    bool WaitForReport() {
        std::uint32_t ignored = 0;
        return ReadReport(ignored);
    }
    void LetGo() { (void)!write(output, "x", 1); }
    void Kill() {
        if (process <= 0) return;
        kill(process, SIGKILL);
        Wait();
    }
    /// The exit code, or -1 when the process was killed.
    int Wait() {
        int status = 0;
        waitpid(process, &status, 0);
        process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    /// Seconds after which a child that hangs ends itself.
    static constexpr unsigned kPatience = 200;

    pid_t process = -1;
    int input = -1;
    int output = -1;
};

}  // namespace connectdialog::test
