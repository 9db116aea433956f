#include "wizard/newsessionwizardpages.h"

#include <algorithm>
#include <utility>

#include "foundation/vstringarray.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vmessagebox.h"
#include "imports/protocolpagefault.h"
#include "resources/connectiontemplates.h"
#include "wizard/newsessionwizardbase.h"

namespace connectdialog {

namespace {
constexpr std::u16string_view kTapi = u"TAPI";
}  // namespace

void NewSessionWizardProtocolPage::OfferProtocols(std::vector<VUnicodeString> names) {
    choices = std::move(names);
    SetControlChoices(WizardIds::kProtocol, choices);
    auto chosen = std::find_if(choices.begin(), choices.end(),
                               [&](const VUnicodeString& name) { return name.EqualsNoCase(protocolText); });
    if (chosen == choices.end()) chosen = choices.begin();
    protocolText = choices.empty() ? VUnicodeString() : *chosen;
    SetControlText(WizardIds::kProtocol, protocolText);
}

std::vector<VUnicodeString> NewSessionWizardProtocolPage::ListRows(AppKind kind, bool withNone) {
    std::vector<VUnicodeString> names;
    for (const ConnectProtocolTableElement& row : GetConnectProtocolTable())
        if (row.kind == kind && (withNone || row.name != kNoProtocol)) names.push_back(row.name);
    return names;
}

bool NewSessionWizardProtocolPage::CheckChosenRow(int& row) {
    const VUnicodeString chosen = GetControlText(WizardIds::kProtocol);
    const auto found = std::find(choices.begin(), choices.end(), chosen);
    row = found != choices.end() ? static_cast<int>(found - choices.begin()) : -1;
    if (row < 0) return true;
    VReportMessageParams error = GetWizard().GetLastError();
    const VUnicodeString& name = GetConnectProtocolTable()[static_cast<std::uint64_t>(row)].name;
    if (!name.EqualsNoCase(kTapi) || error.GetCode() == 0) return true;
    VMessageBox(this, error);
    return false;
}

std::int64_t NewSessionWizardProtocolPage::GoOnWith(const VUnicodeString& protocolName) {
    if (GetWizard().HasFailedPage(protocolName)) TellNoProtocolPage(this, protocolName);
    return GetWizard().GetNextProtocolResourceID(protocolName);
}

void NewSessionWizardFirstPage::DoDataExchange(VDataExchange& exchange) {
    DDX_Text(exchange, WizardIds::kProtocol, protocolText);
    DDX_Check(exchange, WizardIds::kDeclineWizard, declinesWizard);
    if (!exchange.IsSaving()) return;
    if (!protocolText.IsEmpty()) StoreProtocol();
    GetWizard().SetUseWizard(!declinesWizard);
}

bool NewSessionWizardFirstPage::OnCommand(int command) {
    if (command != WizardIds::kDeclineWizard) return NewSessionWizardProtocolPage::OnCommand(command);
    FitButtons();
    return true;
}

/// Who declines the wizard ends it here; anybody else goes on.
void NewSessionWizardFirstPage::FitButtons() {
    const bool declines = IsControlChecked(WizardIds::kDeclineWizard);
    GetWizard().SetButtons(kWizardNext | kWizardFinish, declines ? kWizardFinish : kWizardNext);
}

NewSessionWizardProtocolSinglePage::NewSessionWizardProtocolSinglePage(ISessionConfig* config, int applicationKind)
    : NewSessionWizardFirstPage(config, kWizardSingleTemplate), applicationKind(applicationKind) {
    GetConfig().GetActiveProtocolName(protocolText);
}

void NewSessionWizardProtocolSinglePage::OnInitDialog() {
    VStringArray names;
    PopulateProtocolArray(names, applicationKind);
    OfferProtocols({names.begin(), names.end()});
    OnControlChanged(WizardIds::kProtocol);
    NewSessionWizardFirstPage::OnInitDialog();
}

void NewSessionWizardProtocolSinglePage::OnControlChanged(int id) {
    int row = 0;
    if (id != WizardIds::kProtocol || !CheckChosenRow(row) || row < 0) return;
    GetConfig().SetActiveProtocolName(GetConnectProtocolTable()[static_cast<std::uint64_t>(row)].name);
}

std::int64_t NewSessionWizardProtocolSinglePage::OnWizardNext() {
    return LeaveForNext() ? GoOnWith(protocolText) : kStay;
}

NewSessionWizardTerminalPage::NewSessionWizardTerminalPage(ISessionConfig* config)
    : NewSessionWizardFirstPage(config, kWizardTerminalTemplate) {
    GetConfig().GetProtocolName(protocolText);
}

void NewSessionWizardTerminalPage::OnInitDialog() {
    declinesWizard = false;
    OfferProtocols(ListRows(AppKind::kNorHalden, true));
    NewSessionWizardFirstPage::OnInitDialog();
}

void NewSessionWizardTerminalPage::OnControlChanged(int id) {
    int row = 0;
    if (id == WizardIds::kProtocol) CheckChosenRow(row);
}

std::int64_t NewSessionWizardTerminalPage::OnWizardNext() {
    if (!LeaveForNext()) return kStay;
    const bool isNone = protocolText.EqualsNoCase(kNoProtocol);
    GetWizard().SetIsHaldenProtocolNone(isNone);
    return isNone ? WizardIds::kTransferPage : GoOnWith(CurrentSshName(protocolText));
}

NewSessionWizardTransferPage::NewSessionWizardTransferPage(ISessionConfig* config)
    : NewSessionWizardProtocolPage(config, kWizardTransferTemplate) {
    GetConfig().GetTransferProtocolName(protocolText);
}

void NewSessionWizardTransferPage::OnSetActive() {
    OfferProtocols(ListRows(AppKind::kTessaly, !GetWizard().GetIsHaldenProtocolNone()));
    GetWizard().SetButtons(kWizardBack | kWizardNext, kWizardBack | kWizardNext);
}

void NewSessionWizardTransferPage::DoDataExchange(VDataExchange& exchange) {
    DDX_Text(exchange, WizardIds::kProtocol, protocolText);
    if (exchange.IsSaving() && !protocolText.IsEmpty()) GetConfig().SetTransferProtocolName(protocolText);
}

std::int64_t NewSessionWizardTransferPage::OnWizardNext() {
    if (!LeaveForNext()) return kStay;
    VUnicodeString terminal;
    GetConfig().GetProtocolName(terminal);
    const bool isOverSsh = protocolText.EqualsNoCase(u"SFTP") || protocolText.EqualsNoCase(u"SCP");
    // The page of SSH2 has asked for all that a transfer over it needs.
    const bool isAsked = isOverSsh && CurrentSshName(terminal).EqualsNoCase(u"SSH2");
    if (protocolText.EqualsNoCase(kNoProtocol) || isAsked) return GetWizard().GetFinishPageID();
    return GoOnWith(protocolText);
}

NewSessionWizardFinishPage::NewSessionWizardFinishPage(ISessionConfig* config)
    : NewSessionWizardPage(config, kWizardFinishTemplate) {}

void NewSessionWizardFinishPage::OnInitDialog() {
    DoSetup(name, description);
    StoreTexts();
    NewSessionWizardPage::OnInitDialog();
}

void NewSessionWizardFinishPage::StoreTexts() {
    GetConfig().SetName(name);
    GetConfig().description.SetText(description);
}

void NewSessionWizardFinishPage::OnSetActive() {
    validatesName = true;
    name = GetConfig().GetName();
    GetConfig().description.GetText(description, false);
    UpdateData(false);
    FitButtons(name);
}

void NewSessionWizardFinishPage::FitButtons(const VUnicodeString& shownName) {
    GetWizard().SetButtons(kWizardBack | kWizardFinish,
                           shownName.IsEmpty() ? kWizardBack : kWizardBack | kWizardFinish);
}

void NewSessionWizardFinishPage::OnControlChanged(int id) {
    if (id == WizardIds::kName) FitButtons(GetControlText(id));
}

void NewSessionWizardFinishPage::DoDataExchange(VDataExchange& exchange) {
    DDX_Text(exchange, WizardIds::kName, name);
    DDX_Text(exchange, WizardIds::kDescription, description);
    if (!exchange.IsSaving()) return;
    if (validatesName) {
        name.TrimLeft();
        name.TrimRight();
        if (!ValidateSessionName(GetConfig().GetPath(), GetConfig().GetName(), name, true, this))
            return exchange.Refuse(WizardIds::kName);
    }
    StoreTexts();
}

std::int64_t NewSessionWizardFinishPage::OnWizardBack() {
    validatesName = false;  // a name that cannot stand must not block the way back
    return NewSessionWizardPage::OnWizardBack();
}

}  // namespace connectdialog
