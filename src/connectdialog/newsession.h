// The dialogs that a new session goes through, and the session options as they are first shown.
#pragma once

#include <cstdint>
#include <functional>

#include "imports/globalconfig.h"
#include "wizard/newsessionwizard.h"

namespace connectdialog {

inline constexpr int kPageModeOne = 0;
inline constexpr int kPageModeSeveral = 4;

/// The page of the options dialog that is shown first, for as long as it lives.
class FirstOptionsPage {
  public:
    FirstOptionsPage();
    ~FirstOptionsPage();
    FirstOptionsPage(const FirstOptionsPage&) = delete;
    FirstOptionsPage& operator=(const FirstOptionsPage&) = delete;
    void Keep() { isRestored = false; }

  private:
    VRef<GlobalConfig> global;
    VUnicodeString former;
    bool isRestored = true;
};

/// The host's session options; see SessionOptionsFunction. False when the user gave up, and without a host.
bool RunSessionOptions(ISessionConfig& config, int pageMode, bool multiEdit, bool isNew, VWindow* parent);

/// A session like the Default one, with the path of the folder where it will stand and a name that is free there.
/// On failure: null, when the Default session cannot be read.
VRef<ISessionConfig> PrepareNewSession(const VUnicodeString& folder);

/// As LaunchNewSessionWizard.
using WizardRunner =
    std::function<bool(ISessionConfig& config, VWindow* parent, std::int64_t& result, bool& useWizard)>;
/// Lets the user set a new session up: in the wizard, or in the session options where the user or the wizard wants
/// that. A name that cannot stand is told, and costs the name and not the session. Requires: PrepareNewSession made it.
/// False when the user gave up. Storing it is the caller's: StoreUnderFreeName.
bool EditNewSession(ISessionConfig& config, VWindow* parent, const WizardRunner& wizard = LaunchNewSessionWizard);

}  // namespace connectdialog
