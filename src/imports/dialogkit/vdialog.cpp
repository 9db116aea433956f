#include "imports/dialogkit/vdialog.h"

#include <utility>

#include "imports/dialogkit/idialogkit.h"

namespace connectdialog {

// The window's end is told to no object that is half gone: whoever shows a dialog ends it before it is destroyed.
VDialog::~VDialog() = default;

bool VDialog::Open() {
    IDialogKit* kit = GetDialogKit();
    return kit != nullptr && dialogTemplate != nullptr &&
           Attach(kit->CreateDialogWindow(*dialogTemplate, *this, parent));
}

bool VDialog::Attach(std::unique_ptr<IDialogWindow> newWindow) {
    hasEnded = false;
    result = kDialogCancelled;
    window = std::move(newWindow);
    if (window == nullptr) return false;
    isDestroyed = false;
    OnInitDialog();
    return true;
}

std::int64_t VDialog::DoModal() {
    if (!Open()) return kDialogCancelled;
    if (!hasEnded) window->RunModal();
    CloseWindow();
    return result;
}

bool VDialog::Create() {
    if (!Open()) return false;
    if (!hasEnded) window->ShowModeless();
    return true;
}

bool VDialog::CreatePage(VDialog& owner, const VRectangle& place, int behindId) {
    if (window != nullptr || owner.window == nullptr || dialogTemplate == nullptr) return false;
    parent = &owner;
    try {
        return Attach(owner.window->CreatePage(*dialogTemplate, *this, place, behindId));
    } catch (...) {
        // A plug-in's page: its failure is no reason to lose the dialog.
        CloseWindow();
        return false;
    }
}

void VDialog::ShowPage(bool isShown) {
    if (window == nullptr) return;
    if (isShown)
        window->ShowModeless();
    else
        window->Hide();
}

void VDialog::FocusFirstControl() {
    if (window == nullptr) return;
    for (const ControlTemplate& row : dialogTemplate->controls)
        if (TakesFocus(row.kind) && window->IsEnabled(row.id) && window->IsShown(row.id))
            return window->SetFocus(row.id);
}

void VDialog::Destroy() {
    CloseWindow();
}

void VDialog::CloseWindow() {
    OnWindowGone();
    window.reset();
}

void VDialog::OnWindowGone() {
    if (isDestroyed) return;
    isDestroyed = true;
    hasEnded = true;
    OnDestroy();
}

void VDialog::EndDialog(std::int64_t newResult) {
    if (hasEnded) return;
    hasEnded = true;
    result = newResult;
    if (window != nullptr) window->Close();
}

bool VDialog::UpdateData(bool save) {
    if (window == nullptr) return false;
    VDataExchange exchange(*window, save);
    DoDataExchange(exchange);
    return !exchange.IsRefused();
}

VUnicodeString VDialog::GetControlText(int id) const {
    return window != nullptr ? window->GetText(id) : VUnicodeString();
}
void VDialog::SetControlText(int id, const VUnicodeString& text) {
    if (window != nullptr) window->SetText(id, text);
}
void VDialog::SetControlChoices(int id, std::span<const VUnicodeString> choices) {
    if (window != nullptr) window->SetChoices(id, choices);
}
bool VDialog::IsControlChecked(int id) const {
    return window != nullptr && window->IsChecked(id);
}
void VDialog::SetControlChecked(int id, bool isChecked) {
    if (window != nullptr) window->SetChecked(id, isChecked);
}
void VDialog::EnableControl(int id, bool isEnabled) {
    if (window != nullptr) window->SetEnabled(id, isEnabled);
}
void VDialog::ShowControl(int id, bool isShown) {
    if (window != nullptr) window->SetShown(id, isShown);
}
void VDialog::FocusControl(int id) {
    if (window != nullptr) window->SetFocus(id);
}
void VDialog::SetTitle(const VUnicodeString& title) {
    if (window != nullptr) window->SetTitle(title);
}

void VDialog::OnInitDialog() {
    UpdateData(false);
}
void VDialog::DoDataExchange(VDataExchange&) {}

bool VDialog::OnCommand(int command) {
    if (command == kIdOk)
        OnOK();
    else if (command == kIdCancel)
        OnCancel();
    return command == kIdOk || command == kIdCancel;
}

void VDialog::OnControlChanged(int) {}

void VDialog::OnOK() {
    if (UpdateData(true)) EndDialog(kDialogAccepted);
}
void VDialog::OnCancel() {
    EndDialog(kDialogCancelled);
}

bool VDialog::PreTranslateKey(std::uint16_t key, KeyModifiers modifiers) {
    for (const Accelerator& row : accelerators)
        if (row.key == key && row.modifiers == modifiers) return OnCommand(row.command);
    return false;
}

void VDialog::OnTimer(int) {}
void VDialog::OnSize(std::int32_t, std::int32_t) {}
void VDialog::OnDestroy() {}

void VDialog::OnCommandEvent(int id) {
    if (!hasEnded) OnCommand(id);
}
void VDialog::OnTextChanged(int id) {
    if (!hasEnded) OnControlChanged(id);
}
bool VDialog::OnKeyEvent(std::uint16_t key, KeyModifiers modifiers) {
    return hasEnded || PreTranslateKey(key, modifiers);
}

void ExchangePage(VDataExchange& exchange, VPluginDialog* page) {
    if (page == nullptr || exchange.IsRefused()) return;
    if (!page->UpdateData(exchange.IsSaving()) && page->GetWindow() != nullptr) exchange.Refuse(kNoId);
}

}  // namespace connectdialog
