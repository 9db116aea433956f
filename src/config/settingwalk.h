// Every single setting that a session would save, part by part.
#pragma once

#include <functional>

namespace connectdialog {

class ISessionConfig;
class VProfileData;

/// Told each setting once; it stays owned by the session.
using SettingVisitor = std::function<void(VProfileData& setting)>;

/// Visits the settings in storage order: where a part of the session has members of its own these take its place, and a
/// protocol is its name followed by the settings of the protocol that is selected.
void VisitSettings(ISessionConfig& session, const SettingVisitor& visit);

}  // namespace connectdialog
