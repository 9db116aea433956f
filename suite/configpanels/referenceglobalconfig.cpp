#include "suite/configpanels/referenceglobalconfig.h"

#include <array>

#include "foundation/vreportmessageparams.h"
#include "profile/unitofwork.h"
#include "profile/vprofilekey.h"

namespace connectdialog {

namespace {
template <auto member>
constexpr MemberAccess<ReferenceGlobalConfig> kMember = Member<ReferenceGlobalConfig, member>;

/// What the marker says where there is nothing to upgrade: in a store that begins with this version.
constexpr int kLineSendDelay = 5;

/// A maximum that lets nothing through would reach every session that is opened and saved.
template <class T>
void LoadMaximum(VProfileKey& key, VProfile<T>& maximum, const VUnicodeString& name, T usual) {
    maximum.Load(&key, name, usual);
    if (maximum.Get() < 1) maximum.Set(usual);
}
}  // namespace

std::span<const MemberAccess<ReferenceGlobalConfig>> ReferenceGlobalConfig::Members() {
    using Self = ReferenceGlobalConfig;
    static constexpr std::array kMembers = {
        kMember<&Self::configUpgradeMarker>,
        kMember<&Self::sessionArrangementMode>,
        kMember<&Self::hideDotEntries>,
        kMember<&Self::lineSendDelay>,
        kMember<&Self::characterSendDelay>,
        kMember<&Self::maximumCols>,
        kMember<&Self::maximumScrollback>,
        kMember<&Self::remoteFramePlacement>,
        kMember<&Self::remoteExplorerFrameState>,
        kMember<&Self::remoteListViewState>,
        kMember<&Self::remoteTabState>,
        kMember<&Self::connectDialogPlacement>,
        kMember<&Self::connectDialogOnStartup>,
        kMember<&Self::quickConnectOnStartup>,
        kMember<&Self::quickConnectSaveSession>,
        kMember<&Self::showDescriptions>,
        kMember<&Self::showTransferSessions>,
        kMember<&Self::showTerminalSessions>,
        kMember<&Self::saveConfigOnClose>,
        kMember<&Self::lastSessionPath>,
        kMember<&Self::lastSessionExpanded>,
        kMember<&Self::rememberFolderExpansion>,
        kMember<&Self::optionsPagePath>,
        kMember<&Self::openInTab>,
        kMember<&Self::tabMode>,
        kMember<&Self::tabsForced>,
        kMember<&Self::sessionTreeFont>,
        kMember<&Self::suppressMultiConnectWarning>,
        kMember<&Self::suppressMultiEditWarning>,
        kMember<&Self::useNewSessionWizard>,
        kMember<&Self::updateReminderSuppressed>,
        kMember<&Self::lastUpdateReminder>,
        kMember<&Self::terminalCommand>,
        kMember<&Self::mainWindowPlacement>,
    };
    return kMembers;
}

ReferenceGlobalConfig::ReferenceGlobalConfig() {
    VProfileStore store(true);
    VProfileKey key(store.GetRootKey(), kGlobalKey, 0);
    LoadMembers(key);
}

void ReferenceGlobalConfig::LoadMembers(VProfileKey& key) {
    configUpgradeMarker.Load(&key, u"Config Upgrade Marker"_v, VUnicodeString(kUpgradedMarker));
    sessionArrangementMode.Load(&key, u"Session Arrangement Mode"_v, 0);
    hideDotEntries.Load(&key, u"Hide Dot Entries"_v, false);
    lineSendDelay.Load(&key, u"Line Send Delay"_v, kLineSendDelay);
    characterSendDelay.Load(&key, u"Character Send Delay"_v, 0);
    LoadMaximum(key, maximumCols, u"Maximum Cols"_v, short{1000});
    LoadMaximum(key, maximumScrollback, u"Maximum Scrollback"_v, 1000000);
    remoteFramePlacement.Load(&key, u"RemoteFrame Window Placement"_v, VWindowPlacement::Unplaced());
    remoteExplorerFrameState.Load(&key, u"Remote ExplorerFrame State"_v, UnplacedFrameText());
    remoteListViewState.Load(&key, u"Remote ListView State"_v, PlainListText());
    remoteTabState.Load(&key, u"Tessaly Remote Tab State"_v, UnplacedFrameText());
    connectDialogPlacement.Load(&key, u"Connect Dialog Placement"_v, VWindowPlacement::Unplaced());
    connectDialogOnStartup.Load(&key, u"Connect Dialog On Startup"_v, true);
    quickConnectOnStartup.Load(&key, u"Quick Connect On Startup"_v, false);
    quickConnectSaveSession.Load(&key, u"Quick Connect Save Session"_v, false);
    showDescriptions.Load(&key, u"Show Descriptions"_v, true);
    showTransferSessions.Load(&key, u"Show Transfer Sessions"_v, true);
    showTerminalSessions.Load(&key, u"Show Terminal Sessions"_v, true);
    saveConfigOnClose.Load(&key, u"Save Config On Close"_v, true);
    lastSessionPath.Load(&key, u"Last Session Path"_v, VUnicodeString());
    lastSessionExpanded.Load(&key, u"Last Session Expanded"_v, false);
    rememberFolderExpansion.Load(&key, u"Remember Folder Expansion"_v, true);
    optionsPagePath.Load(&key, u"Options Page Path"_v, VUnicodeString());
    openInTab.Load(&key, u"Open In Tab"_v, true);
    tabMode.Load(&key, u"Tab Mode"_v, 0);
    tabsForced.Load(&key, u"Tabs Forced"_v, false);
    sessionTreeFont.Load(&key, u"Session Tree Font"_v, VUnicodeString());
    suppressMultiConnectWarning.Load(&key, u"Suppress Multi Connect Warning"_v, false);
    suppressMultiEditWarning.Load(&key, u"Suppress Multi Edit Warning"_v, 0);
    useNewSessionWizard.Load(&key, u"Use New Session Wizard"_v, true);
    updateReminderSuppressed.Load(&key, u"Update Reminder Suppressed"_v, 0);
    lastUpdateReminder.Load(&key, u"Last Update Reminder"_v, 0);
    terminalCommand.Load(&key, u"Terminal Command"_v, VUnicodeString());
    mainWindowPlacement.Load(&key, u"Main Window Placement"_v, VWindowPlacement::Unplaced());
}

bool ReferenceGlobalConfig::Write(VProfileData& settings, bool force) {
    return WriteToKey(kGlobalKey, [&](VProfileKey& key) { settings.Save(key, force); });
}

bool ReferenceGlobalConfig::Save() {
    // A value counts as stored once it was handed to the key, whatever becomes of the unit.
    mustWriteAll = !Write(*this, mustWriteAll);
    return !mustWriteAll;
}

bool ReferenceGlobalConfig::SaveOne(VProfileData& setting) {
    if (FindValue(setting.GetName()) != &setting) return false;
    const bool isWritten = Write(setting, false);
    mustWriteAll = mustWriteAll || !isWritten;
    return isWritten;
}

VRef<ReferenceGlobalConfig> FetchReferenceGlobalConfig() {
    return VRef<ReferenceGlobalConfig>::Share(dynamic_cast<ReferenceGlobalConfig*>(FetchGlobalConfig().Get()));
}

}  // namespace connectdialog
