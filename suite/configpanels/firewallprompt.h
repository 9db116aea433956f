// Asks for what a firewall wants to know.
#pragma once

#include "foundation/istring.h"

namespace connectdialog {

class VWindow;

enum class FirewallQuestion { kUsername, kPassword };

/// See IConfigPanels::LaunchFirewallUsernameDialog. A user name must not be empty. Saving is offered where the policies
/// allow it. The password that is given is sensitive.
bool AskForFirewall(FirewallQuestion question, IString& answer, bool& save, VWindow* parent);

}  // namespace connectdialog
