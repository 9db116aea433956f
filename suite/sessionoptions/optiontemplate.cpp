#include "suite/sessionoptions/optiontemplate.h"

#include <vector>

namespace connectdialog {

namespace {

// So small that the window has its place on a screen of 1366 x 768 where everything is drawn half as large again.
constexpr std::int16_t kWidth = 390;
constexpr std::int16_t kHeight = 238;
constexpr std::int16_t kPageLeft = 126;
constexpr std::int16_t kPageTop = 20;
constexpr std::int16_t kPageWidth = 250;
constexpr std::int16_t kLabelWidth = 88;
constexpr std::int16_t kEditHeight = 13;
constexpr std::int16_t kRowHeight = 15;
constexpr std::int16_t kMemoRows = 3;
constexpr DialogRectangle kEditor{kPageLeft, 156, kPageWidth, kEditHeight};

using enum ControlKind;
constexpr ControlTemplate kFrame[] = {
    {kTree, OptionIds::kPages, u"", {7, 7, 108, 203}},
    {kGroupBox, OptionIds::kPageFrame, u"连接", {120, 7, 263, 203}},
};
constexpr ControlTemplate kAllSettings[] = {
    {kStatic, OptionIds::kFilterLabel, u"筛选(&F):", {kPageLeft, 22, 40, 9}},
    {kEdit, OptionIds::kFilter, u"", {166, 20, 210, kEditHeight}},
    {kTree, OptionIds::kSettings, u"", {kPageLeft, 38, kPageWidth, 94}},
    {kStatic, OptionIds::kSettingLabel, u"", {kPageLeft, 136, kPageWidth, 18}},
    {kEdit, OptionIds::kSettingText, u"", kEditor},
    {kPassword, OptionIds::kSettingSecret, u"", {kPageLeft, 156, 196, kEditHeight}},
    {kButton, OptionIds::kForget, u"清除(&C)", {326, 156, 50, kEditHeight}},
    {kMemo, OptionIds::kSettingLines, u"", {kPageLeft, 156, kPageWidth, 48}},
    {kComboBox, OptionIds::kSettingChoice, u"", kEditor},
};
constexpr ControlTemplate kBottom[] = {
    {kStatic, OptionIds::kNote, u"", {7, 219, 264, 9}},
    {kDefaultButton, kIdOk, u"确定", {279, 217, 50, 14}},
    {kButton, kIdCancel, u"取消", {333, 217, 50, 14}},
};

std::vector<OptionControl> CountOptionControls() {
    std::vector<OptionControl> controls;
    int id = OptionIds::kFirstField;
    for (const OptionPage& page : GetOptionPages())
        for (const OptionField& field : page.fields) {
            controls.push_back({field, page, id, id + 1});
            id += 2;
        }
    return controls;
}

std::vector<ControlTemplate> MakeOptionControls() {
    std::vector<ControlTemplate> controls(std::begin(kFrame), std::end(kFrame));
    for (const auto& [field, page, label, control] : GetOptionControls()) {
        const OptionRowPlaces places = PlaceRow(field.kind, 0);
        const bool isSwitch = field.kind == FieldKind::kSwitch;
        controls.push_back({kStatic, label, isSwitch ? u"" : field.label, places.label});
        controls.push_back({GetControlKind(field.kind), control, isSwitch ? field.label : u"", places.control});
    }
    controls.insert(controls.end(), std::begin(kAllSettings), std::end(kAllSettings));
    controls.insert(controls.end(), std::begin(kBottom), std::end(kBottom));
    return controls;
}

}  // namespace

ControlKind GetControlKind(FieldKind kind) {
    switch (kind) {
        case FieldKind::kSwitch:
            return kCheckBox;
        case FieldKind::kChoice:
        case FieldKind::kProtocol:
        case FieldKind::kFirewall:
        case FieldKind::kEmulation:
            return kComboBox;
        case FieldKind::kLines:
            return kMemo;
        case FieldKind::kSecret:
            return kPassword;
        default:
            return kEdit;
    }
}

OptionRowPlaces PlaceRow(FieldKind kind, std::int16_t top) {
    const auto y = static_cast<std::int16_t>(kPageTop + top);
    const auto down = [y](int units) { return static_cast<std::int16_t>(y + units); };
    if (kind == FieldKind::kSwitch) return {{}, {kPageLeft, down(2), kPageWidth, 10}, kRowHeight};
    const std::int16_t rows = kind == FieldKind::kLines ? kMemoRows : std::int16_t{1};
    const auto height = static_cast<std::int16_t>(rows * kRowHeight);
    return {{kPageLeft, down(2), kLabelWidth, 9},
            {kPageLeft + kLabelWidth, y, kPageWidth - kLabelWidth,
             static_cast<std::int16_t>(height - kRowHeight + kEditHeight)},
            height};
}

std::span<const OptionControl> GetOptionControls() {
    static const std::vector<OptionControl> controls = CountOptionControls();
    return controls;
}

const DialogTemplate& GetOptionTemplate() {
    static const std::vector<ControlTemplate> controls = MakeOptionControls();
    static const DialogTemplate shown{OptionIds::kDialog, kWidth, kHeight, u"会话选项", controls};
    return shown;
}

}  // namespace connectdialog
