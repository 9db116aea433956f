#include "imports/configpanels.h"

namespace connectdialog {

namespace {
IConfigPanels* installed = nullptr;
}  // namespace

void InstallConfigPanels(IConfigPanels* panels) {
    installed = panels;
}

bool GetGlobalConfig(VRef<GlobalConfig>& config, std::int32_t kind) {
    return installed->GetGlobalConfig(config, kind);
}
void ConfigPanelsInitGUI(PickSessionsFunction pick, SessionImageListFunction images) {
    installed->ConfigPanelsInitGUI(pick, images);
}
const ConnectProtocolTable& GetConnectProtocolTable() {
    return installed->GetConnectProtocolTable();
}
AppKind GetCurrentAppProductID() {
    return installed->GetCurrentAppProductID();
}
bool IsIntegrated() {
    return installed->IsIntegrated();
}
bool IsNorHaldenInstalled() {
    return installed->IsNorHaldenInstalled();
}
bool IsNorHaldenOrHaldenInstalled() {
    return installed->IsNorHaldenOrHaldenInstalled();
}
bool IsTessalyInstalled() {
    return installed->IsTessalyInstalled();
}
bool HasKeldaEmulation() {
    return installed->HasKeldaEmulation();
}
bool ValidateSessionName(const VUnicodeString& path, const VUnicodeString& oldName, const VUnicodeString& newName,
                         bool isNew, VWindow* parent) {
    return installed->ValidateSessionName(path, oldName, newName, isNew, parent);
}
void LaunchTerminalApp(VWindow* parent, const char16_t* commandLine) {
    installed->LaunchTerminalApp(parent, commandLine);
}
void LaunchFileTransferApp(VWindow* parent, const char16_t* commandLine) {
    installed->LaunchFileTransferApp(parent, commandLine);
}
int ShowOptionalMessageBox(VWindow* parent, const VUnicodeString& text, const VUnicodeString& checkText,
                           VProfile<int>& suppress, const VUnicodeString& buttonText, bool isQuestion, int picture,
                           unsigned helpId) {
    return installed->ShowOptionalMessageBox(parent, text, checkText, suppress, buttonText, isQuestion, picture,
                                             helpId);
}
char16_t GetApplicationTrademarkSymbol(const VUnicodeString& appName) {
    return installed->GetApplicationTrademarkSymbol(appName);
}
bool LaunchFirewallUsernameDialog(IString* answer, bool& save, IParentable* parent) {
    return installed->LaunchFirewallUsernameDialog(answer, save, parent);
}
bool LaunchFirewallPasswordDialog(IString* answer, bool& save, IParentable* parent) {
    return installed->LaunchFirewallPasswordDialog(answer, save, parent);
}

}  // namespace connectdialog
