#include "tools/connectctl/output.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "foundation/vstringarray.h"
#include "platform/codepage.h"

namespace connectdialog::connectctl {

namespace {

constexpr std::size_t kLongestQuote = 120;

}  // namespace

std::string Quoted(std::u16string_view text) {
    return '"' + PrintableStart(text, kLongestQuote, "…") + '"';
}

nlohmann::json JsonText(std::u16string_view text) {
    return platform::ToNarrow(text);
}

nlohmann::json ListToJson(const VStringArray& list) {
    nlohmann::json texts = nlohmann::json::array();
    for (const VUnicodeString& text : list) texts.push_back(JsonText(text));
    return texts;
}

bool ListFromJson(const std::string& text, VStringArray& list) {
    const nlohmann::json texts = nlohmann::json::parse(text, nullptr, false);
    if (!texts.is_array()) return false;
    for (const nlohmann::json& element : texts) {
        if (!element.is_string()) return false;
        list.Add(VUnicodeString(platform::ToWide(element.get_ref<const std::string&>())));
    }
    return true;
}

std::string PrintableJson(const nlohmann::json& value) {
    return Printable(platform::ToWide(value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)), u"\\u",
                     u"");
}

void Print(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

void PrintLine(std::string_view line) {
    Print(line);
    std::fputc('\n', stdout);
}

bool FlushOutput() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void PrintNotice(std::string_view text) {
    const std::string line = "connectctl: " + Printable(platform::ToWide(text)) + '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace connectdialog::connectctl
