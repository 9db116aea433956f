// A session's settings in memory.
#pragma once

#include <cstdint>
#include <span>
#include <utility>

#include "config/commonconfig.h"
#include "config/connectconfigptr.h"
#include "config/isessionconfig.h"
#include "config/printerconfig.h"
#include "config/sessionsettings.h"
#include "config/terminalconfig.h"
#include "foundation/vcriticalsection.h"
#include "profile/vprofilecomposite.h"

namespace connectdialog {

class GlobalConfig;

/// Built from one key of the store, or from none (then every member has its default), edited in memory and written
/// back to a key that the caller opens. Stored values that are wrong are corrected in the value and not in the stored
/// copy, so that the session shows as changed and its next save repairs them.
class SessionConfig : public VUnknown<ISessionConfig>, public VProfileComposite<SessionConfig>, public SessionSettings {
  public:
    /// `name` is the leaf name, `key` may be null; it is not kept. The session named "Default" made without a key
    /// writes itself to the store when the store has none.
    SessionConfig(const VUnicodeString& name, VProfileKey* key);

    /// In storage order; the index is what GetMember takes. Key names and defaults stand in the loading functions.
    static std::span<const MemberAccess<SessionConfig>> Members();

    // ISessionConfig and the composite share these.
    bool IsChanged() const override { return VProfileComposite::IsChanged(); }
    void Commit() override { VProfileComposite::Commit(); }
    void Revert() override { VProfileComposite::Revert(); }
    void Save(VProfileKey& key, bool force) override {
        VProfileComposite::Save(key, std::exchange(mustWriteAll, false) || force);
    }
    /// The store refused a save after its settings were told that they are stored: the next Save writes them all.
    void SetMustWriteAll() { mustWriteAll = true; }

    void CopyChangesFrom(const ISessionConfig* other) override;
    const VUnicodeString& GetPath() const override { return path; }
    bool SetPath(const VUnicodeString& newPath) override;
    const VUnicodeString& GetName() const override { return name; }
    void SetName(const VUnicodeString& newName) override;
    void GetDisplayText(VUnicodeString& text) const override;
    ISessionConfig* Clone() const override;
    void Spare() const override {}
    void Spare() override {}
    bool IsConnectable() const override;
    bool IsTransferConnectable() const override;
    bool HasProtocol() const override;
    bool HasTransferProtocol() const override;
    const ConnectConfig* GetConnectConfig() const override { return protocol.GetSelected(); }
    ConnectConfig* GetConnectConfig() override { return protocol.GetSelected(); }
    const ConnectConfig* GetTransferConnectConfig() const override { return transferProtocol.GetSelected(); }
    ConnectConfig* GetTransferConnectConfig() override { return transferProtocol.GetSelected(); }
    void SetProtocolName(const VUnicodeString& protocolName) override;
    void GetProtocolName(VUnicodeString& text) const override { text = protocol.GetProtocolName(); }
    void GetTransferProtocolName(VUnicodeString& text) const override { text = transferProtocol.GetProtocolName(); }
    void ForwardToTransferConfig(void* argument) override;
    void GetFirewallNames(VBasicBuffer& buffer) const override;
    bool IsDefaultSession() const override;
    void GetTransientText(VUnicodeString& text) const override { text = transientText; }
    void SetTransientText(const VUnicodeString& text) override { transientText = text; }
    void Destroy() override { delete this; }
    bool HasActiveProtocol() const override;
    bool IsStored() const override { return !notStored; }
    VProfileData* FindValue(std::u16string_view valueName) override { return VProfileComposite::FindValue(valueName); }

    void SetTransferProtocolName(const VUnicodeString& protocolName);
    /// The side of the running application.
    void SetActiveProtocolName(const VUnicodeString& protocolName);
    void GetActiveProtocolName(VUnicodeString& text) const;
    /// Marks a temporary session made from the Default one.
    void SetStored(bool isStored) { notStored = !isStored; }

    void Lock(VProfileKey& key, bool force) override;
    void Unlock(VProfileKey& key, bool force) override;

    // The parts, open like the settings.

    TerminalConfig terminal;
    PrinterConfig printer;

  private:
    SessionConfig(const SessionConfig& other);
    ~SessionConfig() override = default;

    void LoadLogin(VProfileKey* key);
    void LoadLoginScript(VProfileKey* key);
    void LoadTransfer(VProfileKey* key);
    void LoadLogging(VProfileKey* key);
    void LoadKeyboard(VProfileKey* key);
    void LoadIdle(VProfileKey* key);
    void LoadTerminalMisc(VProfileKey* key, const GlobalConfig* global);
    void LoadPrinting(VProfileKey* key);
    void LoadRemoteDirectories(VProfileKey* key);
    void LoadRemoteFrame(VProfileKey* key, const GlobalConfig* global);
    void LoadFileTransfer(VProfileKey* key);
    void SettleDefaultSession(VProfileKey* key);
    bool StoreDefaultSession();
    void LeaveTemplate();

    VRef<VCriticalSection> saving = VRef<VCriticalSection>::Adopt(new VCriticalSection);  ///< held during Save only
    bool notStored = false;
    bool mustWriteAll = false;
    VUnicodeString firstSpare;
    VUnicodeString secondSpare;  ///< emptied whenever a protocol is set
    VUnicodeString name;
    VUnicodeString path;
    VUnicodeString transientText;
    CommonConfig common;  ///< before the protocols, which refer to it
    ConnectConfigPtr protocol;
    ConnectConfigPtr transferProtocol;
};

/// A new session with one reference for the caller. A null name counts as empty; `key` may be null.
ISessionConfig* CreateSessionConfig(const char16_t* name, VProfileKey* key);

}  // namespace connectdialog
