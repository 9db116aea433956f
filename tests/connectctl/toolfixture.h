// A scratch store that a test fills through the library and then works on with the program itself.
#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "foundation/vunicodestring.h"
#include "tests/support/processrunner.h"
#include "tests/support/temporaryfolder.h"

namespace connectdialog::test {

/// One run of connectctl in a transcript.
struct ToolRun {
    std::vector<std::string> arguments;
    std::string text;  ///< all that is printed; what the one line of complaint holds, where it fails
    int exitCode = 0;
};

class ToolTest : public ::testing::Test {
  protected:
    /// Runs connectctl on the scratch store, with `environment`.
    ProcessResult Run(std::vector<std::string> arguments) const;
    /// The same; fails the test unless the run ends with 0 and says nothing on standard error. Gives standard output.
    std::string RunWell(const std::vector<std::string>& arguments) const;
    /// Fails the test unless the run ends with `exitCode`, prints nothing and tells one line, which is given.
    std::string RunBadly(const std::vector<std::string>& arguments, int exitCode = 1) const;

    /// Runs one after the other, each as RunWell or RunBadly does.
    void Transcript(const std::vector<ToolRun>& runs) const;

    /// Runs `change` with the library open on the scratch store.
    void WithStore(const std::function<void()>& change) const;
    /// A folder tree: Servers\Web with alpha and beta, Servers\db, and zeta in the root. All are SSH2 sessions of the
    /// host NAME.example.net and the user root.
    void Seed() const;

    std::string StoreFile() const { return scratch / "sessions.db"; }

    TemporaryFolder scratch;
    /// Nothing of a test is seen by other programs.
    std::vector<std::string> environment = {"XDG_RUNTIME_DIR=" + scratch.GetPath().string()};
};

/// Makes an SSH2 session. Requires: runs within WithStore.
void AddSession(const VUnicodeString& folder, const VUnicodeString& name, const VUnicodeString& host);

}  // namespace connectdialog::test
