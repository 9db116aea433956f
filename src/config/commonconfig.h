// What the protocol configs of one session share, kept by the session.
#pragma once

#include <array>

#include "config/iremotehostconfig.h"
#include "imports/connectconfig.h"

namespace connectdialog {

/// Owned by value by a session. The remote host comes from the key of whoever asks first.
class CommonConfig : public ICommonConfig {
  public:
    CommonConfig() = default;
    /// Clones each of the objects.
    CommonConfig(const CommonConfig& other);
    CommonConfig& operator=(const CommonConfig&) = delete;
    ~CommonConfig() override = default;

    IRemoteHostConfig* GetRemoteHostConfig(VProfileKey* key) override;
    ISharedConfig* GetSharedConfig(void* context, bool which, SharedConfigCreator create) override;

  private:
    VRef<IRemoteHostConfig> remoteHost;
    std::array<VRef<ISharedConfig>, 2> shared;
};

}  // namespace connectdialog
