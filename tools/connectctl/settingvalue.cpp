#include "tools/connectctl/settingvalue.h"

#include <nlohmann/json.hpp>

#include "config/settingtext.h"
#include "foundation/vreportmessageparams.h"
#include "foundation/vstringarray.h"
#include "platform/codepage.h"
#include "profile/vprofiledata.h"
#include "profile/vprofilestatetext.h"
#include "profile/vvariant.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/recordjson.h"

namespace connectdialog::connectctl {

namespace {

constexpr const char* NameOf(SettingType type) {
    switch (type) {
        case SettingType::kBool:
            return "bool";
        case SettingType::kTriState:
            return "tri-state";
        case SettingType::kInt16:
            return "int16";
        case SettingType::kUint16:
            return "uint16";
        case SettingType::kInt32:
            return "int32";
        case SettingType::kUint32:
            return "uint32";
        case SettingType::kText:
            return "text";
        case SettingType::kList:
            return "list";
        case SettingType::kRecord:
            break;
    }
    return "record";
}

VStringArray ListOf(const VProfileData& setting) {
    VVariant value;
    VReportMessageParams report;
    VStringArray list;
    if (setting.GetVariant(value, report)) StringsFromVariant(value, list);
    return list;
}

VUnicodeString TextOf(VProfileData& setting) {
    VUnicodeString text;
    ReadSettingText(setting, text);
    return text;
}

bool Parse(VProfileData& setting, std::u16string_view text) {
    const SettingType type = GetTypeOf(setting);
    if (type == SettingType::kRecord) return false;  // shown as objects, which nobody types
    if (type != SettingType::kList || !text.starts_with(u'[')) return WriteSettingText(setting, text);
    VStringArray list;
    VReportMessageParams report;
    return ListFromJson(platform::ToNarrow(text), list) && setting.SetVariant(VariantFromStrings(list), report);
}

}  // namespace

const char* GetSettingType(VProfileData& setting) {
    return NameOf(GetTypeOf(setting));
}

std::string GetSettingRange(VProfileData& setting) {
    std::int64_t least = 0;
    std::int64_t most = 0;
    if (GetNumberLimits(setting, least, most)) return std::to_string(least) + " to " + std::to_string(most);
    switch (GetTypeOf(setting)) {
        case SettingType::kBool:
            return "true or false";
        case SettingType::kTriState:
            return "off, on or global";
        case SettingType::kList:
            return "a JSON array of texts, or one text a line";
        case SettingType::kText:
            return dynamic_cast<VProfileStateText*>(&setting) != nullptr
                       ? "numbers with commas between, as they are shown"
                       : "any text";
        default:
            return "nothing that can be typed";
    }
}

nlohmann::json GetSettingJson(VProfileData& setting) {
    std::int64_t least = 0;
    std::int64_t most = 0;
    if (GetNumberLimits(setting, least, most)) return std::stoll(platform::ToNarrow(TextOf(setting)));
    switch (GetTypeOf(setting)) {
        case SettingType::kBool:
            return TextOf(setting) == u"true";
        case SettingType::kList:
            return ListToJson(ListOf(setting));
        case SettingType::kRecord:
            return GetRecordJson(setting);
        default:
            return JsonText(TextOf(setting));
    }
}

nlohmann::json SettingAsJson(VProfileData& setting) {
    nlohmann::json description = {{"name", JsonText(setting.GetName())}, {"type", GetSettingType(setting)}};
    if (IsSecretSetting(setting))
        description["hidden"] = true;
    else
        description["value"] = GetSettingJson(setting);
    return description;
}

std::string GetSettingText(VProfileData& setting) {
    if (IsSecretSetting(setting)) return kHidden;
    if (GetTypeOf(setting) == SettingType::kText) return Printable(TextOf(setting));
    const nlohmann::json value = GetSettingJson(setting);
    if (value.is_null()) return "(record)";
    return value.is_string() ? value.get<std::string>() : PrintableJson(value);
}

std::string DescribeSetting(VProfileData& setting) {
    return Printable(setting.GetName()) + '\t' + GetSettingType(setting) + '\t' + GetSettingText(setting);
}

Failure SetSettingText(VProfileData& setting, std::u16string_view text) {
    const std::string name = Quoted(setting.GetName());
    if (IsSecretSetting(setting)) return name + " is a secret: others could read it in a command line";
    if (Parse(setting, text)) return kDone;
    return name + " is " + GetSettingType(setting) + " (" + GetSettingRange(setting) + "), not " + Quoted(text);
}

}  // namespace connectdialog::connectctl
