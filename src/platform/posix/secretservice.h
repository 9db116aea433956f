// The Secret Service of the desktop, as the place of a user's keys.
//
// It is reached through libsecret, which is loaded when it is first needed: without it, without a session bus or
// without a service there is none. A service may be locked, ask the user or hang, so it is asked on a thread of its
// own, never to prompt, and for five seconds at most; after it failed to answer it is left alone for half a minute. Its
// answers come from another process of this user and are checked.
#pragma once

#include "platform/posix/userkey.h"

namespace connectdialog::platform {

enum class ServiceAnswer {
    kKey,        ///< here it is
    kNoKey,      ///< the service answers and has no such key
    kLocked,     ///< it has such a key and does not give it out
    kNoService,  ///< there is none, or none of use
    kTimeout     ///< it did not answer in time
};

/// The key with this id.
ServiceAnswer FindServiceKey(const UserKeyId& id, UserKey& key);

/// The key for what is protected from now on; a new one is stored when the service has none. Two processes that do so
/// at once agree on one.
ServiceAnswer GetServiceKey(UserKey& key);

}  // namespace connectdialog::platform
