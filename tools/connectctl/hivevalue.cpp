#include "tools/connectctl/hivevalue.h"

#include <charconv>
#include <nlohmann/json.hpp>

#include "foundation/vstringarray.h"
#include "profile/vregistrykey.h"
#include "tools/connectctl/entrypath.h"
#include "tools/connectctl/output.h"

namespace connectdialog::connectctl {

namespace {

bool ParseDword(std::string_view text, std::uint32_t& number) {
    const bool isHex = text.starts_with("0x");
    if (isHex) text.remove_prefix(2);
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, isHex ? 16 : 10);
    return error == std::errc() && rest == end;
}

bool ParseBytes(std::string_view text, std::vector<std::uint8_t>& bytes) {
    for (; text.size() >= 2; text.remove_prefix(2)) {
        std::uint8_t byte = 0;
        const auto [rest, error] = std::from_chars(text.data(), text.data() + 2, byte, 16);
        if (error != std::errc() || rest != text.data() + 2) return false;
        bytes.push_back(byte);
    }
    return text.empty();
}

}  // namespace

std::string HexText(const std::vector<std::uint8_t>& bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += "0123456789abcdef"[byte >> 4];
        text += "0123456789abcdef"[byte & 0xF];
    }
    return text;
}

bool ReadHiveValue(VRegistryKey& key, const char16_t* name, std::string& type, std::string& text) {
    std::uint32_t number = 0;
    VUnicodeString string;
    VStringArray list;
    if (key.ReadDword(name, number)) {
        type = "dword";
        text = std::to_string(number);
    } else if (key.ReadString(name, string)) {
        type = "string";
        text = Printable(string);
    } else if (key.ReadMultiString(name, list)) {
        type = "list";
        text = PrintableJson(ListToJson(list));
    } else {
        if (!key.ReadBinary(name, nullptr, number)) return false;
        std::vector<std::uint8_t> bytes(number);
        if (!key.ReadBinary(name, bytes.data(), number)) return false;
        type = "binary";
        text = HexText(bytes);
    }
    return true;
}

Failure ParseHiveValue(const std::string& type, const std::string& text, HiveWriter& write) {
    std::uint32_t number = 0;
    std::vector<std::uint8_t> bytes;
    VStringArray list;
    VUnicodeString string;
    if (type == "dword") {
        if (!ParseDword(text, number)) return "a dword is a number from 0 to 4294967295, or 0x and hex digits";
        write = [number](VRegistryKey& key, const char16_t* name) { return key.WriteDword(name, number); };
    } else if (type == "binary") {
        if (!ParseBytes(text, bytes)) return "bytes are pairs of hex digits";
        write = [bytes](VRegistryKey& key, const char16_t* name) {
            return key.WriteBinary(name, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        };
    } else if (type == "list") {
        if (!ListFromJson(text, list)) return "a list is a JSON array of texts";
        write = [list](VRegistryKey& key, const char16_t* name) { return key.WriteMultiString(name, list); };
    } else {
        if (Failure failure = DecodeArgument(text, string)) return failure;
        write = [string](VRegistryKey& key, const char16_t* name) { return key.WriteString(name, string.GetData()); };
    }
    return kDone;
}

}  // namespace connectdialog::connectctl
