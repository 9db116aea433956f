// What the hosts differ in.
#pragma once

#include <string_view>

#include "sessiondb/runningsessions.h"

namespace connectdialog::hosts {

struct HostKind {
    const char* program;
    /// Decides the side on which sessions are opened.
    const char16_t* appName;
    /// Under it others ask which sessions are open.
    std::u16string_view frameClass;
    /// The connect dialog's.
    const char16_t* title;
    /// For the usage: what it does with a session.
    const char* purpose;
    /// Else it starts the others for them.
    bool opensSessions = true;
};

inline constexpr HostKind kNorHalden{"norhalden", u"NorHalden", kNorHaldenFrameClass, u"NorHalden - 连接",
                                     "Opens saved sessions in a terminal, each with its protocol's client."};
inline constexpr HostKind kTessaly{"tessaly", u"Tessaly", kTessalyFrameClass, u"Tessaly - 连接",
                                   "Opens saved sessions for the transfer of files, each with its protocol's client."};
inline constexpr HostKind kWakestone{
    "wakestone",
    u"Wakestone",
    kNorHaldenFrameClass,
    u"Wakestone - 连接",
    "Shows an icon in the desktop's tray. Its menu has the folders and saved sessions, which norhalden and tessaly\n"
    "open in windows of a terminal emulator, quick connect and the connect dialog.",
    false};

}  // namespace connectdialog::hosts
