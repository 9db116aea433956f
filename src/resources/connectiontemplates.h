// Looks of quick connect, the new session wizard and the dialog for the configuration folder.
#pragma once

#include "resources/dialogids.h"
#include "resources/dialogtemplate.h"

namespace connectdialog {

inline constexpr ControlTemplate kQuickConnectControls[] = {
    {ControlKind::kStatic, QuickConnectIds::kProtocolLabel, u"协议(&P):", {7, 9, 45, 9}},
    {ControlKind::kComboBox, QuickConnectIds::kProtocol, u"", {56, 7, 120, 14}},
    {ControlKind::kGroupBox, QuickConnectIds::kTransferPage, u"Static", {7, 25, 238, 143}},
    {ControlKind::kGroupBox, QuickConnectIds::kTerminalPage, u"Static", {7, 25, 238, 128}},
    {ControlKind::kCheckBox, QuickConnectIds::kShowOnStartup, u"启动时显示快速连接(&W)", {7, 158, 118, 10}},
    {ControlKind::kCheckBox, QuickConnectIds::kSaveSession, u"保存会话(&V)", {130, 158, 115, 10}},
    {ControlKind::kCheckBox, QuickConnectIds::kOpenInTab, u"在标签页中打开(&T)", {7, 173, 118, 10}},
    {ControlKind::kDefaultButton, kIdOk, u"连接", {141, 190, 50, 14}},
    {ControlKind::kButton, kIdCancel, u"取消", {195, 190, 50, 14}},
};
inline constexpr DialogTemplate kQuickConnectTemplate{QuickConnectIds::kDialog, 252, 211, u"快速连接",
                                                      kQuickConnectControls};

// The pages of the wizard lie in the sheet's area.

inline constexpr ControlTemplate kWizardSheetControls[] = {
    {ControlKind::kIcon, WizardIds::kPicture, u"information", {7, 7, 21, 20}},
    {ControlKind::kGroupBox, WizardIds::kPageArea, u"", {36, 4, 238, 138}},
    {ControlKind::kSeparator, kNoId, u"", {7, 146, 267, 1}},
    {ControlKind::kButton, WizardIds::kBack, u"< 上一步(&B)", {60, 152, 50, 14}},
    {ControlKind::kButton, WizardIds::kNext, u"下一步(&N) >", {112, 152, 50, 14}},
    {ControlKind::kButton, WizardIds::kFinish, u"完成(&F)", {8, 152, 50, 14}},
    {ControlKind::kButton, kIdCancel, u"取消", {168, 152, 50, 14}},
    {ControlKind::kButton, WizardIds::kHelp, u"帮助", {224, 152, 50, 14}},
};
inline constexpr DialogTemplate kWizardSheetTemplate{WizardIds::kSheet, 281, 173, u"新建会话向导",
                                                     kWizardSheetControls};

inline constexpr ControlTemplate kWizardSingleControls[] = {
    {ControlKind::kStatic, kNoId, u"此向导将帮你建立一个连接到远程服务器的会话。", {7, 7, 224, 18}},
    {ControlKind::kStatic, kNoId, u"你希望建立何种连接？", {7, 32, 224, 9}},
    {ControlKind::kStatic, kNoId, u"协议(&R):", {7, 50, 70, 9}},
    {ControlKind::kComboBox, WizardIds::kProtocol, u"", {80, 48, 120, 14}},
    {ControlKind::kCheckBox, WizardIds::kDeclineWizard, u"创建会话时不使用本向导(&W)", {7, 120, 224, 10}},
};
inline constexpr ControlTemplate kWizardTerminalControls[] = {
    {ControlKind::kStatic, kNoId, u"此向导将帮你建立一个连接到远程服务器的会话。", {7, 7, 224, 9}},
    {ControlKind::kStatic, kNoId, u"你希望建立何种连接？", {7, 20, 224, 9}},
    {ControlKind::kStatic,
     kNoId,
     u"如果您希望为终端仿真使用这个会话，在下面选择一个协议。如果您只希望为文件传输使用这个会话，在下面选择'None'。",
     {7, 36, 224, 36}},
    {ControlKind::kStatic, kNoId, u"NorHalden®协议:", {7, 80, 70, 9}},
    {ControlKind::kComboBox, WizardIds::kProtocol, u"", {80, 78, 120, 14}},
    {ControlKind::kCheckBox, WizardIds::kDeclineWizard, u"创建会话时不使用本向导(&W)", {7, 120, 224, 10}},
};
inline constexpr ControlTemplate kWizardTransferControls[] = {
    {ControlKind::kStatic,
     kNoId,
     u"如果你想要在此会话使用 FTP 或 SFTP 文件传输，请在下面选择一种协议。如果你只想使用此会话当终端仿真器，在下面选择"
     u"'None'。",
     {7, 7, 224, 36}},
    {ControlKind::kStatic, kNoId, u"Tessaly®协议:", {7, 54, 70, 9}},
    {ControlKind::kComboBox, WizardIds::kProtocol, u"", {80, 52, 120, 14}},
};
inline constexpr ControlTemplate kWizardFinishControls[] = {
    {ControlKind::kStatic, kNoId, u"向导已准备好为您创建新会话。", {7, 7, 224, 9}},
    {ControlKind::kStatic, kNoId, u"您希望使用什么名称来唯一标识新会话？", {7, 22, 224, 9}},
    {ControlKind::kStatic, kNoId, u"会话名称(&N):", {7, 40, 60, 9}},
    {ControlKind::kEdit, WizardIds::kName, u"", {70, 38, 160, 14}},
    {ControlKind::kStatic, kNoId, u"描述(&D):", {7, 58, 60, 9}},
    {ControlKind::kMemo, WizardIds::kDescription, u"", {70, 56, 160, 70}},
};
inline constexpr DialogTemplate kWizardSingleTemplate{WizardIds::kSinglePage, 238, 138, u"新建会话向导",
                                                      kWizardSingleControls};
inline constexpr DialogTemplate kWizardTerminalTemplate{WizardIds::kTerminalPage, 238, 138, u"新建会话向导",
                                                        kWizardTerminalControls};
inline constexpr DialogTemplate kWizardTransferTemplate{WizardIds::kTransferPage, 238, 138, u"新建会话向导",
                                                        kWizardTransferControls};
inline constexpr DialogTemplate kWizardFinishTemplate{WizardIds::kFinishPage, 238, 138, u"新建会话向导",
                                                      kWizardFinishControls};

inline constexpr ControlTemplate kConfigFolderControls[] = {
    {ControlKind::kIcon, ConfigFolderIds::kIcon, u"information", {7, 7, 21, 20}},
    {ControlKind::kStatic,
     ConfigFolderIds::kIntro,
     u"这是你第一次运行 %1!s!%2!c!。 %1!s! 需要设置可以存储配置数据的文件夹。",
     {36, 7, 207, 27}},
    {ControlKind::kStatic, kNoId, u"请在下面文件夹中指定一个。", {36, 38, 207, 9}},
    {ControlKind::kStatic, kNoId, u"按“取消”将退出应用程序且不设置配置文件夹。", {36, 50, 207, 18}},
    {ControlKind::kEdit, ConfigFolderIds::kPath, u"", {36, 72, 161, 14}},
    {ControlKind::kButton, ConfigFolderIds::kBrowse, u"...", {201, 72, 42, 14}},
    {ControlKind::kDefaultButton, kIdOk, u"确定", {139, 94, 50, 14}},
    {ControlKind::kButton, kIdCancel, u"取消", {193, 94, 50, 14}},
};
inline constexpr DialogTemplate kConfigFolderTemplate{ConfigFolderIds::kDialog, 250, 115, u"", kConfigFolderControls};

}  // namespace connectdialog
