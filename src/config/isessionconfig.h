// A session as the rest of the system sees it.
#pragma once

#include <cstdint>
#include <string_view>

#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"

namespace connectdialog {

class ConnectConfig;
class VBasicBuffer;
class VProfileData;
class VProfileKey;

/// A named record of settings, reference counted. It is never attached to a key: Save is given one.
class ISessionConfig : public IUnknownBase {
  public:
    virtual bool IsChanged() const = 0;
    virtual void Commit() = 0;
    virtual void Revert() = 0;
    /// Writes what must be written, or everything when `force` is set.
    virtual void Save(VProfileKey& key, bool force) = 0;
    /// Takes over the settings that are changed in `other`. Another class: nothing happens.
    virtual void CopyChangesFrom(const ISessionConfig* other) = 0;

    /// The path in the session tree: names joined by one `\`, relative to its root.
    virtual const VUnicodeString& GetPath() const = 0;
    /// Sets the path; any but the Default session counts as stored from now on. Gives IsDefaultSession.
    virtual bool SetPath(const VUnicodeString& path) = 0;
    /// The leaf name.
    virtual const VUnicodeString& GetName() const = 0;
    virtual void SetName(const VUnicodeString& name) = 0;
    /// Host and description, as the tip of a tree item; empty when neither side has a protocol.
    virtual void GetDisplayText(VUnicodeString& text) const = 0;
    /// A copy of its own that is changed in the same way. One reference for the caller; null when memory runs out.
    virtual ISessionConfig* Clone() const = 0;

    /// Spare places in the order of the operations: they do nothing.
    virtual void Spare() const = 0;
    virtual void Spare() = 0;

    /// Whether the terminal side can connect, or lacks nothing but a host name.
    virtual bool IsConnectable() const = 0;
    virtual bool IsTransferConnectable() const = 0;
    /// Whether a protocol with settings is selected that is not "None".
    virtual bool HasProtocol() const = 0;
    virtual bool HasTransferProtocol() const = 0;
    /// The selected settings, or null. No reference is added.
    virtual const ConnectConfig* GetConnectConfig() const = 0;
    virtual ConnectConfig* GetConnectConfig() = 0;
    virtual const ConnectConfig* GetTransferConnectConfig() const = 0;
    virtual ConnectConfig* GetTransferConnectConfig() = 0;
    /// Selects the terminal side's protocol; what the old one shares travels to the new one.
    virtual void SetProtocolName(const VUnicodeString& name) = 0;
    virtual void GetProtocolName(VUnicodeString& name) const = 0;
    virtual void GetTransferProtocolName(VUnicodeString& name) const = 0;
    /// Hands the argument to the transfer protocol; nothing happens when there is none.
    virtual void ForwardToTransferConfig(void* argument) = 0;
    /// Writes "None" and every firewall that opens, in the binary form of a string array.
    virtual void GetFirewallNames(VBasicBuffer& buffer) const = 0;
    /// Path and name are both exactly "Default".
    virtual bool IsDefaultSession() const = 0;
    /// A text that the host may attach; never saved, and a clone starts without it.
    virtual void GetTransientText(VUnicodeString& text) const = 0;
    virtual void SetTransientText(const VUnicodeString& text) = 0;

    ~ISessionConfig() override = default;
    void Destroy() override = 0;
    /// HasProtocol or HasTransferProtocol, by the kind of the running application.
    virtual bool HasActiveProtocol() const = 0;
    /// False for a temporary session made from the Default one.
    virtual bool IsStored() const = 0;
    /// The direct setting of that value name, case ignored, or null. Owned by the session.
    virtual VProfileData* FindValue(std::u16string_view name) = 0;
};

}  // namespace connectdialog
