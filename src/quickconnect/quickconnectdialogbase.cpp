#include <utility>

#include "config/appkind.h"
#include "foundation/hostnames.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/vmessagebox.h"
#include "quickconnect/quickconnectdialog.h"
#include "resources/connectiontemplates.h"
#include "sessiondb/buttonbarupgrade.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/sessiontree.h"

namespace connectdialog {

namespace {

/// Both speak to the same port.
bool SharesSshPort(const VUnicodeString& name) {
    return name == u"SSH1" || name == u"SSH2";
}

VRef<SessionConfig> CloneOf(const SessionConfig& config) {
    return VRef<SessionConfig>::Adopt(static_cast<SessionConfig*>(config.Clone()));
}

}  // namespace

VRef<SessionConfig>& QuickConnectDialogBase::LastQuickConnectConfig() {
    static VRef<SessionConfig> last;
    return last;
}

QuickConnectDialogBase::QuickConnectDialogBase(const VUnicodeString& targetFolder, AppKind appKind, VWindow* parent)
    : VDialog(kQuickConnectTemplate, parent), appKind(appKind), targetFolder(targetFolder) {
    const VRef<GlobalConfig> settings = Settings();
    openInTab = settings->openInTab.Get();
    saveSession = settings->quickConnectSaveSession.Get();
    OpenWorkingConfig();
    if (IsTabForced()) settings->openInTab.Set(true);
    SetNotToBeSaved(!saveSession);
    if (const ConnectConfig* current = GetCurrentConfig()) initialPort = current->GetPort();
}

QuickConnectDialogBase::~QuickConnectDialogBase() {
    const VRef<GlobalConfig> settings = Settings();
    if (settings->quickConnectOnStartup.Get()) settings->connectDialogOnStartup.Set(false);
    if (wasShown && settings->saveConfigOnClose.Get()) settings->Save();
}

void QuickConnectDialogBase::OpenWorkingConfig() {
    UpgradeButtonBars();
    const VRef<ISessionConfig> opened = OpenSession(kDefaultSession);
    config = VRef<SessionConfig>::Share(dynamic_cast<SessionConfig*>(opened.Get()));
    // A folder stands where the Default session should: its settings are still the defaults.
    if (!config) config = VRef<SessionConfig>::Adopt(new SessionConfig(VUnicodeString(kDefaultSession), nullptr));
    if (LastQuickConnectConfig()) {
        config->Assign(*LastQuickConnectConfig());
        return;
    }
    config->Commit();
    if (!config->HasActiveProtocol()) config->SetActiveProtocolName(GetConnectProtocolTable()[0].name);
    LastQuickConnectConfig() = CloneOf(*config);
}

ConnectConfig* QuickConnectDialogBase::GetCurrentConfig() const {
    return GetAppKind() == AppKind::kTessaly ? config->GetTransferConnectConfig() : config->GetConnectConfig();
}

void QuickConnectDialogBase::SetNotToBeSaved(bool isNotToBeSaved) {
    if (ConnectConfig* current = GetCurrentConfig()) current->notToBeSaved = isNotToBeSaved ? 1 : 0;
}

bool QuickConnectDialogBase::IsTabForced() const {
    const VRef<GlobalConfig> settings = Settings();
    return settings->tabMode.Get() != 0 && settings->tabsForced.Get();
}

void QuickConnectDialogBase::ApplyPortRule(std::size_t oldRow, std::size_t newRow) {
    const ConnectProtocolTable& table = GetConnectProtocolTable();
    if (SharesSshPort(table[oldRow].name) && SharesSshPort(table[newRow].name)) return;
    ConnectConfig* const old = GetCurrentConfig();
    if (!isPortDefaultPending || old == nullptr || old->GetPort() != initialPort) return;
    old->ReleasePort();
    isPortDefaultPending = false;
}

std::int64_t QuickConnectDialogBase::Run() {
    wasShown = true;
    const std::int64_t result = DoModal();
    if (result == kDialogAccepted) Accept();
    return result;
}

void QuickConnectDialogBase::Accept() {
    LastQuickConnectConfig() = CloneOf(*config);
    const bool isStored = saveSession && StoreSession();
    config->SetStored(isStored);
    if (saveSession && !isStored)
        VMessageBox(GetParent(), u"ERROR: Could not save the session in the database."_v, kBoxError);
}

bool QuickConnectDialogBase::StoreSession() {
    UpgradeButtonBars();
    SetNotToBeSaved(false);
    config->Commit();
    return StoreUnderFreeName(targetFolder, *config, [&] { return MakeStorableName(); });
}

/// The suggested name in a form that can be a session's, free in the target folder. What can be no session's name at
/// all, like one of ten thousand characters, gives way to the protocol's.
VUnicodeString QuickConnectDialogBase::MakeStorableName() const {
    VUnicodeString suggested;
    if (const ConnectConfig* current = GetCurrentConfig()) current->GetSuggestedName(suggested);
    VUnicodeString protocol;
    config->GetActiveProtocolName(protocol);
    for (const VUnicodeString& text : {suggested, protocol}) {
        VUnicodeString base = VSafeHostName(text);
        base.TrimLeft();
        base.TrimRight();
        VUnicodeString name = base.IsEmpty() ? base : MakeUniqueName(targetFolder, base);
        if (ValidateSessionName(targetFolder, VUnicodeString(), name, true, nullptr)) return name;
    }
    return MakeUniqueName(targetFolder, u"New"_v);
}

}  // namespace connectdialog
