#include "quickconnect/hostnameprompt.h"

#include "foundation/istring.h"
#include "imports/connectconfig.h"
#include "imports/dialogkit/textmetrics.h"
#include "resources/dialogids.h"

namespace connectdialog {

HostnamePromptDialog::HostnamePromptDialog(const VUnicodeString& sessionName, VWindow* parent)
    : VPluginDialog(HostnamePromptIds::kDialog, parent), sessionNameText(EscapeAmpersand(sessionName)) {}

void HostnamePromptDialog::OnInitDialog() {
    VPluginDialog::OnInitDialog();
    EnableControl(kIdOk, false);
}

void HostnamePromptDialog::DoDataExchange(VDataExchange& exchange) {
    DDX_Text(exchange, HostnamePromptIds::kSessionName, sessionNameText);
    DDX_Text(exchange, HostnamePromptIds::kHostname, hostname);
}

void HostnamePromptDialog::OnControlChanged(int id) {
    EnableControl(kIdOk, !GetControlText(id).IsEmpty());
}

bool FillInHostname(ConnectConfig& config, const VUnicodeString& sessionName, VWindow* parent, bool& wasAsked) {
    wasAsked = false;
    std::uint32_t state = 0;
    if (config.IsComplete(state) || state != ConnectConfig::kHostNameMissing) return true;
    HostnamePromptDialog prompt(sessionName, parent);
    if (prompt.DoModal() == kDialogCancelled) return false;
    config.SetHostName(prompt.GetHostname());
    wasAsked = true;
    return true;
}

bool UpdateHostnameForConfig(ConnectConfig* config, const char16_t* sessionName) {
    bool wasAsked = false;
    return FillInHostname(*config, sessionName, nullptr, wasAsked);
}

std::int64_t LaunchHostnamePromptDialog(const char16_t* sessionName, IString* hostname, VWindow* parent) {
    HostnamePromptDialog prompt(sessionName, parent);
    const std::int64_t result = prompt.DoModal();
    const VUnicodeString answer = prompt.GetHostname();
    if (result == kDialogAccepted) hostname->Assign(answer.GetData(), answer.GetLength(), Str::SensitiveState::kPlain);
    return result;
}

}  // namespace connectdialog
