// What a session keeps, written down once by hand: names, types and defaults in storage order. Users' data depends on
// it: a name here changes only together with a migration.
#pragma once

#include "profile/vvariant.h"

namespace connectdialog::test {

/// A record has no variant.
inline constexpr auto kRecord = static_cast<VVariantType>(0xFFFF);

struct GoldenSetting {
    const char16_t* name;
    VVariantType type;            ///< of its variant; kEmpty is the three-state value that follows the general setting
    const char16_t* defaultText;  ///< without a key; a bool is 0 or 1; null: depends on the user's folders
};

inline constexpr GoldenSetting kGoldenSession[] = {
    {u"Is Session", VVariantType::kBool, u"1"},
    {u"Use Title Bar", VVariantType::kBool, u"0"},
    {u"Title Bar", VVariantType::kText, u""},
    {u"Send Initial Carriage Return", VVariantType::kBool, u"1"},
    {u"Use Login Script", VVariantType::kBool, u"0"},
    {u"Login Script V2", VVariantType::kText, u""},
    {u"Use Script File", VVariantType::kBool, u"0"},
    {u"Script Filename", VVariantType::kText, u""},
    {u"Upload Directory", VVariantType::kText, nullptr},
    {u"Download Directory", VVariantType::kText, nullptr},
    {u"XModem Send Packet Size", VVariantType::kInt, u"0"},
    {u"ZModem Receive Command", VVariantType::kText, u"rz\\r"},
    {u"Start Tftp Server", VVariantType::kBool, u"0"},
    {u"Disable ZModem", VVariantType::kBool, u"0"},
    {u"ZModem Uses 32 Bit CRC", VVariantType::kBool, u"0"},
    {u"Force 1024 for ZModem", VVariantType::kBool, u"0"},
    {u"ZModem Encodes DEL", VVariantType::kBool, u"1"},
    {u"ZModem Force All Caps Filenames to Lower Case on Upload", VVariantType::kBool, u"1"},
    {u"Send Zmodem Init When Upload Starts", VVariantType::kBool, u"0"},
    {u"Log Filename", VVariantType::kText, u""},
    {u"Custom Log Message Connect", VVariantType::kText, u""},
    {u"Custom Log Message Disconnect", VVariantType::kText, u""},
    {u"Custom Log Message Each Line", VVariantType::kText, u""},
    {u"Log Only Custom", VVariantType::kBool, u"0"},
    {u"Generate Unique Log File Name When File In Use", VVariantType::kBool, u"1"},
    {u"Log Prompt", VVariantType::kBool, u"0"},
    {u"Log Mode", VVariantType::kBool, u"0"},
    {u"Start Log Upon Connect", VVariantType::kBool, u"0"},
    {u"Raw Log", VVariantType::kBool, u"0"},
    {u"Log Multiple Sessions", VVariantType::kBool, u"0"},
    {u"New Log File At Midnight", VVariantType::kBool, u"0"},
    {u"Trace Level", VVariantType::kUInt, u"0"},
    {u"Keyboard Char Send Delay", VVariantType::kUInt, u"0"},
    {u"Use Word Delimiter Chars", VVariantType::kBool, u"0"},
    {u"Word Delimiter Chars", VVariantType::kText, u""},
    {u"Idle Check", VVariantType::kBool, u"0"},
    {u"Idle Timeout", VVariantType::kInt, u"300"},
    {u"Idle String", VVariantType::kText, u""},
    {u"Idle NO-OP Check", VVariantType::kBool, u"0"},
    {u"Idle NO-OP Timeout", VVariantType::kInt, u"60"},
    {u"AlwaysOnTop", VVariantType::kBool, u"0"},
    {u"Line Send Delay", VVariantType::kInt, u"5"},
    {u"Character Send Delay", VVariantType::kInt, u"0"},
    {u"Send Scroll Wheel Events To Remote", VVariantType::kBool, u"0"},
    {u"Highlighting Style", VVariantType::kInt, u"0"},
    {u"Keyword Set", VVariantType::kText, u"<None>"},
    {u"Eject Page Interval", VVariantType::kInt, u"0"},
    {u"Monitor Listen Address", VVariantType::kText, u"0.0.0.0:22"},
    {u"Monitor Username", VVariantType::kText, u""},
    {u"Monitor Password", VVariantType::kText, u""},
    {u"Monitor Allow Remote Input", VVariantType::kBool, u"0"},
    {u"Disable Resize", VVariantType::kEmpty, u"2"},
    {u"Auto Reconnect", VVariantType::kEmpty, u"2"},
    {u"Use Global Print Settings", VVariantType::kBool, u"1"},
    {u"Operating System", VVariantType::kInt, u"0"},
    {u"Time Zone", VVariantType::kText, u""},
    {u"Description", VVariantType::kArray, u""},
    {u"Last Directory", VVariantType::kText, u""},
    {u"Initial Local Directory", VVariantType::kText, u""},
    {u"Default Download Directory", VVariantType::kText, u""},
    {u"File System Case", VVariantType::kInt, u"0"},
    {u"File Creation Mask", VVariantType::kText, u""},
    {u"Disable Directory Tree Detection", VVariantType::kEmpty, u"2"},
    {u"Verify Retrieve File Status", VVariantType::kEmpty, u"2"},
    {u"Resolve Symbolic Links", VVariantType::kEmpty, u"2"},
    {u"RemoteFrame Window Placement", kRecord, nullptr},
    {u"Remote ExplorerFrame State", VVariantType::kText, u"1,-1,-1"},
    {u"Remote ListView State", VVariantType::kText, u"1,1,1,0,0"},
    {u"Tessaly Remote Tab State", VVariantType::kText, u"1,-1,-1"},
    {u"Restart Data Size", VVariantType::kInt, u"0"},
    {u"Restart Datafile Path", VVariantType::kText, u""},
    {u"Max Transfer Buffers", VVariantType::kInt, u"4"},
    {u"Filenames Always Use UTF8", VVariantType::kBool, u"0"},
    {u"Use Multiple SFTP Channels", VVariantType::kBool, u"0"},
    {u"Suppress Stat On CWD", VVariantType::kBool, u"0"},
    {u"Disable MLSX", VVariantType::kBool, u"0"},
    {u"Tessaly Post Login User Commands", VVariantType::kArray, u""},
    {u"Tessaly Bookmarks", VVariantType::kArray, u""},
    {u"Tessaly Trace Level", VVariantType::kUInt, u"1"},
    {u"Tessaly Use Control Address For Data Connections", VVariantType::kBool, u"1"},
};

}  // namespace connectdialog::test
