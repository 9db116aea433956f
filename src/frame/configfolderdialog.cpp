#include "frame/configfolderdialog.h"

#include <utility>

#include "foundation/vnarrowstring.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/browseforfolder.h"
#include "imports/dialogkit/configfolder.h"
#include "imports/dialogkit/textmetrics.h"
#include "platform/paths.h"
#include "resources/connectiontemplates.h"

namespace connectdialog {

namespace {

// The user reads and types paths as the system writes them.
VUnicodeString ToShown(const VUnicodeString& path) {
    return VUnicodeString(platform::ToNativePath(path).c_str());
}
VUnicodeString FromShown(const VUnicodeString& text) {
    return VUnicodeString(platform::FromNativePath(VNarrowString(text).View()));
}

}  // namespace

ConfigFolderDialog::ConfigFolderDialog(VUnicodeString initialPath, const VIcon* icon, VWindow* parent)
    : VDialog(kConfigFolderTemplate, parent), icon(icon), path(std::move(initialPath)), appName(VGetAppName()) {}

void ConfigFolderDialog::OnInitDialog() {
    VDialog::OnInitDialog();
    SetTitle(appName);
    if (icon != nullptr) GetWindow()->SetIcon(ConfigFolderIds::kIcon, *icon);
    VUnicodeString intro;
    intro.Format(GetControlText(ConfigFolderIds::kIntro).GetData(), EscapeAmpersand(appName),
                 GetApplicationTrademarkSymbol(appName));
    SetControlText(ConfigFolderIds::kIntro, intro);
}

void ConfigFolderDialog::DoDataExchange(VDataExchange& exchange) {
    VUnicodeString shown = ToShown(path);
    DDX_Text(exchange, ConfigFolderIds::kPath, shown);
    if (exchange.IsSaving()) path = FromShown(shown);
    VDDV_ValidateConfigFolder(exchange, path, ConfigFolderIds::kPath, this);
}

bool ConfigFolderDialog::OnCommand(int command) {
    if (command != ConfigFolderIds::kBrowse) return VDialog::OnCommand(command);
    VUnicodeString chosen = FromShown(GetControlText(ConfigFolderIds::kPath));
    if (VBrowseForFolder(this, chosen)) SetControlText(ConfigFolderIds::kPath, ToShown(chosen));
    return true;
}

}  // namespace connectdialog
