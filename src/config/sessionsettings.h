// The plain settings of a session, as they are declared. Their key names and defaults stand in sessionconfigload.cpp,
// their order in the store in sessionconfigmembers.cpp.
#pragma once

#include "profile/vprofile.h"
#include "profile/vprofile2.h"
#include "profile/vprofileblowfishstring.h"
#include "profile/vprofileencodedstring.h"
#include "profile/vprofileexplorerframestate.h"
#include "profile/vprofilelistviewstate.h"
#include "profile/vprofilemultilinestring.h"
#include "profile/vwindowplacement.h"

namespace connectdialog {

/// A part of the session, open to those who edit it. Copies member by member: value, stored copy and missing flag.
struct SessionSettings {
    VProfile<bool> isSession;
    VProfile<bool> useTitleBar;
    VProfileText titleBar;
    VProfile<bool> sendInitialCarriageReturn;
    VProfile<bool> useLoginScript;
    VProfileEncodedString loginScript;  ///< see config/loginscript.h
    VProfile<bool> useScriptFile;
    VProfileText scriptFilename;
    VProfileText uploadDirectory;
    VProfileText downloadDirectory;
    VProfile<int> xmodemSendPacketSize;
    VProfileText zmodemReceiveCommand;
    VProfile<bool> startTftpServer;
    VProfile<bool> disableZmodem;
    VProfile<bool> zmodemUses32BitCrc;
    VProfile<bool> force1024ForZmodem;
    VProfile<bool> zmodemEncodesDel;
    VProfile<bool> zmodemLowerCaseOnUpload;
    VProfile<bool> sendZmodemInitOnUpload;
    VProfileText logFilename;
    VProfileText customLogMessageConnect;
    VProfileText customLogMessageDisconnect;
    VProfileText customLogMessageEachLine;
    VProfile<bool> logOnlyCustom;
    VProfile<bool> uniqueLogFileName;
    VProfile<bool> logPrompt;
    VProfile<bool> logMode;
    VProfile<bool> startLogUponConnect;
    VProfile<bool> rawLog;
    VProfile<bool> logMultipleSessions;
    VProfile<bool> newLogFileAtMidnight;
    VProfile<unsigned int> traceLevel;
    VProfile<unsigned int> keyboardCharSendDelay;
    VProfile<bool> useWordDelimiterChars;
    VProfileText wordDelimiterChars;
    VProfile<bool> idleCheck;
    VProfile<int> idleTimeout;
    VProfileText idleString;
    VProfile<bool> idleNoOpCheck;
    VProfile<int> idleNoOpTimeout;
    VProfile<bool> alwaysOnTop;
    VProfile<int> lineSendDelay;
    VProfile<int> characterSendDelay;
    VProfile<bool> sendScrollWheelEvents;
    VProfile<int> highlightingStyle;
    VProfileText keywordSet;
    VProfile<int> ejectPageInterval;
    VProfileText monitorListenAddress;
    VProfileText monitorUsername;
    VProfileBlowfishString monitorPassword;
    VProfile<bool> monitorAllowRemoteInput;
    VProfile<VTriState> disableResize;
    VProfile<VTriState> autoReconnect;
    VProfile<bool> useGlobalPrintSettings;
    VProfile<int> operatingSystem;
    VProfileText timeZone;
    VProfileMultiLineString description;
    VProfileText lastDirectory;
    VProfileText initialLocalDirectory;
    VProfileText defaultDownloadDirectory;
    VProfile<int> fileSystemCase;
    VProfileText fileCreationMask;
    VProfile<VTriState> disableDirectoryTreeDetection;
    VProfile<VTriState> verifyRetrieveFileStatus;
    VProfile<VTriState> resolveSymbolicLinks;
    VProfileWindowPlacement remoteFramePlacement;
    VProfileExplorerFrameState remoteExplorerFrameState;
    VProfileListViewState remoteListViewState;
    VProfileExplorerFrameState remoteTabState;
    VProfile<int> restartDataSize;
    VProfileText restartDatafilePath;
    VProfile<int> maxTransferBuffers;
    VProfile<bool> filenamesAlwaysUseUtf8;
    VProfile<bool> useMultipleSftpChannels;
    VProfile<bool> suppressStatOnCwd;
    VProfile<bool> disableMlsx;
    VProfileTextList postLoginUserCommands;
    VProfileTextList bookmarks;
    VProfile<unsigned int> transferTraceLevel;
    VProfile<bool> useControlAddressForData;
};

}  // namespace connectdialog
