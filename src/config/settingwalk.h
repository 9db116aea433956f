// Every single setting that a session would save, part by part.
#pragma once

#include <functional>
#include <string_view>

namespace connectdialog {

class ISessionConfig;
class VProfileData;

/// Told each setting once; it stays owned by the session.
using SettingVisitor = std::function<void(VProfileData& setting)>;

/// Visits the settings in storage order: where a part of the session has members of its own these take its place, and a
/// protocol is its name followed by the settings of the protocol that is selected.
void VisitSettings(ISessionConfig& session, const SettingVisitor& visit);

/// The first of these settings that has that name, case ignored; null when there is none. Owned by the session.
VProfileData* FindSetting(ISessionConfig& session, std::u16string_view name);

}  // namespace connectdialog
