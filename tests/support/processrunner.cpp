#include "tests/support/processrunner.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/temporaryfolder.h"

namespace connectdialog::test {

namespace {

constexpr unsigned kPatience = 60;

/// Puts a file in the place of a standard stream.
void Redirect(int stream, const std::string& file, int flags) {
    if (dup2(open(file.c_str(), flags | O_CLOEXEC, 0600), stream) < 0) _exit(126);
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                         const std::string& input) {
    const TemporaryFolder folder;
    folder.Write("input", input);
    const pid_t process = fork();
    if (process == 0) {
        Redirect(0, folder / "input", O_RDONLY);
        Redirect(1, folder / "output", O_WRONLY | O_CREAT);
        Redirect(2, folder / "errors", O_WRONLY | O_CREAT);
        std::vector<char*> words(arguments.size() + 1);
        std::ranges::transform(arguments, words.begin(),
                               [](const auto& text) { return const_cast<char*>(text.c_str()); });
        for (const std::string& pair : environment) putenv(const_cast<char*>(pair.c_str()));
        alarm(kPatience);
        execv(words.front(), words.data());
        _exit(127);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), folder.Read("output"),
            folder.Read("errors")};
}

}  // namespace connectdialog::test
