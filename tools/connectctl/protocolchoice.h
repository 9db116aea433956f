// The two settings of a session that choose its protocols.
#pragma once

#include <string_view>

#include "tools/connectctl/command.h"

namespace connectdialog {
class ISessionConfig;
class VProfileData;
}  // namespace connectdialog

namespace connectdialog::connectctl {

bool IsProtocolChoice(const VProfileData& setting);

/// Selects a protocol through the session, so that what the protocols share travels to the new one. `choice` is the
/// setting of the side. Case is ignored.
/// Fails, and nothing changes, for a name that is no protocol of that side; the text lists those that are.
Failure SelectProtocol(ISessionConfig& session, const VProfileData& choice, std::u16string_view name);

}  // namespace connectdialog::connectctl
