#include "profile/vprofilestatetext.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "foundation/casefold.h"

namespace connectdialog {

bool VProfileStateText::Load(VProfileKey* key, const VUnicodeString& defaultText) {
    VProfileText::Load(key, defaultText);
    ParseFields(Get());
    return true;
}
bool VProfileStateText::Load(VProfileKey* key, const VUnicodeString& name, const VUnicodeString& defaultText) {
    SetName(name);
    return Load(key, defaultText);
}
bool VProfileStateText::Load(const char* text, IProfileTextDecoder& decoder, VReportMessageParams& report) {
    if (!VProfileText::Load(text, decoder, report)) return false;
    ParseFields(Get());
    return true;
}

void VProfileStateText::Save(VProfileKey& key, bool force) {
    if (const std::u16string text = FormatFields(); Get() != text) Set(std::u16string_view(text));
    VProfileText::Save(key, force);
}

void VProfileStateText::Revert() {
    VProfileText::Revert();
    ParseFields(Get());
}
void VProfileStateText::Assign(const VProfileData& other) {
    VProfileText::Assign(other);
    ParseFields(Get());
}
bool VProfileStateText::SetVariant(const VVariant& in, VReportMessageParams& report) {
    if (!VProfileText::SetVariant(in, report)) return false;
    ParseFields(Get());
    return true;
}
bool VProfileStateText::GetValue(IProfileValueExchange& exchange, const char16_t* name) {
    if (!VProfileText::GetValue(exchange, name)) return false;
    ParseFields(Get());
    return true;
}

void AppendNumber(std::u16string& text, std::int64_t number) {
    char digits[24];
    const char* end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    if (!text.empty()) text += u',';
    text.append(static_cast<const char*>(digits), end);
}

namespace {

template <class Number>
bool TakeNumberAs(std::u16string_view& text, Number& number) {
    std::u16string_view rest = text;
    while (!rest.empty() && IsSpace(rest.front())) rest.remove_prefix(1);
    const bool isNegative = rest.starts_with(u'-');
    if (isNegative || rest.starts_with(u'+')) rest.remove_prefix(1);
    if (rest.empty() || !IsDigit(rest.front())) return false;
    constexpr std::int64_t kBeyond = std::int64_t{1} << 40;  // still without overflow after one digit more
    std::int64_t value = 0;
    for (; !rest.empty() && IsDigit(rest.front()); rest.remove_prefix(1))
        value = std::min(value * 10 + (rest.front() - u'0'), kBeyond);
    if (isNegative) value = -value;
    using Limits = std::numeric_limits<Number>;
    number = static_cast<Number>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
    text = rest;
    return true;
}

}  // namespace

bool TakeNumber(std::u16string_view& text, std::int32_t& number) {
    return TakeNumberAs(text, number);
}
bool TakeNumber(std::u16string_view& text, std::uint32_t& number) {
    return TakeNumberAs(text, number);
}
bool TakeComma(std::u16string_view& text) {
    if (!text.starts_with(u',')) return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace connectdialog
