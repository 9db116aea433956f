// The session options: a dialog over all settings of a session.
#pragma once

#include <cstdint>

namespace connectdialog {

class ISessionConfig;
class VWindow;

/// Lets the user edit the session; see SessionOptionsFunction (imports/hostcallbacks.h). Opens the page that the global
/// settings remember and leaves there the one that was shown last. With 1 the session has taken over what the user
/// changed and nothing else; saving it is the caller's. With any other result it is as it was.
///
/// With `multiEdit` the settings shown are those of the first of several sessions, and its name cannot be changed;
/// corrections that its loading made do not count as changes afterwards, so that CopyChangesFrom hands on what the user
/// did. A session that `isNewSession` has the path of the folder where it will stand.
std::int64_t ShowSessionOptions(ISessionConfig* config, int pageMode, bool multiEdit, bool isNewSession,
                                VWindow* parent);

}  // namespace connectdialog
