#include "suite/sessionoptions/optionpages.h"

#include "config/numberrange.h"
#include "foundation/casefold.h"
#include "suite/protocols/launchchecks.h"
#include "suite/protocols/protocolsettings.h"

namespace connectdialog {

namespace {

using enum FieldKind;

constexpr int kHighestPort = 65535;

constexpr FieldChoice kParities[] = {{u"无", u"0"}, {u"奇校验", u"1"}, {u"偶校验", u"2"}};
constexpr FieldChoice kFlowControls[] = {{u"无", u"0"}, {u"硬件", u"1"}, {u"软件", u"2"}};
constexpr FieldChoice kEncodings[] = {{u"默认", u"Default"},          {u"UTF-8", u"UTF-8"},
                                      {u"GB18030", u"GB18030"},       {u"Big5", u"Big5"},
                                      {u"Shift_JIS", u"Shift_JIS"},   {u"EUC-JP", u"EUC-JP"},
                                      {u"EUC-KR", u"EUC-KR"},         {u"KOI8-R", u"KOI8-R"},
                                      {u"ISO 8859-1", u"ISO 8859-1"}, {u"Windows-1252", u"Windows-1252"}};
constexpr FieldChoice kCursorStyles[] = {{u"方块", u"0"}, {u"下划线", u"1"}, {u"竖线", u"2"}};
constexpr FieldChoice kKeymaps[] = {
    {u"默认", u"Default"}, {u"VT220", u"VT220"}, {u"SCOANSI", u"SCOANSI"}, {u"自定义", u"Custom"}};

constexpr OptionField Port(const char16_t* label, std::u16string_view setting, int least = 1) {
    return {kNumber, label, setting, least, kHighestPort};
}
constexpr OptionField Bounded(const char16_t* label, std::u16string_view setting, const NumberRange& range) {
    return {kNumber, label, setting, range.least, range.most};
}
constexpr OptionField Chosen(const char16_t* label, std::u16string_view setting, std::span<const FieldChoice> choices) {
    return {kChoice, label, setting, 0, 0, choices};
}
constexpr OptionField Checked(const char16_t* label, std::u16string_view setting,
                              LaunchFault (*check)(std::u16string_view)) {
    return {kText, label, setting, 0, 0, {}, check};
}
constexpr OptionField Ticked(const char16_t* label, std::u16string_view setting) {
    return {kSwitch, label, setting, 0, 0, kSwitchWords};
}

constexpr OptionField kConnection[] = {
    {kName, u"名称", u""},
    {kProtocol, u"协议", u"Protocol Name"},
    {kProtocol, u"文件传输协议", u"Transfer Protocol Name"},
    Checked(u"主机名", u"Hostname", CheckLaunchHost),
    Port(u"SSH 端口", u"SSH Port"),
    Port(u"Telnet 端口", u"Telnet Port"),
    Port(u"Telnet/SSL 端口", u"Telnet/SSL Port"),
    Port(u"RLogin 端口", u"RLogin Port"),
    Port(u"Raw 端口", u"Raw Port", 0),
    Port(u"FTP 端口", u"FTP Port"),
    Port(u"FTP/SSL 端口", u"FTP/SSL Port"),
    Checked(u"用户名", u"Username", CheckLaunchUser),
    {kFirewall, u"防火墙", u"Firewall Name"},
    {kLines, u"描述", u"Description"},
};

constexpr OptionField kDevices[] = {
    Checked(u"串口设备", u"Serial Device", CheckLaunchPath),
    Bounded(u"波特率", u"Serial Baud Rate", kSerialBaudRates),
    Bounded(u"数据位", u"Serial Data Bits", kSerialDataBits),
    Chosen(u"奇偶校验", u"Serial Parity", kParities),
    Bounded(u"停止位", u"Serial Stop Bits", kSerialStopBits),
    Chosen(u"流控制", u"Serial Flow Control", kFlowControls),
    {kText, u"电话号码", u"TAPI Phone Number"},
    {kText, u"调制解调器", u"TAPI Modem Device"},
    Checked(u"本地命令", u"Local Shell Command", CheckLaunchCommand),
};

constexpr OptionField kAuthentication[] = {
    Checked(u"身份文件", u"SSH Identity File", CheckLaunchPath),
    Checked(u"跳板主机", u"SSH Jump Host", CheckLaunchJumpHost),
    Ticked(u"转发身份验证代理", u"SSH Forward Agent"),
    Ticked(u"转发 X11 连接", u"SSH Forward X11"),
    Checked(u"远程命令", u"SSH Remote Command", CheckLaunchText),
};

constexpr OptionField kKeepAlive[] = {
    Ticked(u"空闲时发送字符串", u"Idle Check"),
    {kText, u"字符串", u"Idle String"},
    Bounded(u"间隔 (秒)", u"Idle Timeout", kIdleSeconds),
    Ticked(u"发送协议空操作 (NO-OP)", u"Idle NO-OP Check"),
    Bounded(u"空操作间隔 (秒)", u"Idle NO-OP Timeout", kIdleSeconds),
    Chosen(u"断开后自动重连", u"Auto Reconnect", kTriStateWords),
    Ticked(u"断开后关闭窗口", u"Close On Disconnect"),
    Ticked(u"断开后清屏", u"Clear On Disconnect"),
};

constexpr OptionField kLogon[] = {
    Ticked(u"登录时运行登录脚本", u"Use Login Script"),
    Ticked(u"先发送一个回车", u"Send Initial Carriage Return"),
    Ticked(u"登录后运行脚本文件", u"Use Script File"),
    {kText, u"脚本文件", u"Script Filename"},
};

constexpr OptionField kTerminal[] = {
    {kEmulation, u"终端仿真", u"Emulation"},
    {kNumber, u"行数", u"Rows", 1, 1000},
    {kNumber, u"列数", u"Cols", 1, 32767},
    {kNumber, u"回滚缓冲区 (行)", u"Scrollback", 0, 100000000},
    Chosen(u"字符编码", u"Output Transformer Name", kEncodings),
    Ticked(u"ANSI 颜色", u"ANSI Color"),
    Ticked(u"自动换行", u"Line Wrap"),
    Ticked(u"本地回显", u"Local Echo"),
    Ticked(u"向主机报告另一终端类型", u"Use Terminal Type"),
    {kText, u"终端类型", u"Terminal Type"},
    Ticked(u"发送应答字符串", u"Use Answerback"),
    {kText, u"应答字符串", u"Answerback"},
};

constexpr OptionField kAppearance[] = {
    {kFontFace, u"字体", u"Normal Font v2"},
    {kFontSize, u"字号 (磅)", u"Normal Font v2", 1, 200},
    {kText, u"配色方案", u"Color Scheme"},
    {kColor, u"前景色", u"Foreground"},
    {kColor, u"背景色", u"Background"},
    {kColor, u"粗体颜色", u"Bold"},
    Chosen(u"光标形状", u"Cursor Style", kCursorStyles),
    Ticked(u"光标闪烁", u"Blinking Cursor"),
    Ticked(u"自定义窗口标题", u"Use Title Bar"),
    {kText, u"窗口标题", u"Title Bar"},
    Ticked(u"响铃时发声", u"Audio Bell"),
    Ticked(u"响铃时闪屏", u"Visual Bell"),
};

constexpr OptionField kKeyboard[] = {
    Chosen(u"键盘映射", u"Keymap Name", kKeymaps),
    {kText, u"映射文件", u"Keymap Filename"},
    Ticked(u"使用另一键盘映射", u"Use Alternate Keyboard"),
    Ticked(u"映射 Delete 键", u"Map Delete"),
    Ticked(u"映射 Backspace 键", u"Map Backspace"),
    Ticked(u"Alt 键作为 Emacs 的 Meta 键", u"Emacs Mode"),
    {kNumber, u"按键延迟 (毫秒)", u"Keyboard Char Send Delay", 0, 60000},
    {kNumber, u"行发送延迟 (毫秒)", u"Line Send Delay", 0, 60000},
    {kNumber, u"字符发送延迟 (毫秒)", u"Character Send Delay", 0, 60000},
    Ticked(u"自定义单词分隔符", u"Use Word Delimiter Chars"),
    {kText, u"单词分隔符", u"Word Delimiter Chars"},
};

constexpr OptionField kLog[] = {
    {kText, u"日志文件", u"Log Filename"},
    Ticked(u"连接时开始记录", u"Start Log Upon Connect"),
    Ticked(u"开始前询问文件名", u"Log Prompt"),
    Ticked(u"记录原始数据", u"Raw Log"),
    Ticked(u"每天零点换新文件", u"New Log File At Midnight"),
    Ticked(u"文件被占用时另取文件名", u"Generate Unique Log File Name When File In Use"),
    {kText, u"连接时写入", u"Custom Log Message Connect"},
    {kText, u"断开时写入", u"Custom Log Message Disconnect"},
    {kText, u"每行前写入", u"Custom Log Message Each Line"},
    Ticked(u"只记录以上内容", u"Log Only Custom"),
};

constexpr OptionField kTransfer[] = {
    {kText, u"初始本地目录", u"Initial Local Directory"},
    {kText, u"默认下载目录", u"Default Download Directory"},
    {kText, u"上传目录", u"Upload Directory"},
    {kText, u"下载目录", u"Download Directory"},
    Bounded(u"传输缓冲区数", u"Max Transfer Buffers", kTransferBuffers),
    Ticked(u"文件名总是使用 UTF-8", u"Filenames Always Use UTF8"),
    Ticked(u"使用多个 SFTP 通道", u"Use Multiple SFTP Channels"),
    Chosen(u"解析符号链接", u"Resolve Symbolic Links", kTriStateWords),
    {kLines, u"登录后命令", u"Tessaly Post Login User Commands"},
};

constexpr OptionPage kPages[] = {
    {u"Connection", u"连接", kConnection},
    {u"Connection\\Authentication", u"身份验证", kAuthentication},
    {u"Connection\\Serial", u"串口和本地", kDevices},
    {u"Connection\\Logon", u"登录动作", kLogon},
    {u"Connection\\Keep Alive", u"保持连接", kKeepAlive},
    {u"Terminal", u"终端", kTerminal},
    {u"Terminal\\Appearance", u"外观", kAppearance},
    {u"Terminal\\Keyboard", u"键盘", kKeyboard},
    {u"Terminal\\Log", u"日志", kLog},
    {u"File Transfer", u"文件传输", kTransfer},
    {u"All Settings", u"全部设置", {}},
};

}  // namespace

std::span<const OptionPage> GetOptionPages() {
    return kPages;
}

const OptionField* FindOptionField(std::u16string_view setting) {
    for (const OptionPage& page : kPages)
        for (const OptionField& field : page.fields)
            if (field.kind != kName && EqualsNoCase(field.setting, setting)) return &field;
    return nullptr;
}

}  // namespace connectdialog
