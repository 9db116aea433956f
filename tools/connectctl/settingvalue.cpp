#include "tools/connectctl/settingvalue.h"

#include <array>
#include <charconv>
#include <concepts>
#include <limits>
#include <nlohmann/json.hpp>
#include <type_traits>
#include <typeinfo>

#include "foundation/casefold.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "profile/vprofile.h"
#include "profile/vprofilemultilinestring.h"
#include "profile/vprofilestatetext.h"
#include "profile/vvariant.h"
#include "tools/connectctl/output.h"
#include "tools/connectctl/recordjson.h"

namespace connectdialog::connectctl {

namespace {

struct Word {
    std::u16string_view text;
    bool value;
};
constexpr std::array<Word, 8> kBoolWords = {{{u"true", true},
                                             {u"false", false},
                                             {u"yes", true},
                                             {u"no", false},
                                             {u"on", true},
                                             {u"off", false},
                                             {u"1", true},
                                             {u"0", false}}};
/// By the number of a VTriState.
constexpr std::array<const char*, 3> kTriStateWords = {"off", "on", "global"};

template <class T>
constexpr const char* kNumberType = std::same_as<T, short>            ? "int16"
                                    : std::same_as<T, unsigned short> ? "uint16"
                                    : std::same_as<T, int>            ? "int32"
                                                                      : "uint32";

/// Calls `visit` with the setting as the VProfile<T> that it is. False when it is none.
template <class Visitor>
bool VisitProfile(VProfileData& setting, Visitor visit) {
    const auto visitAs = [&]<class T>(std::type_identity<T>) {
        auto* profile = dynamic_cast<VProfile<T>*>(&setting);
        if (profile != nullptr) visit(*profile);
        return profile != nullptr;
    };
    return visitAs(std::type_identity<bool>()) || visitAs(std::type_identity<int>()) ||
           visitAs(std::type_identity<VTriState>()) || visitAs(std::type_identity<unsigned int>()) ||
           visitAs(std::type_identity<short>()) || visitAs(std::type_identity<unsigned short>());
}

VVariant GetVariant(const VProfileData& setting) {
    VVariant value;
    VReportMessageParams report;
    setting.GetVariant(value, report);
    return value;
}

bool Parse(VProfile<bool>& setting, std::u16string_view text) {
    for (const Word& word : kBoolWords) {
        if (!EqualsNoCase(word.text, text)) continue;
        setting.Set(word.value);
        return true;
    }
    return false;
}

bool Parse(VProfile<VTriState>& setting, std::u16string_view text) {
    for (std::size_t i = 0; i < kTriStateWords.size(); ++i) {
        if (!EqualsNoCase(platform::ToWide(kTriStateWords[i]), text)) continue;
        setting.Set(static_cast<VTriState>(i));
        return true;
    }
    return false;
}

template <class T>
bool Parse(VProfile<T>& setting, std::u16string_view text) {
    const std::string digits = platform::ToNarrow(text);
    T number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return false;
    setting.Set(number);
    return true;
}

bool ParseList(std::u16string_view text, VStringArray& list) {
    if (text.starts_with(u'[')) return ListFromJson(platform::ToNarrow(text), list);
    VProfileMultiLineString lines;
    lines.SetText(VUnicodeString(text));
    list = lines.Get();
    return true;
}

bool Parse(VProfileData& setting, std::u16string_view text) {
    bool isTaken = false;
    if (VisitProfile(setting, [&](auto& profile) { isTaken = Parse(profile, text); })) return isTaken;
    VReportMessageParams report;
    if (dynamic_cast<VProfileTextList*>(&setting) != nullptr) {
        VStringArray list;
        return ParseList(text, list) && setting.SetVariant(VariantFromStrings(list), report);
    }
    if (!setting.SetVariant(VVariant(VUnicodeString(text)), report)) return false;
    const auto* state = dynamic_cast<VProfileStateText*>(&setting);
    return state == nullptr || state->FormatFields() == text;
}

}  // namespace

const char* GetSettingType(VProfileData& setting) {
    const char* type = "record";
    const auto nameType = [&]<class T>(VProfile<T>&) {
        if constexpr (std::same_as<T, bool>)
            type = "bool";
        else if constexpr (std::same_as<T, VTriState>)
            type = "tri-state";
        else
            type = kNumberType<T>;
    };
    if (VisitProfile(setting, nameType)) return type;
    if (IsSecret(setting)) return "text";
    switch (GetVariant(setting).GetType()) {
        case VVariantType::kText:
            return "text";
        case VVariantType::kArray:
            return "list";
        default:
            return type;
    }
}

std::string GetSettingRange(VProfileData& setting) {
    std::string range;
    const auto nameRange = [&]<class T>(VProfile<T>&) {
        if constexpr (std::same_as<T, bool>)
            range = "true or false";
        else if constexpr (std::same_as<T, VTriState>)
            range = "off, on or global";
        else
            range =
                std::to_string(std::numeric_limits<T>::min()) + " to " + std::to_string(std::numeric_limits<T>::max());
    };
    if (VisitProfile(setting, nameRange)) return range;
    if (dynamic_cast<VProfileTextList*>(&setting) != nullptr) return "a JSON array of texts, or one text a line";
    if (dynamic_cast<VProfileStateText*>(&setting) != nullptr) return "numbers with commas between, as they are shown";
    return GetVariant(setting).GetType() == VVariantType::kText ? "any text" : "nothing that can be typed";
}

bool IsSecret(VProfileData& setting) {
    return dynamic_cast<VProfileSz*>(&setting) != nullptr && typeid(setting) != typeid(VProfileText) &&
           dynamic_cast<VProfileStateText*>(&setting) == nullptr;
}

nlohmann::json GetSettingJson(VProfileData& setting) {
    nlohmann::json value;
    const auto toJson = [&]<class T>(VProfile<T>& profile) {
        if constexpr (std::same_as<T, VTriState>)
            value = kTriStateWords[static_cast<std::size_t>(profile.Get())];
        else
            value = profile.Get();
    };
    if (VisitProfile(setting, toJson)) return value;
    const VVariant variant = GetVariant(setting);
    if (variant.GetType() == VVariantType::kText) return JsonText(variant.GetText());
    VStringArray list;
    if (variant.GetType() != VVariantType::kArray) return GetRecordJson(setting);
    StringsFromVariant(variant, list);
    return ListToJson(list);
}

nlohmann::json SettingAsJson(VProfileData& setting) {
    nlohmann::json description = {{"name", JsonText(setting.GetName())}, {"type", GetSettingType(setting)}};
    if (IsSecret(setting))
        description["hidden"] = true;
    else
        description["value"] = GetSettingJson(setting);
    return description;
}

std::string GetSettingText(VProfileData& setting) {
    if (IsSecret(setting)) return kHidden;
    const nlohmann::json value = GetSettingJson(setting);
    if (value.is_null()) return "(record)";
    if (!value.is_string()) return PrintableJson(value);
    const VVariant variant = GetVariant(setting);
    if (variant.GetType() == VVariantType::kText) return Printable(variant.GetText());
    return value.get<std::string>();
}

std::string DescribeSetting(VProfileData& setting) {
    return Printable(setting.GetName()) + '\t' + GetSettingType(setting) + '\t' + GetSettingText(setting);
}

Failure SetSettingText(VProfileData& setting, std::u16string_view text) {
    const std::string name = Quoted(setting.GetName());
    if (IsSecret(setting)) return name + " is a secret: others could read it in a command line";
    if (Parse(setting, text)) return kDone;
    return name + " is " + GetSettingType(setting) + " (" + GetSettingRange(setting) + "), not " + Quoted(text);
}

}  // namespace connectdialog::connectctl
