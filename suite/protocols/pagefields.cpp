#include "suite/protocols/pagefields.h"

namespace connectdialog {

namespace {

using enum PageFieldKind;
using Settings = ProtocolSettings;

constexpr PageField kHost{kTarget, u"主机名(&H)", CheckLaunchHost};
constexpr PageField kPortField{kPort, u"端口(&O)"};
constexpr PageField kUserField{kUser, u"用户名(&U)", CheckLaunchUser};
constexpr PageField kIdentity{kText, u"密钥文件(&I)", CheckLaunchPath, &Settings::sshIdentityFile};
constexpr PageField kJumpHost{kText, u"跳板主机(&J)", CheckLaunchJumpHost, &Settings::sshJumpHost};

constexpr PageField Switch(const char16_t* label, VProfile<bool> Settings::*flag) {
    return {kSwitch, label, nullptr, nullptr, flag};
}
constexpr PageField Number(const char16_t* label, VProfile<int> Settings::*number, const NumberRange& range) {
    return {kNumber, label, nullptr, nullptr, nullptr, number, range};
}
constexpr PageField Choice(const char16_t* label, VProfile<int> Settings::*number, const NumberRange& range,
                           std::span<const char16_t* const> choices) {
    return {kChoice, label, nullptr, nullptr, nullptr, number, range, choices};
}

// In the order of SerialParity and SerialFlowControl.
constexpr const char16_t* kParities[] = {u"无", u"奇", u"偶"};
constexpr const char16_t* kFlowControls[] = {u"无", u"硬件 (RTS/CTS)", u"软件 (XON/XOFF)"};

constexpr PageField kSshFields[] = {kHost,
                                    kPortField,
                                    kUserField,
                                    kIdentity,
                                    kJumpHost,
                                    Switch(u"转发认证代理(&A)", &Settings::sshForwardAgent),
                                    Switch(u"转发 X11(&X)", &Settings::sshForwardX11)};
constexpr PageField kSftpFields[] = {kHost, kPortField, kUserField, kIdentity, kJumpHost};
constexpr PageField kHostFields[] = {kHost, kPortField, kUserField};
constexpr PageField kRawFields[] = {kHost, kPortField};
constexpr PageField kSerialFields[] = {
    {kTarget, u"设备(&D)", CheckLaunchPath},
    Number(u"波特率(&A)", &Settings::serialBaudRate, kSerialBaudRates),
    Number(u"数据位(&I)", &Settings::serialDataBits, kSerialDataBits),
    Choice(u"校验(&Y)", &Settings::serialParity, kSerialParities, kParities),
    Number(u"停止位(&S)", &Settings::serialStopBits, kSerialStopBits),
    Choice(u"流控制(&F)", &Settings::serialFlowControl, kSerialFlowControls, kFlowControls)};
constexpr PageField kTapiFields[] = {{kTarget, u"电话号码(&H)", CheckLaunchText},
                                     {kText, u"调制解调器(&M)", CheckLaunchPath, &Settings::tapiModemDevice}};
constexpr PageField kShellFields[] = {{kNote, u"命令留空时运行您的默认 shell。"},
                                      {kText, u"命令(&C)", CheckLaunchCommand, &Settings::localShellCommand}};
constexpr PageField kNoFields[] = {{kNote, u"此协议没有需要填写的设置。"}};

constexpr std::int16_t kPageWidth = 236;
constexpr std::int16_t kPageHeight = 126;
constexpr std::int16_t kLineHeight = 17;
constexpr std::int16_t kMargin = 8;
constexpr std::int16_t kInputLeft = 84;
constexpr std::int16_t kInputWidth = kPageWidth - kInputLeft - kMargin;

/// A switch and a note are one control, any other field a label and its input.
constexpr bool IsOneControl(PageFieldKind kind) {
    return kind == kSwitch || kind == kNote;
}
constexpr std::size_t CountControls(std::span<const PageField> fields) {
    std::size_t count = 0;
    for (const PageField& field : fields) count += IsOneControl(field.kind) ? 1 : 2;
    return count;
}

template <const auto& fields>
constexpr auto kControls = [] {
    std::array<ControlTemplate, CountControls(fields)> controls{};
    std::size_t next = 0;
    int id = kFirstPageField;
    std::int16_t top = kMargin;
    for (const PageField& field : fields) {
        const DialogRectangle input{kInputLeft, top, kInputWidth, 14};
        const auto textTop = static_cast<std::int16_t>(top + 2);
        if (field.kind == kNote) {
            controls[next++] = {ControlKind::kStatic, id, field.label, {kMargin, textTop, kPageWidth - 2 * kMargin, 9}};
        } else if (field.kind == kSwitch) {
            controls[next++] = {ControlKind::kCheckBox, id, field.label, {kInputLeft, textTop, kInputWidth, 10}};
        } else {
            const ControlKind kind = field.kind == kChoice ? ControlKind::kComboBox : ControlKind::kEdit;
            controls[next++] = {
                ControlKind::kStatic, kNoId, field.label, {kMargin, textTop, kInputLeft - kMargin - 2, 9}};
            controls[next++] = {kind, id, u"", input};
        }
        ++id;
        top = static_cast<std::int16_t>(top + kLineHeight);
    }
    return controls;
}();

constexpr int kFirstPage = 6030;

template <const auto& fields>
constexpr ProtocolPage Page(int number, std::u16string_view protocol, ProtocolSide side) {
    return {protocol, side, fields, {kFirstPage + number, kPageWidth, kPageHeight, u"", kControls<fields>}};
}

constexpr ProtocolSide kTerminal = ProtocolSide::kTerminal;
constexpr ProtocolSide kTransfer = ProtocolSide::kTransfer;
constexpr ProtocolPage kPages[] = {
    Page<kSshFields>(0, u"SSH2", kTerminal),
    Page<kSshFields>(1, u"SSH1", kTerminal),
    Page<kHostFields>(2, u"Telnet", kTerminal),
    Page<kHostFields>(3, u"Telnet/SSL", kTerminal),
    Page<kHostFields>(4, u"RLogin", kTerminal),
    Page<kSerialFields>(5, u"Serial", kTerminal),
    Page<kShellFields>(6, u"Local Shell", kTerminal),
    Page<kTapiFields>(7, u"TAPI", kTerminal),
    Page<kNoFields>(8, u"Marks", kTerminal),
    Page<kRawFields>(9, u"Raw", kTerminal),
    Page<kSftpFields>(10, u"SFTP", kTransfer),
    Page<kHostFields>(11, u"FTP", kTransfer),
    Page<kHostFields>(12, u"FTP/SSL (implicit)", kTransfer),
    Page<kHostFields>(13, u"FTP/SSL (explicit)", kTransfer),
    Page<kSftpFields>(14, u"SCP", kTransfer),
};

}  // namespace

const ProtocolPage* FindProtocolPage(std::u16string_view protocol) {
    for (const ProtocolPage& page : kPages)
        if (page.protocol == protocol) return &page;
    return nullptr;
}

std::span<const ProtocolPage, kProtocolPageCount> GetProtocolPages() {
    return kPages;
}

}  // namespace connectdialog
