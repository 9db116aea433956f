#include "suite/sessionoptions/optionfield.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "config/emulations.h"
#include "config/isessionconfig.h"
#include "config/protocolchoice.h"
#include "config/settingtext.h"
#include "foundation/numbertext.h"
#include "foundation/vbasicbuffer.h"
#include "foundation/vstringarray.h"
#include "imports/configpanels.h"
#include "platform/codepage.h"
#include "profile/vlogfont.h"
#include "suite/protocols/fieldfaults.h"
#include "suite/protocols/protocolconfig.h"

namespace connectdialog {

namespace {

constexpr int kTenthsOfAPointPerInch = 720;
constexpr int kPixelsPerInch = 96;

/// A value of several parts that no line of text can tell: it can only be forgotten.
constexpr std::u16string_view kLoginScript = u"Login Script V2";
LaunchFault RefuseAll(std::u16string_view /*text*/) {
    return kLaunchForeignSettings;
}

bool Refuse(const OptionField& field, const char16_t* text, VUnicodeString& refusal) {
    refusal.Format(text, field.label);
    return false;
}

bool RefuseValue(const OptionField& field, VUnicodeString& refusal) {
    refusal = DescribeFieldFault(kLaunchForeignSettings, field.label);
    return false;
}

bool CheckText(const OptionField& field, const VUnicodeString& text, VUnicodeString& refusal) {
    const LaunchFault fault = field.check != nullptr && !text.IsEmpty() ? field.check(text) : kLaunchFine;
    if (fault == kLaunchFine) return true;
    refusal = DescribeFieldFault(fault, field.label);
    return false;
}

/// The largest screen that the global settings allow: a session is cut down to it when it is loaded.
std::int64_t GetGlobalMost(std::u16string_view setting) {
    const VRef<GlobalConfig> global = FetchGlobalConfig();
    const int most = setting == u"Cols"         ? global->maximumCols.Get()
                     : setting == u"Scrollback" ? global->maximumScrollback.Get()
                                                : 0;
    return most > 0 ? most : std::numeric_limits<std::int64_t>::max();
}

void GetLimits(const OptionField& field, VProfileData& setting, std::int64_t& least, std::int64_t& most) {
    least = field.least;
    most = field.most;
    if (least == 0 && most == 0) GetNumberLimits(setting, least, most);
    most = std::min(most, GetGlobalMost(field.setting));
}

bool CheckNumber(const OptionField& field, VProfileData& setting, const VUnicodeString& text, VUnicodeString& refusal) {
    std::int64_t number = 0;
    std::int64_t least = 0;
    std::int64_t most = 0;
    GetLimits(field, setting, least, most);
    if (ReadNumber(platform::ToNarrow(text), number) && number >= least && number <= most) return true;
    refusal.Format(u"“%1”必须是 %2!I64d! 到 %3!I64d! 之间的整数。", field.label, least, most);
    return false;
}

// Colours are 0x00BBGGRR in the store.

unsigned SwapRedAndBlue(unsigned color) {
    return (color & 0xFFU) << 16U | (color & 0xFF00U) | (color >> 16U & 0xFFU);
}

VUnicodeString ShowColor(const VUnicodeString& stored) {
    unsigned color = 0;
    ReadNumber(platform::ToNarrow(stored), color);
    VUnicodeString text;
    text.Format(u"#%1!06X!", SwapRedAndBlue(color));
    return text;
}

bool ReadColor(const VUnicodeString& shown, VUnicodeString& stored) {
    const std::string text = platform::ToNarrow(shown);
    unsigned color = 0;
    if (text.size() != 7 || text[0] != '#' || !ReadNumber(text.substr(1), color, 16)) return false;
    stored.Format(u"%1!u!", SwapRedAndBlue(color));
    return true;
}

VUnicodeString ShowFontSize(const VLogFont& font) {
    VUnicodeString text;
    text.Format(font.size % 10 == 0 ? u"%1!d!" : u"%1!d!.%2!d!", font.size / 10, font.size % 10);
    return text;
}

/// Tenths of a point, from "9" or "9.5".
bool ReadFontSize(const OptionField& field, const VUnicodeString& shown, std::int32_t& tenths) {
    std::string digits = platform::ToNarrow(shown);
    const std::size_t point = digits.find('.');
    if (point != std::string::npos && point + 2 != digits.size()) return false;
    if (point == std::string::npos)
        digits += '0';
    else
        digits.erase(point, 1);
    return ReadNumber(digits, tenths) && tenths >= field.least * 10 && tenths <= field.most * 10;
}

bool TakeFont(const OptionField& field, VProfileLogFont& setting, const VUnicodeString& shown,
              VUnicodeString& refusal) {
    VLogFont font = setting.Get();
    if (field.kind == FieldKind::kFontFace) {
        if (shown.GetLength() > VLogFont::kFaceLength || shown.IsEmpty()) return RefuseValue(field, refusal);
        font.SetFace(shown);
    } else {
        if (!ReadFontSize(field, shown, font.size)) {
            refusal.Format(u"“%1”必须是 %2!d! 到 %3!d! 之间的字号。", field.label, field.least, field.most);
            return false;
        }
        font.height = -font.size * kPixelsPerInch / kTenthsOfAPointPerInch;
    }
    setting.Set(font);
    return true;
}

VUnicodeString StoredOf(const OptionField& field, const VUnicodeString& shown) {
    for (const FieldChoice& choice : field.choices)
        if (shown == choice.shown) return choice.stored;
    return shown;
}

bool IsFont(FieldKind kind) {
    return kind == FieldKind::kFontFace || kind == FieldKind::kFontSize;
}

bool WriteField(const OptionField& field, ISessionConfig& session, VProfileData& setting,
                const VUnicodeString& stored) {
    if (const auto side = FindProtocolChoice(setting)) return SelectProtocol(session, *side, stored);
    IRemoteHostConfig* const host = field.kind == FieldKind::kFirewall ? FindRemoteHost(session) : nullptr;
    if (host == nullptr) return WriteSettingText(setting, stored);
    host->SetFirewallName(stored);  // the firewall is loaded with its name
    return true;
}

}  // namespace

OptionField GetFieldOf(VProfileData& setting) {
    OptionField field{FieldKind::kText, setting.GetName().GetData(), setting.GetName()};
    const OptionField* known = FindOptionField(setting.GetName());
    if (known != nullptr && !IsFont(known->kind)) {
        field = *known;
        field.label = setting.GetName().GetData();
        return field;
    }
    switch (GetTypeOf(setting)) {
        case SettingType::kBool:
            field.kind = FieldKind::kSwitch;
            field.choices = kSwitchWords;
            break;
        case SettingType::kTriState:
            field.kind = FieldKind::kChoice;
            field.choices = kTriStateWords;
            break;
        case SettingType::kText:
            if (IsSecretSetting(setting)) field.kind = FieldKind::kSecret;
            if (setting.GetName() == kLoginScript) field.check = RefuseAll;
            break;
        case SettingType::kList:
            field.kind = FieldKind::kLines;
            break;
        case SettingType::kRecord:
            break;
        default:
            field.kind = FieldKind::kNumber;
            break;
    }
    return field;
}

VUnicodeString ShowField(const OptionField& field, VProfileData& setting) {
    VUnicodeString stored;
    if (field.kind == FieldKind::kSecret) return stored;
    if (const auto* font = dynamic_cast<VProfileLogFont*>(&setting); font != nullptr && IsFont(field.kind))
        return field.kind == FieldKind::kFontFace ? VUnicodeString(font->Get().GetFace()) : ShowFontSize(font->Get());
    ReadSettingText(setting, stored);
    if (field.kind == FieldKind::kColor) return ShowColor(stored);
    for (const FieldChoice& choice : field.choices)
        if (stored == choice.stored) return choice.shown;
    return stored;
}

std::vector<VUnicodeString> ListChoices(const OptionField& field, ISessionConfig& session, VProfileData& setting) {
    std::vector<VUnicodeString> choices;
    for (const FieldChoice& choice : field.choices) choices.emplace_back(choice.shown);
    if (const auto side = FindProtocolChoice(setting)) choices = ListProtocols(*side);
    if (field.kind == FieldKind::kEmulation)
        for (const Emulation& row : kEmulations)
            if (!row.needsKelda || HasKeldaEmulation()) choices.emplace_back(row.name);
    if (field.kind == FieldKind::kFirewall) {
        const auto buffer = VRef<VBasicBuffer>::Adopt(new VBasicBuffer(256));
        VStringArray names;
        session.GetFirewallNames(*buffer);
        names.ReadFrom(buffer.Get());
        choices.assign(names.begin(), names.end());
    }
    const VUnicodeString now = ShowField(field, setting);
    if (!choices.empty() && std::ranges::find(choices, now) == choices.end()) choices.push_back(now);
    return choices;
}

bool TakeField(const OptionField& field, ISessionConfig& session, VProfileData& setting, const VUnicodeString& shown,
               VUnicodeString& refusal) {
    if (shown == ShowField(field, setting)) return true;
    auto* font = dynamic_cast<VProfileLogFont*>(&setting);
    if (font != nullptr && IsFont(field.kind)) return TakeFont(field, *font, shown, refusal);
    VUnicodeString stored = field.kind == FieldKind::kSecret ? shown : StoredOf(field, shown);
    if (field.kind == FieldKind::kColor && !ReadColor(shown, stored))
        return Refuse(field, u"“%1”必须是 #RRGGBB 形式的颜色。", refusal);
    if (field.kind == FieldKind::kNumber && !CheckNumber(field, setting, stored, refusal)) return false;
    if (!CheckText(field, stored, refusal)) return false;
    return WriteField(field, session, setting, stored) || RefuseValue(field, refusal);
}

VUnicodeString DescribeField(const OptionField& field, VProfileData& setting) {
    VUnicodeString text;
    if (field.kind == FieldKind::kNumber) {
        std::int64_t least = 0;
        std::int64_t most = 0;
        GetLimits(field, setting, least, most);
        text.Format(u"%1!I64d! 到 %2!I64d! 之间的整数", least, most);
    } else if (field.kind == FieldKind::kLines) {
        text = u"每行一项";
    } else if (field.kind == FieldKind::kSecret) {
        text = u"不显示；输入的内容将取代它";
    } else if (field.kind == FieldKind::kColor) {
        text = u"#RRGGBB";
    } else if (GetTypeOf(setting) == SettingType::kRecord) {
        text = u"以逗号分隔的字段";
    }
    return text;
}

}  // namespace connectdialog
