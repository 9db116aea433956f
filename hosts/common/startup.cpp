#include "hosts/common/startup.h"

#include "foundation/messagetable.h"
#include "frame/configfolderdialog.h"
#include "frame/startupservices.h"
#include "hosts/common/keyshelp.h"
#include "hosts/common/tell.h"
#include "imports/configpanels.h"
#include "imports/dialogkit/appname.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/codepage.h"
#include "platform/lasterror.h"
#include "stores/openstore.h"
#include "stores/userstore.h"
#include "suite/configpanels/referenceconfigpanels.h"

namespace connectdialog::hosts {

namespace {

/// There is no page to open: who installed the program knows where it came from.
constexpr char16_t kUpdateText[] =
    u"这是 %1 的版本 %2。\n\n"
    u"%1 不会自己下载更新。请用安装它的方式更新：\n"
    u"通过系统的软件包管理器安装的，请更新软件包；\n"
    u"自行编译的，请取得新的源代码，重新编译并安装。";

}  // namespace

bool AskForStoreFolder(const VIcon* icon) {
    if (stores::IsDefaultStoreKnown()) return true;
    // The dialog asks the neighbour about the application's name; its settings come with the store.
    InstallConfigPanels(&GetReferenceConfigPanels());
    ConfigFolderDialog dialog(stores::GetUsualStoreFolder(), icon, nullptr);
    if (dialog.DoModal() != kDialogAccepted) return false;
    if (stores::ChooseStoreFolder(dialog.GetPath())) return true;
    VUnicodeString text;
    text.Format(u"无法记住这个文件夹：%1", FindSystemMessage(platform::GetLastErrorCode()));
    VMessageBox(nullptr, text, kBoxError);
    return false;
}

std::string FindStoreUrl(const std::string& told) {
    const VUnicodeString url = told.empty() ? stores::GetDefaultStoreUrl() : VUnicodeString(told.c_str());
    return platform::ToNarrow(stores::GetAbsoluteStoreUrl(url));
}

HostParts MakeHostParts(const std::string& storeUrl, VIcon* icon) {
    HostParts parts;
    parts.icon = icon;
    parts.help = ShowConnectKeys;
    const VUnicodeString url(storeUrl.c_str());
    parts.commandLine = u"--window --store \""_v + url + u"\"";
    parts.needsTerminal = true;  // to open one session, as a shortcut does
    parts.shortcutOptions = GetStoreOptions(url);
    return parts;
}

std::unique_ptr<VProfileStoreFactory> OpenStoreInWindow(const HostKind& kind, const std::string& storeUrl,
                                                        const HostParts& parts) {
    while (true) {
        VUnicodeString notice;
        auto store = OpenReferenceStore(kind.appName, VUnicodeString(storeUrl.c_str()), notice, parts);
        if (store) {
            if (!notice.IsEmpty()) VMessageBox(nullptr, notice, kBoxWarning);
            return store;
        }
        Tell(kind, notice);
        const VUnicodeString question =
            u"无法打开会话存储。\n\n" + notice + u"\n\n是否重试？（--store 可指定另一个存储）";
        if (VMessageBox(nullptr, question, kBoxYesNo | kBoxError) != kAnswerYes) return nullptr;
    }
}

void RemindOfUpdates(VWindow* parent) {
    if (!CheckPeriodicUpdate(parent)) return;
    VUnicodeString text;
    text.Format(kUpdateText, VGetAppName(), u"" HOST_VERSION);
    VMessageBox(parent, text, kBoxInformation);
}

}  // namespace connectdialog::hosts
