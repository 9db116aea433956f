// Two runs of the tool at once: what the second one changes behind the checks of the first and before its lock.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>

#include "profile/vprofilekey.h"
#include "tests/connectctl/toolfixture.h"
#include "tests/support/faultystore.h"
#include "tools/connectctl/command.h"

namespace connectdialog::test {
namespace {

using namespace connectctl;

using Arguments = std::vector<std::string>;
using Declare = CommandBody (*)(CLI::App&);

class OtherRunTest : public ToolTest {
  protected:
    /// Sessions a and b, folders f and P, and the firewall fw.
    void Renew() const {
        std::filesystem::remove(StoreFile());
        for (const Arguments& run : {Arguments{"new", "a"}, {"new", "b"}, {"mkdir", "f"}, {"mkdir", "P"}}) RunWell(run);
        RunWell({"firewall", "new", "fw"});
    }
    std::string State() const {
        return RunWell({"export"}) + Run({"firewall", "show", "fw"}).output + Run({"firewall", "show", "new"}).output;
    }
    /// Runs a command in this process and, before it takes the lock, others in processes of their own.
    Failure RunHere(Declare declare, Arguments arguments, const std::vector<Arguments>& others) {
        CLI::App parser;
        const CommandBody body = declare(parser);
        std::ranges::reverse(arguments);  // as the parser takes them
        parser.parse(arguments);
        Failure failure;
        WithStore([&] {
            FaultyStoreFactory shared(*GetProfileFactory());
            active = &shared;
            SetProfileFactoryGetter([] { return active; });
            shared.plan.beforeLock = [&] {
                for (const Arguments& other : others) RunWell(other);
                afterOthers = State();
            };
            failure = body();
        });
        return failure;
    }

    std::string afterOthers;

  private:
    static inline VProfileStoreFactory* active = nullptr;
};

TEST_F(OtherRunTest, WhatItChangedIsLookedAtAgain) {
    const std::string hosts = scratch.Write("config", "Host h\n  HostName h.example.net\n");
    const Arguments removeFolder = {"rm", "P"};
    const Arguments makeSession = {"new", "P"};
    const struct {
        Declare declare;
        Arguments arguments;
        std::vector<Arguments> others;
        const char* refusal;
    } rows[] = {
        {DeclareRename, {"a", "c"}, {{"rename", "b", "c"}}, "name \"c\""},
        {DeclareRename, {"f", "g"}, {{"mkdir", "g"}, {"new", "g\\one"}}, "name \"g\""},
        {DeclareRename, {"a", "c"}, {{"rm", "a"}}, "there is no session or folder \"a\""},
        {DeclareNew, {"d"}, {{"new", "d"}, {"set", "d", "Title Bar", "DDD"}}, "name \"d\""},
        {DeclareNew, {"d"}, {{"mkdir", "d"}, {"new", "d\\one"}}, "name \"d\""},
        {DeclareNew, {"P\\s"}, {removeFolder, makeSession}, "\"P\" is a session"},
        {DeclareMkdir, {"P\\s"}, {removeFolder, makeSession}, "\"P\" is a session"},
        {DeclareImport, {"openssh", hosts, "--into", "P"}, {removeFolder, makeSession}, "P"},
        {DeclareMv, {"a", "P"}, {removeFolder, makeSession}, "\"P\" is a session"},
        {DeclareSet, {"a", "Title Bar", "A"}, {{"rename", "a", "c"}}, "there is no session \"a\" any more"},
        {DeclareFirewall, {"set", "fw", "Firewall Port", "9"}, {{"firewall", "rm", "fw"}}, "no firewall \"fw\""},
        {DeclareFirewall,
         {"new", "new"},
         {{"firewall", "new", "new"}, {"firewall", "set", "new", "Firewall Port", "9"}},
         "\"new\" already"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.arguments));
        Renew();
        EXPECT_THAT(RunHere(row.declare, row.arguments, row.others).value_or("done"),
                    ::testing::HasSubstr(row.refusal));
        EXPECT_EQ(State(), afterOthers);
    }
}

TEST_F(OtherRunTest, TwoSettingsOfOneFirewallBothStand) {
    Renew();
    const Arguments other = {"firewall", "set", "fw", "Firewall Address", "proxy.example"};
    EXPECT_EQ(RunHere(DeclareFirewall, {"set", "fw", "Firewall Port", "99"}, {other}), kDone);
    const std::string shown = RunWell({"firewall", "show", "fw"});
    EXPECT_THAT(shown, ::testing::AllOf(::testing::HasSubstr("proxy.example"), ::testing::HasSubstr("99")));
}

}  // namespace
}  // namespace connectdialog::test
