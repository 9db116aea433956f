#include "config/sessionconfig.h"

#include <new>

#include "config/appkind.h"
#include "config/sessiondbhooks.h"
#include "foundation/vbasicbuffer.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"
#include "resources/storenames.h"

namespace connectdialog {

namespace {

bool IsSelected(const ConnectConfigPtr& protocol) {
    return protocol.GetSelected() != nullptr && protocol.GetProtocolName().View() != kNoProtocol;
}

/// A missing host name can still be asked for.
bool CanConnect(const ConnectConfigPtr& protocol) {
    if (!IsSelected(protocol)) return false;
    std::uint32_t state = 0;
    return protocol.GetSelected()->IsComplete(state) || state == ConnectConfig::kHostNameMissing;
}

}  // namespace

ISessionConfig* CreateSessionConfig(const char16_t* name, VProfileKey* key) {
    return new SessionConfig(name, key);
}

SessionConfig::SessionConfig(const SessionConfig& other)
    : VUnknown(other),
      VProfileComposite(other),
      SessionSettings(other),
      terminal(other.terminal),
      printer(other.printer),
      notStored(other.notStored),
      mustWriteAll(other.mustWriteAll),
      firstSpare(other.firstSpare),
      secondSpare(other.secondSpare),
      name(other.name),
      path(other.path),
      common(other.common),
      protocol(other.protocol, &common),
      transferProtocol(other.transferProtocol, &common) {}

ISessionConfig* SessionConfig::Clone() const {
    try {
        return new SessionConfig(*this);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void SessionConfig::SettleDefaultSession(VProfileKey* key) {
    if (name != kDefaultSession) {
        // An empty stored name means no protocol at all; an absent one meant the first of its side.
        if (protocol.NameWasEmpty()) protocol.SetProtocol(kNoProtocol, &common, true);
        if (transferProtocol.NameWasEmpty()) transferProtocol.SetProtocol(kNoProtocol, &common, true);
        return;
    }
    if (key == nullptr) {
        GetSessionDbHooks()->UpgradeButtonBars();
        if (!StoreDefaultSession()) mustWriteAll = true;
    }
    for (ConnectConfig* config : {protocol.GetSelected(), transferProtocol.GetSelected()})
        if (config != nullptr) config->notToBeSaved = 1;
}

/// The template is made in the store on its first use. True when it is there.
bool SessionConfig::StoreDefaultSession() {
    const VUnicodeString keyPath = kSessionsKey + u"\\"_v + kDefaultSession;
    return AsOneUnit([&] {
        VProfileStore store;
        if (store.GetRootKey()->KeyExists(keyPath.GetData())) return true;
        return WriteToKey(keyPath.GetData(), [this](VProfileKey& key) { Save(key, true); });
    });
}

/// What was made from the Default session and has a name or a path of its own is a session like any other.
void SessionConfig::LeaveTemplate() {
    if (IsDefaultSession()) return;
    notStored = false;
    // Also those that are not selected any more: the user may come back to them.
    for (const ConnectConfigPtr* side : {&protocol, &transferProtocol})
        for (const VRef<ConnectConfig>& config : side->GetConfigs())
            if (config) config->notToBeSaved = 0;
}

void SessionConfig::Lock(VProfileKey&, bool) {
    saving->Lock();
}
void SessionConfig::Unlock(VProfileKey&, bool) {
    saving->Unlock();
}

void SessionConfig::CopyChangesFrom(const ISessionConfig* other) {
    if (const auto* session = dynamic_cast<const SessionConfig*>(other)) Assign(*session);
}

bool SessionConfig::SetPath(const VUnicodeString& newPath) {
    path = newPath;
    LeaveTemplate();
    return IsDefaultSession();
}

void SessionConfig::SetName(const VUnicodeString& newName) {
    name = newName;
    LeaveTemplate();
}

bool SessionConfig::IsDefaultSession() const {
    return path == kDefaultSession && name == kDefaultSession;
}

bool SessionConfig::IsConnectable() const {
    return CanConnect(protocol);
}
bool SessionConfig::IsTransferConnectable() const {
    return CanConnect(transferProtocol);
}
bool SessionConfig::HasProtocol() const {
    return IsSelected(protocol);
}
bool SessionConfig::HasTransferProtocol() const {
    return IsSelected(transferProtocol);
}

bool SessionConfig::HasActiveProtocol() const {
    return GetAppKind() == AppKind::kTessaly ? HasTransferProtocol() : HasProtocol();
}

void SessionConfig::SetProtocolName(const VUnicodeString& protocolName) {
    secondSpare.Empty();
    protocol.SetProtocol(protocolName, &common, true);
}

void SessionConfig::SetTransferProtocolName(const VUnicodeString& protocolName) {
    secondSpare.Empty();
    transferProtocol.SetProtocol(protocolName, &common, true);
}

void SessionConfig::SetActiveProtocolName(const VUnicodeString& protocolName) {
    if (GetAppKind() == AppKind::kTessaly)
        SetTransferProtocolName(protocolName);
    else
        SetProtocolName(protocolName);
}

void SessionConfig::GetActiveProtocolName(VUnicodeString& text) const {
    if (GetAppKind() == AppKind::kTessaly)
        GetTransferProtocolName(text);
    else
        GetProtocolName(text);
}

void SessionConfig::ForwardToTransferConfig(void* argument) {
    if (ConnectConfig* config = transferProtocol.GetSelected()) config->TransferForward(argument);
}

void SessionConfig::GetFirewallNames(VBasicBuffer& buffer) const {
    GetSessionDbHooks()->EnumerateFirewalls(buffer);
}

void SessionConfig::GetDisplayText(VUnicodeString& text) const {
    text.Empty();
    const ConnectConfig* terminal = protocol.GetSelected();
    const ConnectConfig* transfer = transferProtocol.GetSelected();
    if (terminal == nullptr && transfer == nullptr) return;

    VUnicodeString host;
    if (terminal != nullptr) terminal->GetHostName(host);
    if (host.IsEmpty() && transfer != nullptr) transfer->GetHostName(host);
    const std::u16string_view protocolName = protocol.GetProtocolName();
    const char16_t* label = protocolName == u"TAPI"     ? u"Phone number:"
                            : protocolName == u"Serial" ? u"Port:"
                                                        : u"主机名:";
    text.Format(u"%1 %2", label, host);

    VUnicodeString lines;
    description.GetText(lines, true);
    if (!lines.IsEmpty()) text += u"\n" + lines;
}

}  // namespace connectdialog
