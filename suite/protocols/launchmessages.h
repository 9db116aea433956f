// Why a session cannot be opened, in words (facility 0x105).
#pragma once

#include <cstdint>

#include "resources/messagerow.h"

namespace connectdialog {

/// Codes of the reports of BuildLaunchCommand and BecomeClient. The first insert is the session's path, the protocol's
/// name or the setting's name, as the text says.
enum LaunchFault : std::uint32_t {
    kLaunchFine = 0,
    kLaunchNoProtocol = 0xE1050001,
    kLaunchTransferOnly = 0xE1050002,
    kLaunchTerminalOnly = 0xE1050003,
    kLaunchNoClient = 0xE1050004,
    kLaunchForeignSettings = 0xE1050005,
    kLaunchFirewall = 0xE1050006,
    kLaunchMissing = 0xE1050007,
    kLaunchLeadingDash = 0xE1050008,
    kLaunchControl = 0xE1050009,
    kLaunchNoHostName = 0xE105000A,
    kLaunchNoUserName = 0xE105000B,
    kLaunchNoJumpHost = 0xE105000C,
    kLaunchTooLong = 0xE105000D,
    kLaunchOutOfRange = 0xE105000E,
    kLaunchOpenQuote = 0xE105000F,
    kLaunchNotInstalled = 0xE1050010,
    kLaunchNotInstalledPackage = 0xE1050011,
    kLaunchNoFirewall = 0xE1050012,
    kLaunchFirewallType = 0xE1050013,
    kLaunchFirewallPassword = 0xE1050014,
    kLaunchFirewallAndJump = 0xE1050015,
    kLaunchNoAddress = 0xE1050016
};

inline constexpr MessageRow kLaunchMessages[] = {
    {kLaunchNoProtocol, u"The session \"%1\" has no protocol to connect with."},
    {kLaunchTransferOnly, u"The session \"%1\" only transfers files: tessaly opens it."},
    {kLaunchTerminalOnly, u"The session \"%1\" has no protocol to transfer files with: norhalden opens it."},
    {kLaunchNoClient, u"No program of this system connects with the protocol \"%1\"."},
    {kLaunchForeignSettings, u"These settings belong to a protocol of another program."},
    {kLaunchFirewall,
     u"The client of the protocol \"%1\" cannot go through a firewall, and connecting past it is not what was asked "
     u"for."},
    {kLaunchMissing, u"\"%1\" is not set."},
    {kLaunchLeadingDash, u"\"%1\" begins with \"-\": a program would take it for an option."},
    {kLaunchControl, u"\"%1\" holds a control character."},
    {kLaunchNoHostName, u"\"%1\" holds a character that no host name and no address has."},
    {kLaunchNoUserName, u"\"%1\" holds a character that has a meaning of its own for shells or clients."},
    {kLaunchNoJumpHost, u"\"%1\" is not a list of hosts of the form user@host:port, separated by commas."},
    {kLaunchTooLong, u"\"%1\" is too long."},
    {kLaunchOutOfRange, u"\"%1\" must be a number from %2 to %3."},
    {kLaunchOpenQuote, u"\"%1\" has an opening quote without a closing one."},
    {kLaunchNotInstalled, u"The program \"%1\" cannot be started: %2"},
    {kLaunchNotInstalledPackage, u"The program \"%1\" is not installed; the Debian package %2 has it."},
    {kLaunchNoFirewall, u"There is no firewall \"%1\"."},
    {kLaunchFirewallType, u"No client of this system can go through the firewall \"%1\" of the type \"%2\"."},
    {kLaunchFirewallPassword,
     u"The firewall \"%1\" of the type \"%2\" wants a password, which no client of this system can take in secret."},
    {kLaunchFirewallAndJump, u"\"%1\" and \"%2\" cannot be used together."},
    {kLaunchNoAddress,
     u"\"%1\" is no address of the form user@host:port, alone or behind ssh://, telnet:// or sftp://."},
};

}  // namespace connectdialog
