#include "tools/connectctl/hivevalue.h"

#include <nlohmann/json.hpp>

#include "foundation/hextext.h"
#include "foundation/numbertext.h"
#include "foundation/vstringarray.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

bool ParseDword(std::string_view text, std::uint32_t& number) {
    const bool isHex = text.starts_with("0x");
    if (isHex) text.remove_prefix(2);
    return ReadNumber(text, number, isHex ? 16 : 10);
}

bool ParseBytes(std::string_view text, std::vector<std::uint8_t>& bytes) {
    for (; text.size() >= 2; text.remove_prefix(2)) {
        std::uint8_t byte = 0;
        if (!ReadNumber(text.substr(0, 2), byte, 16)) return false;
        bytes.push_back(byte);
    }
    return text.empty();
}

std::string HexText(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += HexDigit<char>(byte >> 4U, HexCase::kLower);
        text += HexDigit<char>(byte, HexCase::kLower);
    }
    return text;
}

}  // namespace

void DescribeHiveValue(const VHiveValue& value, std::string& type, std::string& text) {
    std::uint32_t number = 0;
    if (value.type == kHiveDword && value.GetDword(number)) {
        type = "dword";
        text = std::to_string(number);
    } else if (value.type == kHiveString || value.type == kHiveExpandString) {
        type = value.type == kHiveString ? "string" : "expand";
        text = Printable(value.GetText());
    } else if (value.type == kHiveMultiString) {
        VStringArray list;
        value.AddTextsTo(list);
        type = "list";
        text = PrintableJson(ListToJson(list));
    } else {
        type = value.type == kHiveBinary ? "binary" : "hex(" + std::to_string(value.type) + ')';
        text = HexText(value.data);
    }
}

Failure ParseHiveValue(const std::string& type, const std::string& text, VHiveValue& value) {
    std::uint32_t number = 0;
    VStringArray list;
    VUnicodeString string;
    if (type == "dword") {
        if (!ParseDword(text, number)) return "a dword is a number from 0 to 4294967295, or 0x and hex digits";
        value = VHiveValue::OfDword(number);
    } else if (type == "binary") {
        value = {kHiveBinary, {}};
        if (!ParseBytes(text, value.data)) return "bytes are pairs of hex digits";
    } else if (type == "list") {
        if (!ListFromJson(text, list)) return "a list is a JSON array of texts";
        value = VHiveValue::OfList(list);
    } else {
        if (Failure failure = DecodeArgument(text, string)) return failure;
        value = VHiveValue::OfText(type == "expand" ? kHiveExpandString : kHiveString, string.View());
    }
    return kDone;
}

}  // namespace connectdialog::connectctl
