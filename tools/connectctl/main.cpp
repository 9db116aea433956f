// connectctl: the session database from the command line.
//
// Standard output has what was asked for, standard error one line when the answer is a failure. Exit codes: 0 done,
// 1 failed, 2 wrong usage.
#include <CLI/CLI.hpp>
#include <array>
#include <cstdio>
#include <exception>

#include "tools/connectctl/command.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr auto kCommands = std::to_array<Command>({
    {"import", "Make sessions from an export or another program's configuration", true, DeclareImport},
    {"export", "Write sessions and folders as JSON", true, DeclareExport},
    {"tree", "Print the folders and sessions as a tree", true, DeclareTree},
    {"ls", "List the folders and sessions of a folder", true, DeclareLs},
    {"show", "Print every setting of a session", true, DeclareShow},
    {"get", "Print one setting of a session", true, DeclareGet},
    {"set", "Change one setting of a session", true, DeclareSet},
    {"new", "Make a session", true, DeclareNew},
    {"mkdir", "Make a folder", true, DeclareMkdir},
    {"cp", "Copy a session or a folder into another folder", true, DeclareCp},
    {"mv", "Move a session or a folder into another folder", true, DeclareMv},
    {"rename", "Give a session or a folder another name", true, DeclareRename},
    {"rm", "Delete sessions and folders", true, DeclareRm},
    {"arrange", "Move a session or a folder among its siblings", true, DeclareArrange},
    {"find", "Print the sessions and folders in which a text occurs", true, DeclareFind},
    {"shortcut", "Put sessions and folders on the desktop", true, DeclareShortcut},
    {"connect", "Open a session with the system's client", true, DeclareConnect},
    {"firewall", "The firewalls that sessions go through", true, DeclareFirewall},
    {"buttons", "The user's button bars", true, DeclareButtons},
    {"hive", "Settings of the machine and the user beside the store", false, DeclareHive},
    {"keymap", "Keymap files, and the keymaps of sessions", false, DeclareKeymap},
    {"secret", "Protect a text for this user, and read it back", false, DeclareSecret},
    {"trace", "Print what a template of a log file's name comes to now", false, DeclareTrace},
    {"completion", "Print a completion script for a shell", false, DeclareCompletion},
});

constexpr char kFooter[] =
    "Names in a path are joined by \\ and folders are listed with a \\ at their end. Characters that would drive\n"
    "the terminal are printed as <U+001B>, and paths may be typed so. COMMAND --help tells more.\n"
    "Exit codes: 0 done, 1 failed with one line on standard error, 2 wrong usage.";

Failure RunCommand(const Command& command, const CommandBody& body, const std::string& storeUrl) {
    if (command.needsStore)
        if (Failure failure = OpenToolStore(storeUrl)) return failure;
    Failure failure = body();
    CloseToolStore();
    if (!FlushOutput() && !failure) return "standard output cannot be written";
    return failure;
}

/// Help and version were asked for; everything else is wrong usage.
int EndParse(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        app.exit(error);
        return FlushOutput() ? 0 : kFailed;
    }
    PrintNotice(std::string(error.what()) + " (connectctl --help tells the usage)");
    return kWrongUsage;
}

int Main(int argc, char** argv) {
    CLI::App app("The saved sessions of terminal and file-transfer applications", "connectctl");
    app.set_version_flag("--version", "connectctl " CONNECTCTL_VERSION);
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(kFooter);
    std::string storeUrl;
    app.add_option("--store", storeUrl, "The store: sqlite:PATH or memory:; the user's own when left out")->take_last();
    std::array<CommandBody, kCommands.size()> bodies;
    for (std::size_t i = 0; i < kCommands.size(); ++i)
        bodies[i] = kCommands[i].declare(*app.add_subcommand(kCommands[i].name, kCommands[i].summary));
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return EndParse(app, error);
    }
    for (std::size_t i = 0; i < kCommands.size(); ++i) {
        if (!app.got_subcommand(kCommands[i].name)) continue;
        if (const Failure failure = RunCommand(kCommands[i], bodies[i], storeUrl)) {
            PrintNotice(*failure);
            return kFailed;
        }
    }
    return 0;
}

}  // namespace

}  // namespace connectdialog::connectctl

int main(int argc, char** argv) {
    try {
        return connectdialog::connectctl::Main(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "connectctl: %s\n", error.what());
        return connectdialog::connectctl::kFailed;
    }
}
