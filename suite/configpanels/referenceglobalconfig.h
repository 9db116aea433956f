// The global settings as the suite keeps them.
#pragma once

#include <span>

#include "imports/globalconfig.h"
#include "profile/vprofilecomposite.h"
#include "resources/storenames.h"

namespace connectdialog {

/// Read from the default store's key "Global" when it is made, and written back there by Save. The names and defaults
/// stand where the members are loaded.
class ReferenceGlobalConfig : public GlobalConfig, public VProfileComposite<ReferenceGlobalConfig> {
  public:
    ReferenceGlobalConfig();

    static std::span<const MemberAccess<ReferenceGlobalConfig>> Members();

    using VProfileComposite::Save;
    /// One unit of work. What a failed call could not write, the next one writes.
    bool Save() override;
    /// Writes one of these settings and leaves the others as the store has them. On failure, or for a setting of
    /// somebody else's: false. Then a next Save writes it.
    bool SaveOne(VProfileData& setting);

    /// The command that opens a window with a terminal for a session, as words of a command line; empty: the system's.
    VProfileText terminalCommand;
    /// Of the hosts' main windows; an empty normal rectangle: none was placed.
    VProfileWindowPlacement mainWindowPlacement;

  private:
    ~ReferenceGlobalConfig() override = default;

    void LoadMembers(VProfileKey& key);
    static bool Write(VProfileData& settings, bool force);

    bool mustWriteAll = false;
};

/// The settings of the running application; null where other panels than the suite's are installed.
VRef<ReferenceGlobalConfig> FetchReferenceGlobalConfig();

}  // namespace connectdialog
