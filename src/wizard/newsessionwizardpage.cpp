#include "wizard/newsessionwizardpage.h"

#include "foundation/hostnames.h"
#include "foundation/vstringarray.h"
#include "imports/configpanels.h"
#include "sessiondb/entryoperations.h"
#include "wizard/newsessionwizardbase.h"

namespace connectdialog {

namespace {
VRef<SessionConfig> Keep(ISessionConfig* config) {
    return VRef<SessionConfig>::Share(dynamic_cast<SessionConfig*>(config));
}
}  // namespace

NewSessionWizardPage::NewSessionWizardPage(ISessionConfig* config, unsigned resourceId)
    : VPropertyPage(resourceId), config(Keep(config)) {}

NewSessionWizardPage::NewSessionWizardPage(ISessionConfig* config, const DialogTemplate& dialogTemplate)
    : VPropertyPage(dialogTemplate), config(Keep(config)) {}

bool NewSessionWizardPage::OnKillActive() {
    const bool ok = VPropertyPage::OnKillActive();
    wizard->HandleOnKillActive(ok);
    return ok;
}

std::int64_t NewSessionWizardPage::OnWizardBack() {
    // A Next that was refused has left the page's own number.
    std::int64_t previous = wizard->GetPreviousID();
    while (previous == GetResourceID()) previous = wizard->GetPreviousID();
    return previous;
}

bool NewSessionWizardPage::LeaveForNext() {
    if (!UpdateData(true)) return false;
    wizard->SetPreviousID(GetResourceID());
    return true;
}

void NewSessionWizardPage::PopulateProtocolArray(VStringArray& out, int kind) {
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable())
        if (row.kind == static_cast<AppKind>(kind) && row.name != kNoProtocol) out.Add(row.name);
}

/// What no session can be called gives way to its form without separators, and that to the name that was offered.
VUnicodeString NewSessionWizardPage::MakeUsableName(const VUnicodeString& suggestion) const {
    const VUnicodeString& folder = config->GetPath();
    VUnicodeString safe = VSafeHostName(suggestion);
    safe.TrimLeft();
    safe.TrimRight();
    for (const VUnicodeString& base : {suggestion, safe}) {
        VUnicodeString name = base.IsEmpty() ? base : MakeUniqueName(folder, base);
        if (ValidateSessionName(folder, config->GetName(), name, true, nullptr)) return name;
    }
    return config->GetName();
}

void NewSessionWizardPage::DoSetup(VUnicodeString& name, VUnicodeString& description) {
    VUnicodeString suggestion;
    if (config->HasProtocol()) {
        config->GetConnectConfig()->GetSuggestedName(suggestion);
    }
    if (suggestion.IsEmpty() && config->HasTransferProtocol())
        config->GetTransferConnectConfig()->GetSuggestedName(suggestion);
    name = suggestion.IsEmpty() ? config->GetName() : MakeUsableName(suggestion);
    config->description.GetText(description, false);
}

}  // namespace connectdialog
