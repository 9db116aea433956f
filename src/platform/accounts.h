// The accounts of this system: its users and groups, and the name of the computer that they belong to.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace connectdialog::platform {

struct Account {
    enum class Kind : std::uint8_t { kUser, kGroup };
    Kind kind = Kind::kUser;
    std::uint32_t id = 0;  ///< the system's number of it
};

/// Asks the system's data base of users and then, when there is no such user, that of groups. Names count as they are
/// written there, case and all. May wait for a directory service when the system is set up to use one.
/// On failure: false with the last error 1332 when there is neither, and `account` stays.
bool FindAccount(std::u16string_view name, Account& account);

/// Whose rights this process has: the user, or the user's first group.
Account GetOwnAccount(Account::Kind kind);

/// The name of this computer without its domain; empty when it has none.
std::u16string GetHostName();

}  // namespace connectdialog::platform
