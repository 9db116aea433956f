// The dialogs that a new session goes through, and the session options as they are first shown.
#pragma once

#include <cstdint>
#include <functional>

#include "imports/globalconfig.h"

namespace connectdialog {

class ISessionConfig;
class VWindow;

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

/// As LaunchNewSessionWizard.
using WizardRunner = std::function<bool(ISessionConfig& config, std::int64_t& result, bool& useWizard)>;
/// Lets the user set a new session up: in the wizard, or in the session options where the user or the wizard wants
/// that. Requires: the session is a copy of the Default one, with the path of the folder where it will stand and the
/// name that is offered. False when the user gave up. Storing it is the caller's.
bool EditNewSession(ISessionConfig& config, const WizardRunner& wizard, VWindow* parent);

}  // namespace connectdialog
