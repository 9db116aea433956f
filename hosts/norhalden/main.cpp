// norhalden: opens a saved session in the terminal it runs in, with the system's own client.
#include <cstdio>
#include <string>
#include <vector>

#include "config/isessionconfig.h"
#include "foundation/textchecks.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "hosts/norhalden/hostoptions.h"
#include "platform/codepage.h"
#include "platform/processlaunch.h"
#include "profile/iprofilestore.h"
#include "sessiondb/runningsessions.h"
#include "sessiondb/sessiontree.h"
#include "suite/hostsetup/hostsetup.h"
#include "suite/protocols/launchcommand.h"

namespace connectdialog::hosts {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;
/// Exit codes of clients that did not end by themselves: the user wants no more of this.
constexpr int kEndedBySignal = 128;

constexpr char kUsage[] =
    "usage: norhalden [--store URL] /S \"PATH\" [/S \"PATH\" ...]\n"
    "       norhalden --help | --version\n"
    "\n"
    "Opens the saved session at PATH in this terminal with its protocol's client; of several sessions one\n"
    "after the other. The names of a path are separated by \"\\\". URL names the store of the sessions,\n"
    "\"sqlite:FILE\" for instance; without it the store is the one that BRENNMARK_STORE names, or else the\n"
    "user's own.\n";

/// One line on standard error that never drives the terminal, whatever names are in it.
void Tell(std::u16string_view text) {
    std::u16string line(text);
    for (char16_t& character : line)
        if (IsControl(character)) character = u' ';
    std::fprintf(stderr, "norhalden: %s\n", platform::ToNarrow(line).c_str());
}

int Fail(std::u16string_view text, int exitCode = kFailed) {
    Tell(text);
    return exitCode;
}

int Fail(VReportMessageParams& report) {
    return Fail(DescribeReport(report));
}

/// Finds the session and what opens it. False when the reason was told.
bool FindCommand(const VUnicodeString& path, LaunchCommand& command) {
    const VRef<ISessionConfig> session = OpenSession(path);
    if (!session) {
        const char16_t* kind = SessionKeyExists(path) ? u" is a folder" : u" does not exist";
        Fail(u"the session \"" + path + u"\"" + kind);
        return false;
    }
    VReportMessageParams report;
    if (BuildLaunchCommand(*session, command, report)) return true;
    Fail(report);
    return false;
}

/// Finds what opens the sessions. False when the reason was told: then none is opened.
bool FindCommands(const HostOptions& options, std::vector<LaunchCommand>& commands) {
    VUnicodeString notice;
    const auto factory = OpenReferenceStore(u"NorHalden"_v, VUnicodeString(options.store.c_str()), notice);
    if (!factory) {
        Fail(notice);
        return false;
    }
    if (!notice.IsEmpty()) Tell(notice);
    for (const std::string& path : options.paths)
        if (!FindCommand(VUnicodeString(path.c_str()), commands.emplace_back())) return false;
    return true;
}

/// Runs one client after the other, until one is ended by a signal, and tells others meanwhile which sessions are still
/// to end. Gives the exit code of the last client.
int RunClients(const HostOptions& options, const std::vector<LaunchCommand>& commands) {
    RunningSessionsHost host(kNorHaldenFrameClass);
    if (host.GetError() != 0) {
        VReportMessageParams report(host.GetError());
        Tell(u"other programs cannot learn which sessions are open here: " + DescribeReport(report));
    }
    int exitCode = 0;
    for (std::size_t i = 0; i < commands.size(); ++i) {
        VStringArray open;
        for (std::size_t rest = i; rest < commands.size(); ++rest)
            open.Add(VUnicodeString(options.paths[rest].c_str()));
        host.SetPaths(open);
        if (!commands[i].note.empty()) Tell(commands[i].note);
        if (!platform::RunAndWait(commands[i].arguments, exitCode)) {
            // What could not be started cannot be become either, and is told in full then.
            VReportMessageParams report;
            BecomeClient(commands[i], report);
            return Fail(report);
        }
        if (exitCode >= kEndedBySignal) break;
    }
    return exitCode;
}

int OpenInTerminal(const HostOptions& options) {
    if (!options.folders.empty())
        return Fail(u"\"" + platform::ToWide(options.folders.front()) +
                    u"\" is a folder: without a window this program opens single sessions only");
    std::vector<LaunchCommand> commands;
    return FindCommands(options, commands) ? RunClients(options, commands) : kFailed;
}

int Run(std::span<const char* const> arguments) {
    HostOptions options;
    std::string fault;
    if (!ReadHostOptions(arguments, options, fault)) {
        std::fputs(kUsage, stderr);
        return Fail(platform::ToWide(fault), kWrongUsage);
    }
    switch (options.action) {
        case HostAction::kHelp:
            std::fputs(kUsage, stdout);
            return 0;
        case HostAction::kVersion:
            std::puts("norhalden " HOST_VERSION);
            return 0;
        case HostAction::kOpenSessions:
            break;
    }
    return OpenInTerminal(options);
}

}  // namespace

}  // namespace connectdialog::hosts

int main(int argc, char** argv) {
    const std::vector<const char*> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    return connectdialog::hosts::Run(arguments);
}
