// How a session is read from its key: the name, the default and the correction of each member, in storage order.
#include <algorithm>

#include "config/defaultfolders.h"
#include "config/loginscript.h"
#include "config/numberrange.h"
#include "config/sessionconfig.h"
#include "foundation/venvironment.h"
#include "imports/configpanels.h"
#include "profile/vprofilecapistring.h"
#include "profile/vprofilekey.h"
#include "resources/storenames.h"

namespace connectdialog {

namespace {

constexpr int kObsoletePacketSize = 128;

/// A correction changes the value and not the stored copy: the session shows as changed.
void ClampIdleTimeout(VProfile<int>& timeout) {
    timeout.Set(std::clamp(timeout.Get(), kIdleSeconds.least, kIdleSeconds.most));
}

bool HasDword(VProfileKey* key, const char16_t* name) {
    std::uint32_t value = 0;
    return key->ReadDword(name, value);
}

}  // namespace

SessionConfig::SessionConfig(const VUnicodeString& name, VProfileKey* key)
    : terminal(key, HasKeldaEmulation()),
      printer(key),
      name(name),
      path(name),
      protocol(key, ProtocolSide::kTerminal, &common),
      transferProtocol(key, ProtocolSide::kTransfer, &common) {
    isSession.Load(key, VUnicodeString(kIsSessionValue), false);
    isSession.Set(true);
    VRef<GlobalConfig> global;
    GetGlobalConfig(global, -1);

    LoadLogin(key);
    LoadTransfer(key);
    LoadLogging(key);
    LoadKeyboard(key);
    LoadIdle(key);
    LoadTerminalMisc(key, global.Get());
    LoadPrinting(key);
    LoadRemoteDirectories(key);
    LoadRemoteFrame(key, global.Get());
    LoadFileTransfer(key);
    SettleDefaultSession(key);
}

void SessionConfig::LoadLogin(VProfileKey* key) {
    useTitleBar.Load(key, u"Use Title Bar"_v, false);
    titleBar.Load(key, u"Title Bar"_v, VUnicodeString());
    sendInitialCarriageReturn.Load(key, u"Send Initial Carriage Return"_v, true);
    useLoginScript.Load(key, u"Use Login Script"_v, false);
    LoadLoginScript(key);
    useScriptFile.Load(key, u"Use Script File"_v, false);
    scriptFilename.Load(key, u"Script Filename"_v, VUnicodeString());
}

/// A key without the script may hold its older form, which says too whether a carriage return goes first.
void SessionConfig::LoadLoginScript(VProfileKey* key) {
    loginScript.Load(key, u"Login Script V2"_v);
    loginScript.Edit().MarkSensitive();
    if (key == nullptr || !loginScript.IsMissing()) return;
    const VUnicodeString olderName = u"Login Script"_v;
    VUnicodeString stored;
    if (!key->ReadString(olderName.GetData(), stored)) return;
    // Protected for the user once, and only scrambled before that.
    VUnicodeString oldForm;
    if (!IsProtectedText(stored))
        oldForm = DecodeScrambledText(stored);
    else if (!ReadProtectedText(olderName, stored, oldForm))
        loginScript.KeepAsFound(olderName, stored);
    if (oldForm.IsEmpty()) return;
    const ConvertedLoginScript script = ConvertLoginScript(oldForm);
    loginScript.Set(script.text);
    sendInitialCarriageReturn.Set(script.sendInitialCarriageReturn);
}

void SessionConfig::LoadTransfer(VProfileKey* key) {
    uploadDirectory.Load(key, u"Upload Directory"_v, GetDefaultUploadFolder());
    downloadDirectory.Load(key, u"Download Directory"_v, GetDefaultDownloadFolder());
    xmodemSendPacketSize.Load(key, u"XModem Send Packet Size"_v, 0);
    if (xmodemSendPacketSize.Get() == kObsoletePacketSize) xmodemSendPacketSize.Set(0);
    zmodemReceiveCommand.Load(key, u"ZModem Receive Command"_v, u"rz\\r"_v);
    startTftpServer.Load(key, u"Start Tftp Server"_v, false);
    disableZmodem.Load(key, u"Disable ZModem"_v, false);
    zmodemUses32BitCrc.Load(key, u"ZModem Uses 32 Bit CRC"_v, false);
    force1024ForZmodem.Load(key, u"Force 1024 for ZModem"_v, false);
    zmodemEncodesDel.Load(key, u"ZModem Encodes DEL"_v, true);
    zmodemLowerCaseOnUpload.Load(key, u"ZModem Force All Caps Filenames to Lower Case on Upload"_v, true);
    sendZmodemInitOnUpload.Load(key, u"Send Zmodem Init When Upload Starts"_v, false);
}

void SessionConfig::LoadLogging(VProfileKey* key) {
    logFilename.Load(key, u"Log Filename"_v, VUnicodeString());
    customLogMessageConnect.Load(key, u"Custom Log Message Connect"_v, VUnicodeString());
    customLogMessageDisconnect.Load(key, u"Custom Log Message Disconnect"_v, VUnicodeString());
    customLogMessageEachLine.Load(key, u"Custom Log Message Each Line"_v, VUnicodeString());
    logOnlyCustom.Load(key, u"Log Only Custom"_v, false);
    uniqueLogFileName.Load(key, u"Generate Unique Log File Name When File In Use"_v, true);
    logPrompt.Load(key, u"Log Prompt"_v, false);
    logMode.Load(key, u"Log Mode"_v, false);
    startLogUponConnect.Load(key, u"Start Log Upon Connect"_v, false);
    rawLog.Load(key, u"Raw Log"_v, false);
    logMultipleSessions.Load(key, u"Log Multiple Sessions"_v, false);
    newLogFileAtMidnight.Load(key, u"New Log File At Midnight"_v, false);
    traceLevel.Load(key, u"Trace Level"_v, 0U);
}

void SessionConfig::LoadKeyboard(VProfileKey* key) {
    keyboardCharSendDelay.Load(key, u"Keyboard Char Send Delay"_v, 0U);
    useWordDelimiterChars.Load(key, u"Use Word Delimiter Chars"_v, false);
    wordDelimiterChars.Load(key, u"Word Delimiter Chars"_v, VUnicodeString());
}

/// The switch is younger than the timeout: a key without it means on when it holds a timeout. Hence the order.
void SessionConfig::LoadIdle(VProfileKey* key) {
    idleTimeout.Load(key, u"Idle Timeout"_v, 0);
    const bool usedToCheck = key != nullptr && !HasDword(key, u"Idle Check") && idleTimeout.Get() > 0;
    idleCheck.Load(key, u"Idle Check"_v, usedToCheck);
    idleString.Load(key, u"Idle String"_v, VUnicodeString());
    if (idleTimeout.Get() == 0) idleTimeout.Set(kIdleSeconds.usual);
    ClampIdleTimeout(idleTimeout);
    idleNoOpCheck.Load(key, u"Idle NO-OP Check"_v, false);
    idleNoOpTimeout.Load(key, u"Idle NO-OP Timeout"_v, 60);
    ClampIdleTimeout(idleNoOpTimeout);
}

void SessionConfig::LoadTerminalMisc(VProfileKey* key, const GlobalConfig* global) {
    const bool takesGlobal = key != nullptr && global != nullptr;
    alwaysOnTop.Load(key, u"AlwaysOnTop"_v, false);
    lineSendDelay.Load(key, u"Line Send Delay"_v, takesGlobal ? global->lineSendDelay.Get() : 5);
    characterSendDelay.Load(key, u"Character Send Delay"_v, takesGlobal ? global->characterSendDelay.Get() : 0);
    sendScrollWheelEvents.Load(key, u"Send Scroll Wheel Events To Remote"_v, false);
    highlightingStyle.Load(key, u"Highlighting Style"_v, 0);
    keywordSet.Load(key, u"Keyword Set"_v, u"<None>"_v);
    ejectPageInterval.Load(key, u"Eject Page Interval"_v, 0);
    monitorListenAddress.Load(key, u"Monitor Listen Address"_v, u"0.0.0.0:22"_v);
    monitorUsername.Load(key, u"Monitor Username"_v, VUnicodeString());
    monitorPassword.Load(key, u"Monitor Password"_v, VUnicodeString());
    monitorAllowRemoteInput.Load(key, u"Monitor Allow Remote Input"_v, false);
    disableResize.Load(key, u"Disable Resize"_v, VTriState::kFollowGlobal);
    autoReconnect.Load(key, u"Auto Reconnect"_v, VTriState::kFollowGlobal);
}

void SessionConfig::LoadPrinting(VProfileKey* key) {
    useGlobalPrintSettings.Load(key, u"Use Global Print Settings"_v, true);
    operatingSystem.Load(key, u"Operating System"_v, 0);
    timeZone.Load(key, u"Time Zone"_v, VUnicodeString());
    description.LoadNamed(key, u"Description"_v);
}

void SessionConfig::LoadRemoteDirectories(VProfileKey* key) {
    lastDirectory.Load(key, u"Last Directory"_v, VUnicodeString());
    initialLocalDirectory.Load(key, u"Initial Local Directory"_v, VUnicodeString());
    defaultDownloadDirectory.Load(key, u"Default Download Directory"_v,
                                  VIsPortableInstall() ? u"%u3doc%"_v : VUnicodeString());
    fileSystemCase.Load(key, u"File System Case"_v, 0);
    fileCreationMask.Load(key, u"File Creation Mask"_v, VUnicodeString());
    disableDirectoryTreeDetection.Load(key, u"Disable Directory Tree Detection"_v, VTriState::kFollowGlobal);
    verifyRetrieveFileStatus.Load(key, u"Verify Retrieve File Status"_v, VTriState::kFollowGlobal);
    resolveSymbolicLinks.Load(key, u"Resolve Symbolic Links"_v, VTriState::kFollowGlobal);
}

/// The template, and what has no key, begins with frames that were never placed.
void SessionConfig::LoadRemoteFrame(VProfileKey* key, const GlobalConfig* global) {
    const bool takesGlobal = key != nullptr && global != nullptr && !name.EqualsNoCase(kDefaultSession);
    remoteFramePlacement.Load(key, u"RemoteFrame Window Placement"_v,
                              takesGlobal ? global->remoteFramePlacement.Get() : VWindowPlacement::Unplaced());
    remoteExplorerFrameState.Load(key, u"Remote ExplorerFrame State"_v,
                                  takesGlobal ? global->remoteExplorerFrameState.Get() : UnplacedFrameText());
    remoteListViewState.Load(key, u"Remote ListView State"_v,
                             takesGlobal ? global->remoteListViewState.Get() : PlainListText());
    remoteTabState.Load(key, u"Tessaly Remote Tab State"_v,
                        takesGlobal ? global->remoteTabState.Get() : UnplacedFrameText());
}

void SessionConfig::LoadFileTransfer(VProfileKey* key) {
    restartDataSize.Load(key, u"Restart Data Size"_v, 0);
    restartDatafilePath.Load(key, u"Restart Datafile Path"_v, VUnicodeString());
    maxTransferBuffers.Load(key, u"Max Transfer Buffers"_v, kTransferBuffers.usual);
    if (maxTransferBuffers.Get() < kTransferBuffers.least || maxTransferBuffers.Get() > kTransferBuffers.most)
        maxTransferBuffers.Set(kTransferBuffers.usual);
    filenamesAlwaysUseUtf8.Load(key, u"Filenames Always Use UTF8"_v, false);
    useMultipleSftpChannels.Load(key, u"Use Multiple SFTP Channels"_v, false);
    suppressStatOnCwd.Load(key, u"Suppress Stat On CWD"_v, false);
    disableMlsx.Load(key, u"Disable MLSX"_v, false);
    postLoginUserCommands.Load(key, u"Tessaly Post Login User Commands"_v, VStringArray());
    bookmarks.Load(key, u"Tessaly Bookmarks"_v, VStringArray());
    transferTraceLevel.Load(key, u"Tessaly Trace Level"_v, 1U);
    useControlAddressForData.Load(key, u"Tessaly Use Control Address For Data Connections"_v, true);
}

}  // namespace connectdialog
