// norhalden: opens a saved session in the terminal it runs in, with the system's own client.
#include <cstdio>
#include <string>
#include <vector>

#include "config/isessionconfig.h"
#include "foundation/textchecks.h"
#include "foundation/vreportmessageparams.h"
#include "hosts/norhalden/hostoptions.h"
#include "platform/codepage.h"
#include "profile/iprofilestore.h"
#include "sessiondb/sessiontree.h"
#include "suite/hostsetup/hostsetup.h"
#include "suite/protocols/launchcommand.h"

namespace connectdialog::hosts {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr char kUsage[] =
    "usage: norhalden [--store URL] /S \"PATH\"\n"
    "       norhalden --help | --version\n"
    "\n"
    "Opens the saved session at PATH in this terminal: its protocol's client takes over. The names of a\n"
    "path are separated by \"\\\". URL names the store of the sessions, \"sqlite:FILE\" for instance; without\n"
    "it the store is the one that BRENNMARK_STORE names, or else the user's own.\n";

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

int OpenInTerminal(const HostOptions& options) {
    VReportMessageParams report;
    LaunchCommand command;
    {
        VUnicodeString notice;
        const auto factory = OpenReferenceStore(u"NorHalden"_v, VUnicodeString(options.store.c_str()), notice);
        if (!factory) return Fail(notice);
        if (!notice.IsEmpty()) Tell(notice);
        if (!FindCommand(VUnicodeString(options.path.c_str()), command)) return kFailed;
    }
    if (!command.note.empty()) Tell(command.note);
    BecomeClient(command, report);
    return Fail(report);
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
        case HostAction::kOpenSession:
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
