#include "profile/vvariant.h"

#include <array>
#include <limits>
#include <optional>
#include <string_view>

#include "foundation/casefold.h"

namespace connectdialog {

namespace {

struct NumberRange {
    VVariantType type;
    std::int64_t lowest;
    std::int64_t highest;
};

constexpr std::array kRanges = {
    NumberRange{VVariantType::kInt16, std::numeric_limits<std::int16_t>::min(),
                std::numeric_limits<std::int16_t>::max()},
    NumberRange{VVariantType::kUInt16, 0, std::numeric_limits<std::uint16_t>::max()},
    NumberRange{VVariantType::kUInt32, 0, std::numeric_limits<std::uint32_t>::max()},
    NumberRange{VVariantType::kInt, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()},
    NumberRange{VVariantType::kUInt, 0, std::numeric_limits<std::uint32_t>::max()},
};

const NumberRange* FindRange(VVariantType type) {
    for (const NumberRange& range : kRanges)
        if (range.type == type) return &range;
    return nullptr;
}

std::int64_t Truncate(VVariantType type, std::int64_t number) {
    switch (type) {
        case VVariantType::kInt16:
            return static_cast<std::int16_t>(number);
        case VVariantType::kUInt16:
            return static_cast<std::uint16_t>(number);
        case VVariantType::kUInt32:
        case VVariantType::kUInt:
            return static_cast<std::uint32_t>(number);
        case VVariantType::kInt:
            return static_cast<std::int32_t>(number);
        case VVariantType::kBool:
            return number != 0 ? -1 : 0;
        default:
            return 0;
    }
}

bool IsScalarTarget(VVariantType type) {
    return type == VVariantType::kText || type == VVariantType::kBool || FindRange(type) != nullptr;
}

/// Decimal digits with an optional sign and white space around them; nothing when there is anything else or when the
/// number is far outside every type.
std::optional<std::int64_t> ParseNumber(std::u16string_view text) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    const bool negative = !text.empty() && text.front() == u'-';
    if (!text.empty() && (text.front() == u'-' || text.front() == u'+')) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    std::int64_t number = 0;
    for (const char16_t c : text) {
        if (c < u'0' || c > u'9' || number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
        number = number * 10 + (c - u'0');
    }
    return negative ? -number : number;
}

std::optional<std::int64_t> NumberOf(const VVariant& source, VVariantType target) {
    if (source.GetType() != VVariantType::kText) return source.GetNumber();
    const VUnicodeString text = source.GetText();
    if (target == VVariantType::kBool) {
        if (text.EqualsNoCase(u"true")) return -1;
        if (text.EqualsNoCase(u"false")) return 0;
    }
    return ParseNumber(text.View());
}

}  // namespace

VVariant::VVariant(VVariantType type, std::int64_t number) : type(type), value(Truncate(type, number)) {}

std::int64_t VVariant::GetNumber() const {
    const auto* number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? *number : 0;
}

VUnicodeString VVariant::GetText() const {
    const auto* text = std::get_if<VUnicodeString>(&value);
    return text != nullptr ? *text : VUnicodeString();
}

const VVariant::Array* VVariant::GetArray() const {
    if (const auto* array = std::get_if<Array>(&value)) return array;
    if (const auto* reference = std::get_if<const Array*>(&value)) return *reference;
    return nullptr;
}

bool VVariant::Convert(const VVariant& source, VVariantType type, VVariant& result) {
    if (source.GetArray() != nullptr || source.type == VVariantType::kArrayReference || !IsScalarTarget(type))
        return false;
    if (type == VVariantType::kText) {
        VUnicodeString text = source.GetText();
        if (FindRange(source.type) != nullptr || source.type == VVariantType::kBool)
            text.Format(u"%1!d!", source.GetNumber());
        result = VVariant(std::move(text));
        return true;
    }
    const std::optional<std::int64_t> number = NumberOf(source, type);
    if (!number) return false;
    const NumberRange* range = FindRange(type);
    const bool keepsBits = source.type == VVariantType::kBool;  // true is all ones in any width
    if (!keepsBits && range != nullptr && (*number < range->lowest || *number > range->highest)) return false;
    result = VVariant(type, *number);
    return true;
}

VVariant VariantFromStrings(const VStringArray& strings) {
    VVariant::Array array(strings.GetCount());
    for (const VUnicodeString& text : strings) array.Add(VVariant(text));
    return VVariant(std::move(array));
}

bool StringsFromVariant(const VVariant& source, VStringArray& strings) {
    const VVariant::Array* array = source.GetArray();
    if (array == nullptr) return false;
    VStringArray converted;
    for (const VVariant& element : *array) {
        VVariant text;
        if (!VVariant::Convert(element, VVariantType::kText, text)) return false;
        converted.Add(text.GetText());
    }
    strings = std::move(converted);
    return true;
}

}  // namespace connectdialog
