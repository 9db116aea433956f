// What edits a session: the dialogs that a new one goes through, and the session options.
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

enum class EditOutcome : std::uint8_t { kGivenUp, kSaved, kRefused };
/// Gives a session what the user changed in the options of another.
using SessionChange = std::function<void(ISessionConfig& other)>;
/// Saves other sessions with that change. False to give up: then none of them stays changed in the store.
using OthersSaver = std::function<bool(const SessionChange& change)>;
/// Lets the user change the options of a stored session, which may be the first of several, and saves what was changed
/// as one unit of work. Renaming it is the caller's. On failure: kRefused, and why is appended to `failure` where the
/// store tells; what `config` holds is not what is stored then.
EditOutcome EditStoredSession(ISessionConfig& config, VWindow* parent, VUnicodeString& failure,
                              const OthersSaver& saveOthers = {});

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
