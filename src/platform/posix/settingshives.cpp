#include "platform/settingshives.h"

#include <algorithm>

#include "platform/environment.h"

namespace connectdialog::platform {

namespace {

/// The user's configuration folder; a relative path in the environment counts as none.
std::u16string GetConfigurationFolder() {
    std::u16string folder;
    if (GetEnvironmentText(u"XDG_CONFIG_HOME", folder) && folder.starts_with(u'/')) return folder;
    if (GetEnvironmentText(u"HOME", folder) && folder.starts_with(u'/')) return folder + u"/.config";
    return {};
}

}  // namespace

std::u16string GetHivePath(HiveScope scope) {
    std::u16string path = u"/etc/xdg/brennmark/machine.reg";
    if (scope == HiveScope::kUser) {
        const std::u16string folder = GetConfigurationFolder();
        path = folder.empty() ? folder : folder + u"/brennmark/user.reg";
    }
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}

}  // namespace connectdialog::platform
