// connect: from a session to the client that opens it.
#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "config/isessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "suite/protocols/launchcommand.h"
#include "tools/connectctl/command.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/toolstore.h"

namespace connectdialog::connectctl {

namespace {

struct ConnectArguments {
    std::string path;
    bool isDryRun = false;
    bool asJson = false;
};

void PrintCommand(const LaunchCommand& command, bool asJson) {
    if (!asJson) return PrintLine(PrintableJson(command.arguments));
    PrintLine(
        PrintableJson({{"argv", command.arguments}, {"package", command.package}, {"note", JsonText(command.note)}}));
}

Failure RunClient(const LaunchCommand& command) {
    if (!command.note.empty()) PrintNotice(platform::ToNarrow(command.note));
    FlushOutput();
    CloseToolStore();
    VReportMessageParams report;
    BecomeClient(command, report);
    return ReportText(report);
}

Failure Connect(const ConnectArguments& arguments) {
    LaunchCommand command;
    {
        VRef<ISessionConfig> session;
        if (Failure failure = OpenSessionAt(arguments.path, session)) return failure;
        VReportMessageParams report;
        if (!BuildLaunchCommand(*session, command, report)) return ReportText(report);
    }
    if (!arguments.isDryRun) return RunClient(command);
    PrintCommand(command, arguments.asJson);
    return kDone;
}

}  // namespace

CommandBody DeclareConnect(CLI::App& parser) {
    auto arguments = std::make_shared<ConnectArguments>();
    parser.add_option("PATH", arguments->path, kPathHelp)->required();
    auto* dryRun = parser.add_flag("--dry-run", arguments->isDryRun,
                                   "Run nothing; print the client and its arguments as a JSON array");
    parser.add_flag("--json", arguments->asJson, "With --dry-run, print an object with the Debian package as well")
        ->needs(dryRun);
    return [arguments] { return Connect(*arguments); };
}

}  // namespace connectdialog::connectctl
