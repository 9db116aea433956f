// A second process for tests of what processes share.
#pragma once

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace connectdialog {

/// Runs a function in a forked process, whose exit code is what the function gives. What the function opens is its own;
/// parent and child tell each other how far they are by one byte at a time.
class ChildProcess {
  public:
    /// `run` takes the child's end: it may call Signal and Await on it.
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
        if (process > 0) Kill();
        close(input);
        close(output);
    }

    bool Signal() { return write(output, "x", 1) == 1; }
    /// Waits for the other side; false when it has ended.
    bool Await() {
        char byte = 0;
        return read(input, &byte, 1) == 1;
    }

    void Kill() {
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
    static constexpr unsigned kPatience = 20;

    pid_t process = -1;
    int input = -1;
    int output = -1;
};

}  // namespace connectdialog
