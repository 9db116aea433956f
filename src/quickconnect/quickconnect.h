// One-off connections without a saved session.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class ISessionConfig;
class VWindow;

/// On 1 `config` is the session to connect to, with one reference for the caller; else it stays. A session that the
/// user wants to keep is saved in the folder `targetFolder` by then. Where no protocol is offered this is told in a
/// box, and the result is 2.
std::int64_t ShowQuickConnectDialog(ISessionConfig** config, const VUnicodeString& targetFolder, unsigned appKind,
                                    VWindow* parent);
/// A copy of what the next quick connect begins with, with one reference for the caller: the last one's settings, or at
/// first those of the Default session. Null when no protocol is offered.
void GetQuickConnectConfig(ISessionConfig** config, unsigned appKind);
/// The next quick connect begins with a copy of these settings: for a host that was told what to connect to. Settings
/// that are not changed in `config` come from the Default session.
void SetQuickConnectConfig(const ISessionConfig& config);
/// Forgets the last quick connect.
void CleanupQuickConnectDialog();

}  // namespace connectdialog
