#include "tools/connectctl/output.h"

#include <cstdio>
#include <nlohmann/json.hpp>

#include "foundation/textchecks.h"
#include "foundation/vstringarray.h"
#include "platform/codepage.h"
#include "platform/utf16.h"

namespace connectdialog::connectctl {

namespace {

constexpr std::size_t kLongestQuote = 120;
constexpr std::u16string_view kEscapeStart = u"<U+";
constexpr std::size_t kEscapeLength = 8;  // <U+XXXX>
constexpr char16_t kHexDigits[] = u"0123456789ABCDEF";

std::u16string HexOf(char16_t character) {
    std::u16string hex;
    for (int shift = 12; shift >= 0; shift -= 4) hex += kHexDigits[(character >> shift) & 0xF];
    return hex;
}

/// Writes what `mustEscape(text, i)` names as `before`, four hexadecimal digits, `after`.
template <class Predicate>
std::string Escape(std::u16string_view text, Predicate mustEscape, std::u16string_view before,
                   std::u16string_view after) {
    std::u16string escaped;
    std::size_t clean = 0;  // where the run begins that needs no escaping
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!mustEscape(text, i)) continue;
        escaped.append(text.substr(clean, i - clean)).append(before).append(HexOf(text[i])).append(after);
        clean = i + 1;
    }
    if (clean == 0) return platform::ToNarrow(text);
    return platform::ToNarrow(escaped.append(text.substr(clean)));
}

bool ParseHex(std::u16string_view digits, char16_t& value) {
    unsigned number = 0;
    for (const char16_t digit : digits) {
        const std::size_t place = std::u16string_view(kHexDigits).find(digit);
        if (place == std::u16string_view::npos) return false;
        number = number * 16 + static_cast<unsigned>(place);
    }
    value = static_cast<char16_t>(number);
    return true;
}

}  // namespace

std::string Printable(std::u16string_view text) {
    const auto mustEscape = [](std::u16string_view all, std::size_t i) {
        return IsControl(all[i]) || IsHalfCharacter(all, i);
    };
    return Escape(text, mustEscape, kEscapeStart, u">");
}

std::u16string FromPrintable(std::u16string_view text) {
    std::u16string result;
    while (!text.empty()) {
        char16_t character = 0;
        const bool isEscape = text.starts_with(kEscapeStart) && text.size() >= kEscapeLength &&
                              text[kEscapeLength - 1] == u'>' &&
                              ParseHex(text.substr(kEscapeStart.size(), 4), character);
        result += isEscape ? character : text.front();
        text.remove_prefix(isEscape ? kEscapeLength : 1);
    }
    return result;
}

std::string Quoted(std::u16string_view text) {
    if (text.size() <= kLongestQuote) return '"' + Printable(text) + '"';
    const std::size_t length = platform::IsHighSurrogate(text[kLongestQuote - 1]) ? kLongestQuote - 1 : kLongestQuote;
    return '"' + Printable(text.substr(0, length)) + "…\"";
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
    const auto mustEscape = [](std::u16string_view all, std::size_t i) { return IsControl(all[i]); };
    return Escape(platform::ToWide(value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)), mustEscape,
                  u"\\u", u"");
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
