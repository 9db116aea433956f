#include "resources/connectiontemplates.h"
#include "resources/dialogids.h"
#include "resources/dialogtemplate.h"

namespace connectdialog {

namespace {

using enum ControlKind;

constexpr ControlTemplate kConnectControls[] = {
    {kTree, ConnectDialogIds::kTree, u"", {7, 24, 212, 157}},
    {kCheckBox, ConnectDialogIds::kShowOnStartup, u"启动时显示(&S)", {7, 185, 86, 10}},
    {kCheckBox, ConnectDialogIds::kOpenInTab, u"在标签页中打开(&O)", {118, 185, 87, 10}},
    {kDefaultButton, ConnectDialogIds::kConnect, u"连接(&C)", {118, 202, 47, 14}},
    {kButton, kIdCancel, u"关闭", {172, 202, 47, 14}},
    {kSeparator, ConnectDialogIds::kSeparator, u"", {0, 0, 0, 0}},  // the dialog puts it under the toolbar
};

constexpr ControlTemplate kShortcutNameControls[] = {
    {kStatic, ShortcutNameIds::kIntro, u"应用程序将在桌面上创建一个到以下会话的快捷方式:", {7, 7, 212, 18}},
    {kStatic, ShortcutNameIds::kPath, u"会话路径", {7, 28, 212, 9}},
    {kStatic, kNoId, u"请为快捷方式输入一个标签:", {7, 43, 212, 9}},
    {kEdit, ShortcutNameIds::kName, u"", {7, 54, 212, 14}},
    {kDefaultButton, kIdOk, u"确定", {115, 76, 50, 14}},
    {kButton, kIdCancel, u"取消", {169, 76, 50, 14}},
};

constexpr ControlTemplate kHostnamePromptControls[] = {
    {kStatic, HostnamePromptIds::kRequest, u"请为这个会话输入一个主机名:", {7, 7, 186, 9}},
    {kStatic, HostnamePromptIds::kSessionName, u"会话名称", {7, 19, 186, 9}},
    {kEdit, HostnamePromptIds::kHostname, u"", {7, 32, 186, 14}},
    {kDefaultButton, kIdOk, u"确定", {89, 54, 50, 14}},
    {kButton, kIdCancel, u"取消", {143, 54, 50, 14}},
};

constexpr ControlTemplate kMultiConnectControls[] = {
    {kIcon, MultiConnectIds::kIcon, u"warning", {7, 7, 21, 20}},
    {kStatic, MultiConnectIds::kText, u"你选定要打开的会话多于 %1!d! 个。", {36, 12, 158, 18}},
    {kCheckBox, MultiConnectIds::kDontShowAgain, u"不再显示此警告", {36, 36, 158, 10}},
    {kDefaultButton, kIdOk, u"继续", {90, 54, 50, 14}},
    {kButton, kIdCancel, u"取消", {144, 54, 50, 14}},
};

constexpr ControlTemplate kFindSessionControls[] = {
    {kStatic, kNoId, u"查找:", {7, 9, 30, 9}},
    {kEdit, FindSessionIds::kText, u"", {40, 7, 186, 14}},
    {kGroupBox, kNoId, u"查找范围", {7, 27, 166, 62}},
    {kCheckBox, FindSessionIds::kSessionNames, u"会话名称(&S)", {14, 39, 152, 10}},
    {kCheckBox, FindSessionIds::kHostnames, u"主机名(&H)", {14, 51, 152, 10}},
    {kCheckBox, FindSessionIds::kDescriptions, u"描述(&D)", {14, 63, 152, 10}},
    {kCheckBox, FindSessionIds::kFolderNames, u"文件夹名称(&R)", {14, 75, 152, 10}},
    {kCheckBox, FindSessionIds::kMatchCase, u"匹配大小写(&C)", {7, 95, 166, 10}},
    {kDefaultButton, kIdOk, u"确定", {180, 32, 46, 14}},
    {kButton, kIdCancel, u"取消", {180, 50, 46, 14}},
};

constexpr DialogTemplate kTemplates[] = {
    {ConnectDialogIds::kDialog, 227, 223, u"连接", kConnectControls, u"Brennmark Software Connect Dialog"},
    {ShortcutNameIds::kDialog, 226, 97, u"创建桌面快捷方式", kShortcutNameControls},
    {HostnamePromptIds::kDialog, 200, 75, u"输入主机名", kHostnamePromptControls},
    {MultiConnectIds::kDialog, 201, 75, u"", kMultiConnectControls},
    {FindSessionIds::kDialog, 233, 112, u"查找会话", kFindSessionControls},
    kQuickConnectTemplate,
    kWizardSheetTemplate,
    kWizardSingleTemplate,
    kWizardTerminalTemplate,
    kWizardTransferTemplate,
    kWizardFinishTemplate,
    kConfigFolderTemplate,
};

}  // namespace

std::span<const DialogTemplate> GetDialogTemplates() {
    return kTemplates;
}

const DialogTemplate* FindDialogTemplate(int id) {
    for (const DialogTemplate& known : kTemplates)
        if (known.id == id) return &known;
    return nullptr;
}

}  // namespace connectdialog
