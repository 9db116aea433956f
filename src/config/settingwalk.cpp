#include "config/settingwalk.h"

#include <unordered_set>

#include "config/connectconfigptr.h"
#include "config/isessionconfig.h"

namespace connectdialog {

namespace {

/// One walk. The two sides of a session may share settings (a host, a port): those are told where they come first.
class SettingWalk {
  public:
    explicit SettingWalk(const SettingVisitor& visit) : visit(visit) {}

    void VisitMembers(VProfileData& part) {
        for (std::size_t i = 0; VProfileData* member = part.GetMember(i); ++i) Visit(*member);
    }

  private:
    void Visit(VProfileData& setting) {
        if (auto* protocol = dynamic_cast<ConnectConfigPtr*>(&setting)) {
            visit(protocol->GetNameValue());
            if (ConnectConfig* config = protocol->GetSelected()) VisitMembers(*config);
        } else if (setting.GetMember(0) != &setting) {
            VisitMembers(setting);
        } else if (visited.insert(&setting).second) {
            visit(setting);
        }
    }

    const SettingVisitor& visit;
    std::unordered_set<const VProfileData*> visited;
};

}  // namespace

void VisitSettings(ISessionConfig& session, const SettingVisitor& visit) {
    if (auto* data = dynamic_cast<VProfileData*>(&session)) SettingWalk(visit).VisitMembers(*data);
}

VProfileData* FindSetting(ISessionConfig& session, std::u16string_view name) {
    VProfileData* found = nullptr;
    VisitSettings(session, [&](VProfileData& setting) {
        if (found == nullptr && setting.GetName().EqualsNoCase(name)) found = &setting;
    });
    return found;
}

}  // namespace connectdialog
