// Starting other programs, by an argument vector and never through a shell.
//
// Arguments are UTF-8 and reach the program as they are: nothing is split, expanded or quoted. The first one names the
// program; without a slash it is looked up in the absolute folders of PATH. A file that is executable but no program (a
// script without its `#!` line) is refused, not handed to a shell. The program inherits the environment and the three
// standard descriptors, with no signal blocked and a broken pipe ending it as usual.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog::platform {

/// The program that a name stands for.
/// On failure: the empty string with the last error 2 (none of that name) or 5 (there is one that may not be executed).
std::string FindProgram(std::string_view name);

/// Becomes the program: does not come back.
/// On failure: false with the last error: 87 when there are no arguments or one holds a zero, 2, 5, 193 (no
/// program), 8.
bool ReplaceProcess(const std::vector<std::string>& arguments);

/// Starts the program and waits for its end. `exitCode` is its exit status (0 to 255), or 128 plus the number of the
/// signal that ended it. Meanwhile the program is what the terminal speaks to: its signals for interrupting, quitting
/// and stopping are left to the program, this process stops and goes on when the program does, and a request to end or
/// a hang-up is passed on to it. One thread may do this at a time.
/// On failure: as ReplaceProcess; `exitCode` stays as it was.
bool RunAndWait(const std::vector<std::string>& arguments, int& exitCode);

/// Whether such a request or a hang-up has come: what the user had here is over, and nobody reads what is told here.
bool WasAskedToEnd();

/// Whether this process speaks to a user at a terminal: its standard input and output are one.
bool HasTerminal();

/// Runs a helper that speaks to nobody: without input, and what it prints is dropped. One that has not ended after
/// `patience` is killed.
/// On failure: false, as ReplaceProcess, and 1460 when it was killed; also when its exit status is not 0.
bool RunQuietly(const std::vector<std::string>& arguments, std::chrono::milliseconds patience);

/// Starts a program that goes on by itself, also when this process or its terminal is gone: in a session of its own,
/// without input, and what it prints is dropped. Waits up to `patience` to see whether it stays: one that ends with the
/// exit status 0 has left its work to another process.
/// On failure: false, as ReplaceProcess, and 1067 when it ended at once with another exit status.
bool StartProgram(const std::vector<std::string>& arguments, std::chrono::milliseconds patience);

}  // namespace connectdialog::platform
