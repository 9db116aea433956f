#include "config/settingtext.h"

#include <array>
#include <concepts>
#include <limits>
#include <string>
#include <type_traits>
#include <typeinfo>

#include "config/settingrecords.h"
#include "foundation/casefold.h"
#include "foundation/numbertext.h"
#include "foundation/vreportmessageparams.h"
#include "platform/codepage.h"
#include "profile/vprofile.h"
#include "profile/vprofileblowfishstring.h"
#include "profile/vprofilemultilinestring.h"
#include "profile/vprofilestatetext.h"
#include "profile/vvariant.h"

namespace connectdialog {

namespace {

struct BoolWord {
    std::u16string_view text;
    bool value;
};
/// The first two are those that are shown.
constexpr std::array<BoolWord, 8> kBoolWords = {{{u"false", false},
                                                 {u"true", true},
                                                 {u"yes", true},
                                                 {u"no", false},
                                                 {u"on", true},
                                                 {u"off", false},
                                                 {u"1", true},
                                                 {u"0", false}}};
/// By the number of a VTriState.
constexpr std::array<std::u16string_view, 3> kTriStateWords = {u"off", u"on", u"global"};

template <class T>
constexpr SettingType kTypeOf = std::same_as<T, bool>             ? SettingType::kBool
                                : std::same_as<T, VTriState>      ? SettingType::kTriState
                                : std::same_as<T, short>          ? SettingType::kInt16
                                : std::same_as<T, unsigned short> ? SettingType::kUint16
                                : std::same_as<T, int>            ? SettingType::kInt32
                                                                  : SettingType::kUint32;

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

VVariant GetVariantOf(const VProfileData& setting) {
    VVariant value;
    VReportMessageParams report;
    setting.GetVariant(value, report);
    return value;
}

bool Parse(VProfile<bool>& setting, std::u16string_view text) {
    for (const BoolWord& word : kBoolWords) {
        if (!EqualsNoCase(word.text, text)) continue;
        setting.Set(word.value);
        return true;
    }
    return false;
}

bool Parse(VProfile<VTriState>& setting, std::u16string_view text) {
    for (std::size_t i = 0; i < kTriStateWords.size(); ++i) {
        if (!EqualsNoCase(kTriStateWords[i], text)) continue;
        setting.Set(static_cast<VTriState>(i));
        return true;
    }
    return false;
}

template <class T>
bool Parse(VProfile<T>& setting, std::u16string_view text) {
    T number = 0;
    if (!ReadNumber(platform::ToNarrow(text), number)) return false;
    setting.Set(number);
    return true;
}

template <class T>
VUnicodeString Show(const T& value) {
    if constexpr (std::same_as<T, bool>)
        return kBoolWords[value ? 1 : 0].text;
    else if constexpr (std::same_as<T, VTriState>)
        return kTriStateWords[static_cast<std::size_t>(value)];
    else
        return VUnicodeString(platform::ToWide(std::to_string(value)));
}

/// What its variant would tell and take is the cipher text.
using EncipheredText = VProfile2<VBlowfishString, VProfileSz>;

bool SetSecret(VProfileData& setting, std::u16string_view text) {
    VUnicodeString value;
    value.MarkSensitive();
    value += text;
    if (auto* plain = dynamic_cast<VProfileText*>(&setting)) {
        plain->Set(value);
        return true;
    }
    auto* enciphered = dynamic_cast<EncipheredText*>(&setting);
    if (enciphered != nullptr) enciphered->Edit().Set(value);
    return enciphered != nullptr;
}

}  // namespace

SettingType GetTypeOf(VProfileData& setting) {
    SettingType type = SettingType::kRecord;
    if (VisitProfile(setting, [&]<class T>(VProfile<T>&) { type = kTypeOf<T>; })) return type;
    if (IsSecretSetting(setting)) return SettingType::kText;
    switch (GetVariantOf(setting).GetType()) {
        case VVariantType::kText:
            return SettingType::kText;
        case VVariantType::kArray:
            return SettingType::kList;
        default:
            return SettingType::kRecord;
    }
}

bool IsSecretSetting(VProfileData& setting) {
    return dynamic_cast<VProfileSz*>(&setting) != nullptr && typeid(setting) != typeid(VProfileText) &&
           dynamic_cast<VProfileStateText*>(&setting) == nullptr;
}

bool GetNumberLimits(VProfileData& setting, std::int64_t& least, std::int64_t& most) {
    bool isNumber = false;
    VisitProfile(setting, [&]<class T>(VProfile<T>&) {
        if constexpr (std::integral<T> && !std::same_as<T, bool>) {
            least = std::numeric_limits<T>::min();
            most = std::numeric_limits<T>::max();
            isNumber = true;
        }
    });
    return isNumber;
}

bool ReadSettingText(VProfileData& setting, VUnicodeString& text) {
    text.Empty();
    if (VisitProfile(setting, [&](const auto& profile) { text = Show(profile.Get()); })) return true;
    if (const auto* plain = dynamic_cast<const VProfileText*>(&setting)) {
        text = plain->Get();
        return true;
    }
    if (const auto* enciphered = dynamic_cast<const EncipheredText*>(&setting)) {
        text = enciphered->Get().GetText();
        return true;
    }
    if (ReadRecordText(setting, text)) return true;
    VStringArray list;
    if (!StringsFromVariant(GetVariantOf(setting), list)) return false;
    VProfileMultiLineString lines;
    lines.Set(list);
    lines.GetText(text, false);
    return true;
}

bool WriteSettingText(VProfileData& setting, std::u16string_view text) {
    bool isTaken = false;
    if (VisitProfile(setting, [&](auto& profile) { isTaken = Parse(profile, text); })) return isTaken;
    VReportMessageParams report;
    if (dynamic_cast<VProfileTextList*>(&setting) != nullptr) {
        VProfileMultiLineString lines;
        lines.SetText(VUnicodeString(text));
        return setting.SetVariant(VariantFromStrings(lines.Get()), report);
    }
    if (IsSecretSetting(setting)) return SetSecret(setting, text);
    if (WriteRecordText(setting, text)) return true;
    if (!setting.SetVariant(VVariant(VUnicodeString(text)), report)) return false;
    const auto* state = dynamic_cast<VProfileStateText*>(&setting);
    return state == nullptr || state->FormatFields() == text;
}

}  // namespace connectdialog
