// Runs a program of the project as a user would and keeps what it said.
#pragma once

#include <string>
#include <vector>

namespace connectdialog::test {

struct ProcessResult {
    int exitCode = -1;  ///< 128 plus the number of the signal that ended it
    std::string output;
    std::string errors;
};

/// Starts `arguments` (the program's path first) with `input` on standard input, waits for its end and collects both
/// outputs. `environment` holds NAME=VALUE pairs that replace or join those of the test. A program that has not ended
/// after a minute is ended: exit code 124.
ProcessResult RunProcess(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {},
                         const std::string& input = {});

}  // namespace connectdialog::test
