#include "imports/dialogkit/configfolder.h"

#include "foundation/messagetable.h"
#include "foundation/textchecks.h"
#include "imports/dialogkit/dataexchange.h"
#include "imports/dialogkit/vmessagebox.h"
#include "platform/lasterror.h"
#include "platform/paths.h"
#include "platform/userfiles.h"

namespace connectdialog {

namespace {

VUnicodeString DescribeFault(const VUnicodeString& path) {
    if (path.IsEmpty()) return u"请指定一个文件夹。"_v;
    VUnicodeString text;
    const VUnicodeString shown(platform::ToNativePath(path).c_str());
    if (HasControl(path))
        text = u"配置文件夹的路径不能含有控制字符。";
    else if (path[0] != u'\\')
        text.Format(u"配置文件夹必须是一个完整的路径：%1", shown);
    else if (!platform::CreateUserFolder(path) || !platform::CanMakeFilesIn(path))
        text.Format(u"配置文件夹 %1 无法使用：%2", shown, FindSystemMessage(platform::GetLastErrorCode()));
    return text;
}

}  // namespace

// NOLINTNEXTLINE(readability-identifier-naming)
void VDDV_ValidateConfigFolder(VDataExchange& exchange, const VUnicodeString& path, int id, VWindow* parent) {
    if (!exchange.IsSaving()) return;
    const VUnicodeString fault = DescribeFault(path);
    if (fault.IsEmpty()) return;
    exchange.Refuse(id);
    VMessageBox(parent, fault, kBoxWarning);
}

}  // namespace connectdialog
