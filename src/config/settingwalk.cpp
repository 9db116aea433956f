#include "config/settingwalk.h"

#include <unordered_set>

#include "config/connectconfigptr.h"
#include "config/isessionconfig.h"

namespace connectdialog {

namespace {

void VisitMembers(VProfileData& part, const SettingVisitor& visit);

void Visit(VProfileData& setting, const SettingVisitor& visit) {
    if (auto* protocol = dynamic_cast<ConnectConfigPtr*>(&setting)) {
        visit(protocol->GetNameValue());
        if (ConnectConfig* config = protocol->GetSelected()) VisitMembers(*config, visit);
    } else if (setting.GetMember(0) == &setting) {
        visit(setting);
    } else {
        VisitMembers(setting, visit);
    }
}

void VisitMembers(VProfileData& part, const SettingVisitor& visit) {
    for (std::size_t i = 0; VProfileData* member = part.GetMember(i); ++i) Visit(*member, visit);
}

}  // namespace

void VisitSettings(ISessionConfig& session, const SettingVisitor& visit) {
    std::unordered_set<const VProfileData*> visited;  // both sides of a session save what their protocols share
    const auto visitOnce = [&](VProfileData& setting) {
        if (visited.insert(&setting).second) visit(setting);
    };
    if (auto* data = dynamic_cast<VProfileData*>(&session)) VisitMembers(*data, visitOnce);
}

}  // namespace connectdialog
