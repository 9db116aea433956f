#include "quickconnect/quickconnectdialog.h"

#include <algorithm>
#include <utility>

#include "imports/configpanels.h"
#include "imports/protocolpagefault.h"
#include "resources/dialogids.h"

namespace connectdialog {

void QuickConnectDialog::OnInitDialog() {
    GetConfig().GetActiveProtocolName(protocolName);
    ListProtocols();
    comboText = protocolName;  // the first row's where no row has the session's
    LayOut();
    QuickConnectDialogBase::OnInitDialog();
    SetControlChecked(QuickConnectIds::kShowOnStartup, Settings()->quickConnectOnStartup.Get());
    ShowPageOf(static_cast<std::size_t>(protocolIndex));
    SelectChoice(protocolIndex);
    OnHostnameChanged();
    // The control behind the combo box.
    if (page != nullptr)
        page->FocusFirstControl();
    else
        FocusControl(QuickConnectIds::kProtocol);
}

void QuickConnectDialog::ListProtocols() {
    const ConnectProtocolTable& table = GetConnectProtocolTable();
    for (std::size_t row = 0; row < table.GetCount(); ++row) {
        if (table[row].kind != appKind || table[row].name == kNoProtocol) continue;
        choices.push_back(table[row].name);
        if (table[row].name.EqualsNoCase(protocolName)) protocolIndex = static_cast<int>(row);
    }
    SetControlChoices(QuickConnectIds::kProtocol, choices);
    if (protocolIndex != kNoRow) return;
    protocolIndex = 0;
    protocolName = table[0].name;
    GetConfig().SetActiveProtocolName(protocolName);
}

void QuickConnectDialog::LayOut() {
    const bool isTerminal = appKind == AppKind::kNorHalden;
    placeholder = isTerminal ? QuickConnectIds::kTerminalPage : QuickConnectIds::kTransferPage;
    ShowControl(isTerminal ? QuickConnectIds::kTransferPage : QuickConnectIds::kTerminalPage, false);
    // Its text is for whoever draws the template; here it is the frame of the page.
    SetControlText(placeholder, VUnicodeString());
    EnableControl(QuickConnectIds::kOpenInTab, !IsTabForced());
    if (isTerminal) return;
    ShowControl(QuickConnectIds::kOpenInTab, false);
    const VRectangle row = GetWindow()->GetRectangle(QuickConnectIds::kOpenInTab);
    for (const int box : {QuickConnectIds::kShowOnStartup, QuickConnectIds::kSaveSession}) {
        VRectangle place = GetWindow()->GetRectangle(box);
        place.top = row.top;
        place.bottom = row.bottom;
        GetWindow()->SetRectangle(box, place);
    }
}

/// `index` is a row of the protocol table.
void QuickConnectDialog::SelectChoice(int index) {
    const bool isOffered = index >= 0 && static_cast<std::size_t>(index) < choices.size();
    SetControlText(QuickConnectIds::kProtocol, isOffered ? choices[static_cast<std::size_t>(index)] : VUnicodeString());
}

/// A row without a page gives null, and so does a plug-in that fails, which is told.
std::unique_ptr<VPluginDialog> QuickConnectDialog::MakePage(std::size_t row) {
    const ConnectProtocolTableElement& protocol = GetConnectProtocolTable()[row];
    if (protocol.createQuickPage == nullptr) return nullptr;
    try {
        std::unique_ptr<VPluginDialog> made(protocol.createQuickPage(this, &GetConfig()));
        if (made == nullptr) return nullptr;
        made->SetHostnameChangedSink(this);
        const VRectangle place = GetWindow()->GetRectangle(placeholder);
        if (made->CreatePage(*this, place, QuickConnectIds::kProtocol)) return made;
    } catch (...) {
        // A plug-in's failure is no reason to lose the dialog.
    }
    TellNoProtocolPage(this, protocol.name);
    return nullptr;
}

/// Replaces the page that shows; a row without one leaves the frame empty.
void QuickConnectDialog::ShowPageOf(std::size_t row) {
    std::unique_ptr<VPluginDialog> made = MakePage(row);
    if (page != nullptr) {
        page->ShowPage(false);
        page->Destroy();
    }
    page = std::move(made);
    if (page != nullptr) page->ShowPage(true);
}

void QuickConnectDialog::OnHostnameChanged() {
    std::uint32_t state = 0;
    const ConnectConfig* current = GetCurrentConfig();
    EnableControl(kIdOk, current != nullptr && current->IsComplete(state));
}

void QuickConnectDialog::DoDataExchange(VDataExchange& exchange) {
    // While the protocol changes the combo box shows the new one already, and the page is still the old one's.
    if (!isChangingProtocol) DDX_Text(exchange, QuickConnectIds::kProtocol, comboText);
    DDX_Check(exchange, QuickConnectIds::kSaveSession, saveSession);
    DDX_Check(exchange, QuickConnectIds::kOpenInTab, openInTab);
    ExchangePage(exchange, page.get());
    if (!exchange.IsSaving()) return;
    const VRef<GlobalConfig> settings = Settings();
    settings->openInTab.Set(openInTab);
    settings->quickConnectSaveSession.Set(saveSession);
    if (!comboText.IsEmpty()) GetConfig().SetActiveProtocolName(comboText);
}

void QuickConnectDialog::OnControlChanged(int id) {
    if (id != QuickConnectIds::kProtocol) return;
    isChangingProtocol = true;
    ChangeProtocol();
    isChangingProtocol = false;
}

void QuickConnectDialog::ChangeProtocol() {
    const VUnicodeString chosen = GetControlText(QuickConnectIds::kProtocol);
    if (!UpdateData(true)) return SelectChoice(protocolIndex);
    const auto found = std::find(choices.begin(), choices.end(), chosen);
    const int selected = found != choices.end() ? static_cast<int>(found - choices.begin()) : kNoRow;
    if (selected == kNoRow || selected == protocolIndex) return;
    SetNotToBeSaved(!saveSession);
    const ConnectProtocolTable& table = GetConnectProtocolTable();
    if (static_cast<std::size_t>(selected) >= table.GetCount()) return SelectChoice(protocolIndex);
    const auto row = static_cast<std::size_t>(selected);
    ApplyPortRule(static_cast<std::size_t>(protocolIndex), row);
    protocolIndex = selected;
    comboText = chosen;
    GetConfig().SetActiveProtocolName(table[row].name);
    ShowPageOf(row);
    OnHostnameChanged();
}

bool QuickConnectDialog::OnCommand(int command) {
    const bool isChecked = IsControlChecked(command);
    switch (command) {
        case QuickConnectIds::kShowOnStartup:
            Settings()->quickConnectOnStartup.Set(isChecked);
            return true;
        case QuickConnectIds::kSaveSession:
            // Inverted until the dialog is accepted, and for good when it is not.
            Settings()->quickConnectSaveSession.Set(!isChecked);
            SetNotToBeSaved(!isChecked);
            return true;
        default:
            return QuickConnectDialogBase::OnCommand(command);
    }
}

void QuickConnectDialog::OnDestroy() {
    if (page != nullptr) page->Destroy();
    page.reset();
    choices.clear();
}

}  // namespace connectdialog
