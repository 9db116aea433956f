#include "tests/support/processrunner.h"

#include "platform/processlaunch.h"
#include "tests/support/temporaryfolder.h"

namespace connectdialog::test {

ProcessResult RunProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                         const std::string& input) {
    const TemporaryFolder folder;
    folder.Write("input", input);
    std::vector<std::string> words = {"/usr/bin/env"};
    words.insert(words.end(), environment.begin(), environment.end());
    constexpr char kRedirect[] = R"(exec "$@" <"$0/input" >"$0/output" 2>"$0/errors")";
    words.insert(words.end(), {"/usr/bin/timeout", "60", "/bin/sh", "-c", kRedirect, folder.GetPath()});
    words.insert(words.end(), arguments.begin(), arguments.end());
    ProcessResult result;
    platform::RunAndWait(words, result.exitCode);
    result.output = folder.Read("output");
    result.errors = folder.Read("errors");
    return result;
}

}  // namespace connectdialog::test
