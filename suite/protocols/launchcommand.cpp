#include "suite/protocols/launchcommand.h"

#include "config/appkind.h"
#include "config/isessionconfig.h"
#include "foundation/messagetable.h"
#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"
#include "platform/processlaunch.h"
#include "suite/protocols/launchclients.h"
#include "suite/protocols/launchmessages.h"
#include "suite/protocols/protocolconfig.h"

namespace connectdialog {

namespace {

/// The protocol of the side that the running application opens; `fault` tells why there is none.
const ConnectConfig* PickSide(const ISessionConfig& session, LaunchFault& fault) {
    const ConnectConfig* terminal = session.HasProtocol() ? session.GetConnectConfig() : nullptr;
    const ConnectConfig* transfer = session.HasTransferProtocol() ? session.GetTransferConnectConfig() : nullptr;
    fault = kLaunchNoProtocol;
    switch (GetAppKind()) {
        case AppKind::kHalden:
        case AppKind::kNorHalden:
            if (transfer != nullptr) fault = kLaunchTransferOnly;
            return terminal;
        case AppKind::kTessaly:
            if (terminal != nullptr) fault = kLaunchTerminalOnly;
            return transfer;
        default:
            return terminal != nullptr ? terminal : transfer;
    }
}

std::string ProgramOf(const LaunchCommand& command) {
    return command.arguments.empty() ? std::string() : command.arguments.front();
}

/// Tells the last error in words. Always false.
bool FailToStart(const LaunchCommand& command, VReportMessageParams& report) {
    const std::uint32_t cause = platform::GetLastErrorCode();
    RegisterMessageTable(GetFallbackMessageModule(), kLaunchMessages);
    const bool canBeInstalled = cause == platform::kFileNotFound && !command.package.empty();
    report.Fail(canBeInstalled ? kLaunchNotInstalledPackage : kLaunchNotInstalled,
                VUnicodeString(ProgramOf(command).c_str()).GetData());
    if (canBeInstalled)
        report.AddInsert(std::string(command.package).c_str());
    else
        report.AddInsert(FindSystemMessage(cause));
    return false;
}

}  // namespace

bool BuildLaunchCommand(const ConnectConfig& config, LaunchCommand& command, VReportMessageParams& report) {
    RegisterMessageTable(GetFallbackMessageModule(), kLaunchMessages);
    command = LaunchCommand();
    const auto* protocol = dynamic_cast<const ProtocolConfig*>(&config);
    if (protocol == nullptr) return report.Fail(kLaunchForeignSettings);
    if (FillLaunchCommand(*protocol, command, report)) return true;
    command = LaunchCommand();
    return false;
}

bool BuildLaunchCommand(const ISessionConfig& session, LaunchCommand& command, VReportMessageParams& report) {
    RegisterMessageTable(GetFallbackMessageModule(), kLaunchMessages);
    command = LaunchCommand();
    LaunchFault fault = kLaunchFine;
    const ConnectConfig* config = PickSide(session, fault);
    if (config == nullptr) return report.Fail(fault, session.GetPath().GetData());
    return BuildLaunchCommand(*config, command, report);
}

bool FindClient(const LaunchCommand& command, VReportMessageParams& report) {
    return !platform::FindProgram(ProgramOf(command)).empty() || FailToStart(command, report);
}

bool BecomeClient(const LaunchCommand& command, VReportMessageParams& report) {
    return platform::ReplaceProcess(command.arguments) || FailToStart(command, report);
}

}  // namespace connectdialog
