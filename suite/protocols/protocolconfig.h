// The settings object of every protocol of the suite.
#pragma once

#include "config/iremotehostconfig.h"
#include "imports/connectconfig.h"
#include "suite/protocols/protocolsettings.h"

namespace connectdialog {

class ISessionConfig;
struct ConnectProtocolTableElement;
struct ProtocolTraits;

/// A thin view: a protocol's traits, the session's far end and the session's protocol settings, both shared with the
/// other protocols of that session. What the traits list is what this protocol saves, compares and copies; a protocol
/// with a host does so with host, firewall and user too.
class ProtocolConfig final : public ConnectConfig {
  public:
    /// IsComplete's state when something other than the host name is missing.
    static constexpr std::uint32_t kSettingMissing = 2;

    ProtocolConfig(const ProtocolTraits& traits, VRef<IRemoteHostConfig> remoteHost, VRef<ProtocolSettings> settings);

    const ProtocolTraits& GetTraits() const { return traits; }
    const ProtocolSettings& GetSettings() const { return *settings; }
    ProtocolSettings& EditSettings() { return *settings; }
    /// Host, firewall and user; never null.
    IRemoteHostConfig& GetRemoteHost() const { return *remoteHost; }
    /// Nothing happens where the protocol has no port.
    void SetPort(std::uint16_t port);

    void Save(VProfileKey& key, bool force) override;
    bool IsChanged() const override;
    /// The first call, which the creator makes, accepts nothing: see `isNew`.
    void Commit() override;
    void Revert() override;
    void Assign(const VProfileData& other) override;
    bool IsMissing() const override;
    VProfileData* GetMember(std::size_t index) override;

    ConnectConfig* Clone(ICommonConfig* common) const override;
    void ExportShared(SharedSettings& shared) const override;
    void ImportShared(const SharedSettings& shared) override;
    bool IsComplete(std::uint32_t& state) const override;
    void GetSuggestedName(VUnicodeString& name) const override;
    /// What the session connects to: the device or the phone number where there is no host.
    void GetHostName(VUnicodeString& host) const override;
    void SetHostName(const VUnicodeString& host) override;
    std::uint16_t GetPort() const override;
    void TransferForward(void* argument) override;
    void ReleasePort() override;

  private:
    ~ProtocolConfig() override = default;

    bool HasHost() const;
    VProfileData& HostData() const;
    /// The text setting that the target is kept in; null for a host and for none.
    VProfileText* TargetText() const;
    template <class Function>
    void ForEachMember(Function visit) const;

    const ProtocolTraits& traits;
    VRef<IRemoteHostConfig> remoteHost;
    VRef<ProtocolSettings> settings;
    /// The creator commits what it made. The settings may be older than this view and hold edits that the user can
    /// still drop, and what a load corrected shall show as changed: so that commit must not reach them.
    bool isNew = true;
};

/// The far end of the session; null where no protocol of this suite is selected. Owned by the session.
IRemoteHostConfig* FindRemoteHost(ISessionConfig& session);

/// The factory of every row of the protocol table. Key and common config may be null; without a common config the
/// object has a far end and settings of its own.
ConnectConfig* CreateProtocolConfig(VProfileKey* key, ICommonConfig* common, const ConnectProtocolTableElement& row);

}  // namespace connectdialog
