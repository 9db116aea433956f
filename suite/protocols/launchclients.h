// The clients of this system and the arguments that each takes.
#pragma once

#include "suite/protocols/launchcommand.h"

namespace connectdialog {

class ProtocolConfig;

/// Fills the command for the client of the protocol. On failure: false with a report; what was filled means nothing.
bool FillLaunchCommand(const ProtocolConfig& config, LaunchCommand& command, VReportMessageParams& report);

}  // namespace connectdialog
