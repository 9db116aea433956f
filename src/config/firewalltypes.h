// The types of firewalls.
#pragma once

#include <cstdint>
#include <string_view>

namespace connectdialog {

struct FirewallType {
    std::uint32_t number;
    bool needsCredentials;     ///< a user name and a password
    const char16_t* text;      ///< what the user sees
    std::u16string_view name;  ///< what is stored
};

/// In the order of their numbers; the first is the default.
inline constexpr FirewallType kFirewallTypes[] = {
    {0, false, u"None", u"None"},
    {1, false, u"Generic/Telnet proxy", u"Generic Proxy"},
    {2, false, u"SOCKS version 4", u"SOCKSv4"},
    {3, false, u"SOCKS version 5 (no authentication)", u"SOCKSv5"},
    {4, true, u"SOCKS version 5 (username/password)", u"SOCKSv5_USERPASS"},
    {5, false, u"HTTP (no authentication)", u"HTTP"},
    {6, true, u"HTTP (Basic username/password)", u"HTTP_BASICAUTH"},
    {7, false, u"OPEN host", u"OPEN host"},
    {8, false, u"USER user@host:port", u"USER user@host:port"},
    {9, false, u"USER user@host port", u"USER user@host port"},
    {10, true, u"USER user@host port (with login)", u"USER user@host port (with login)"},
    {11, true, u"USER user@host login", u"USER user@host login"},
};

/// The row whose stored name is exactly `name`; the first when there is none.
constexpr const FirewallType& FindFirewallType(std::u16string_view name) {
    for (const FirewallType& row : kFirewallTypes)
        if (row.name == name) return row;
    return kFirewallTypes[0];
}

}  // namespace connectdialog
