// The global settings record, as far as the library looks into it.
#pragma once

#include <string_view>

#include "foundation/vunknown.h"
#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "profile/vprofileexplorerframestate.h"
#include "profile/vprofilelistviewstate.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

/// How the children of a folder are ordered.
enum class SessionArrangement : int { kAlphabetical = 0, kLogical = 1, kManual = 2 };

/// What GlobalConfig::configUpgradeMarker holds while data of older versions waits for its one-time upgrade, and after.
inline constexpr std::u16string_view kOldDataMarker = u"0311ABC6-1CDD-46fc-A08A-0D7C00242FCA";
inline constexpr std::u16string_view kUpgradedMarker = u"7B2F2717-85C8-4729-8394-3B7697039CEB";

/// Typed values that its provider loads and saves under the key "Global". The names in the store are the provider's.
class GlobalConfig : public VUnknown<IUnknownBase> {
  public:
    /// Writes what must be written. On failure: false; the values stay as they are in memory.
    virtual bool Save() = 0;

    /// One of the markers above; any other text counts as upgraded.
    VProfileText configUpgradeMarker;

    // The session tree.

    /// A SessionArrangement; any other number is alphabetical.
    VProfile<int> sessionArrangementMode;
    /// Children whose name begins with "." are not part of the session tree.
    VProfile<bool> hideDotEntries;

    // Defaults of the sessions; milliseconds.

    VProfile<int> lineSendDelay;
    VProfile<int> characterSendDelay;

    // The largest screen that a session may ask for, at least 1.

    VProfile<short> maximumCols;
    VProfile<int> maximumScrollback;

    // How the frames of sessions begin.

    VProfileWindowPlacement remoteFramePlacement;
    VProfileExplorerFrameState remoteExplorerFrameState;
    VProfileListViewState remoteListViewState;
    VProfileExplorerFrameState remoteTabState;

    // The connect dialog.

    /// An empty normal rectangle: the dialog was never placed.
    VProfileWindowPlacement connectDialogPlacement;
    VProfile<bool> connectDialogOnStartup;
    VProfile<bool> quickConnectOnStartup;
    VProfile<bool> quickConnectSaveSession;
    VProfile<bool> showDescriptions;
    /// Whether a terminal application shows sessions that only transfer files, and the other way round.
    VProfile<bool> showTransferSessions;
    VProfile<bool> showTerminalSessions;
    /// Write these settings when the dialog closes.
    VProfile<bool> saveConfigOnClose;
    /// The session path that was selected last, and whether that folder was open.
    VProfileText lastSessionPath;
    VProfile<bool> lastSessionExpanded;
    VProfile<bool> rememberFolderExpansion;
    /// The page of the options dialog that was shown last.
    VProfileText optionsPagePath;
    VProfile<bool> openInTab;
    /// Not 0, with tabsForced: sessions always open in a tab.
    VProfile<int> tabMode;
    VProfile<bool> tabsForced;
    /// "name,points"; empty: the system's.
    VProfileText sessionTreeFont;
    VProfile<bool> suppressMultiConnectWarning;
    VProfile<int> suppressMultiEditWarning;
    VProfile<bool> useNewSessionWizard;

    // The reminder to look for a new version.

    /// Not 0: the user asked not to be reminded.
    VProfile<int> updateReminderSuppressed;
    /// Seconds since 1970-01-01 UTC; 0: never.
    VProfile<int> lastUpdateReminder;

  protected:
    ~GlobalConfig() override = default;
};

/// The settings for an application kind (-1: the running one); where there are none, a record of zeros and empty texts
/// that nobody saves.
VRef<GlobalConfig> FetchGlobalConfig(std::int32_t kind = -1);

}  // namespace connectdialog
