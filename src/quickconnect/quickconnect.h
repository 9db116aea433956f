// One-off connections without a saved session.
#pragma once

#include <cstdint>

#include "foundation/vunicodestring.h"

namespace connectdialog {

class ISessionConfig;
class VWindow;

// This version has no such dialog: it is closed with nothing chosen.

/// On 1 `config` is the session to connect to, with one reference for the caller; else it stays. A session that the
/// user wants to keep goes into the folder `targetFolder`.
std::int64_t ShowQuickConnectDialog(ISessionConfig** config, const VUnicodeString& targetFolder, unsigned appKind,
                                    VWindow* parent);
/// A copy of the last quick connect's settings, with one reference for the caller; null when there are none.
void GetQuickConnectConfig(ISessionConfig** config, unsigned appKind);
void CleanupQuickConnectDialog();

}  // namespace connectdialog
