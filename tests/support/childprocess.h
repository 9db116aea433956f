// A second process in a test: the test program itself, started anew to play a named role instead of running tests.
//
// The child is spawned, so it shares nothing with the test but two pipes: numbers that it reports, and a line that the
// test closes to let it go on.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace connectdialog::test {

/// What a role can do towards the test.
class RoleSide {
  public:
    void Report(std::uint32_t number);
    /// Waits until the test lets go, or is gone.
    void WaitForGo();
};

using Role = std::function<void(const std::vector<std::string>& arguments, RoleSide& side)>;

/// A namespace-scope object of this type in a test file names a role.
struct RoleRegistration {
    RoleRegistration(const char* name, Role role);
};

class ChildProcess {
  public:
    /// Requires: no argument is empty or holds a tab.
    ChildProcess(const std::string& role, const std::vector<std::string>& arguments);
    /// Kills it when it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// The next number that it reported, waiting for it; false when it ended first.
    bool ReadReport(std::uint32_t& number);
    void LetGo();
    void Kill();
    /// True when it ended by itself and in order.
    bool Wait();

  private:
    int process = -1;
    int reports = -1;
    int go = -1;
};

}  // namespace connectdialog::test
