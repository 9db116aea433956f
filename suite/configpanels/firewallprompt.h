// Asks for what a firewall wants to know.
#pragma once

#include <span>

#include "foundation/istring.h"
#include "resources/dialogtemplate.h"

namespace connectdialog {

class VWindow;

namespace FirewallPromptIds {
inline constexpr int kUsernameDialog = 6010;
inline constexpr int kPasswordDialog = 6011;
inline constexpr int kAnswer = 6012;
inline constexpr int kSave = 6013;
}  // namespace FirewallPromptIds

enum class FirewallQuestion { kUsername, kPassword };

/// See IConfigPanels::LaunchFirewallUsernameDialog. A user name must not be empty. Saving is offered where the policies
/// allow it. The password that is given is sensitive.
bool AskForFirewall(FirewallQuestion question, IString& answer, bool& save, VWindow* parent);

/// What it looks like, one for each question.
std::span<const DialogTemplate> GetFirewallPromptTemplates();

}  // namespace connectdialog
