// What the library needs of a protocol: the settings object that a plug-in makes, and what such objects share.
#pragma once

#include <cstdint>

#include "foundation/vmap.h"
#include "foundation/vunicodestring.h"
#include "foundation/vunknown.h"
#include "profile/vprofiledata.h"

namespace connectdialog {

class ConnectConfig;
class IRemoteHostConfig;

/// What one protocol hands to the next when the user switches: the plug-ins' own names and texts.
using SharedSettings = VMap<VUnicodeString, VUnicodeString>;

/// An object that a plug-in keeps for all the protocols of one session.
class ISharedConfig : public IUnknownBase {
  public:
    /// A copy for a clone of the session; one reference for the caller.
    virtual ISharedConfig* Clone() const = 0;

  protected:
    ~ISharedConfig() override = default;
};

/// What the protocol configs of one session share.
class ICommonConfig {
  public:
    using SharedConfigCreator = ISharedConfig* (*)(void* context);

    virtual ~ICommonConfig() = default;
    /// The far end of the session, made from `key` (may be null) by the first call; later calls ignore their key.
    /// One reference for the caller.
    virtual IRemoteHostConfig* GetRemoteHostConfig(VProfileKey* key) = 0;
    /// The plug-in object `which`; while there is none, `create(context)` makes it and its reference is kept. Null when
    /// the creator gave null. One reference for the caller.
    virtual ISharedConfig* GetSharedConfig(void* context, bool which, SharedConfigCreator create) = 0;
};

/// The settings of one protocol in one session. A plug-in derives from it; the count starts at 1, for the creator.
///
/// The operations of a setting (Save, IsChanged, Commit, Revert, Assign, IsMissing) are those of VProfileData, with the
/// session's key. GetMember gives the settings that this protocol saves, in order, and null behind the last.
class ConnectConfig : public VProfileData, public VUnknown<IUnknownBase> {
  public:
    /// IsComplete's state when nothing but the host name is missing.
    static constexpr std::uint32_t kHostNameMissing = 1;

    /// A copy with everything that is edited and stored, over another session's common config. One reference for the
    /// caller; null when memory runs out. `common` may be null.
    virtual ConnectConfig* Clone(ICommonConfig* common) const = 0;
    /// Writes what another protocol can take over.
    virtual void ExportShared(SharedSettings& settings) const = 0;
    /// Takes over what it knows; the rest stays as it is.
    virtual void ImportShared(const SharedSettings& settings) = 0;
    /// True when it can connect; else `state` tells what is missing: kHostNameMissing, or another number.
    virtual bool IsComplete(std::uint32_t& state) const = 0;
    /// A name for a session with these settings, normally the host's; may be empty.
    virtual void GetSuggestedName(VUnicodeString& name) const = 0;
    virtual void GetHostName(VUnicodeString& host) const = 0;
    virtual void SetHostName(const VUnicodeString& host) = 0;
    virtual std::uint16_t GetPort() const = 0;
    /// The plug-in's own; the library passes the argument on.
    virtual void TransferForward(void* argument) = 0;
    /// Called before the protocol changes in quick connect, while the port is still the one that was found: a default
    /// port need not travel to the next protocol.
    virtual void ReleasePort() = 0;

    /// Not 0: Save writes nothing. Set on the protocols of the Default session, whose host is nobody's.
    std::uint32_t notToBeSaved = 0;

  protected:
    ConnectConfig() = default;
    ConnectConfig(const ConnectConfig&) = default;
    ~ConnectConfig() override = default;
};

}  // namespace connectdialog
