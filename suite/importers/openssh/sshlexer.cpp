#include "suite/importers/openssh/sshlexer.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace connectdialog {
namespace {

/// A set of characters that is asked in one look: every character of a configuration passes here.
class CharacterSet {
  public:
    explicit constexpr CharacterSet(std::string_view members) {
        for (const char c : members) isMember[static_cast<unsigned char>(c)] = true;
    }
    constexpr bool Has(char c) const { return isMember[static_cast<unsigned char>(c)]; }
    /// How many characters there are before the first member, and before the first that is none.
    std::size_t LengthBefore(std::string_view text) const { return Length(text, false); }
    std::size_t LengthOf(std::string_view text) const { return Length(text, true); }

  private:
    std::size_t Length(std::string_view text, bool ofMembers) const {
        std::size_t length = 0;
        while (length < text.size() && Has(text[length]) == ofMembers) ++length;
        return length;
    }

    std::array<bool, 256> isMember{};
};

constexpr CharacterSet kSpace(" \t\r\n");
constexpr CharacterSet kBlank(" \t");
constexpr CharacterSet kWordEnd(" \t\r\n\"=");
constexpr CharacterSet kArgumentMarks(" \t\\\"'");

void SkipSpace(std::string_view& text) {
    text.remove_prefix(kSpace.LengthOf(text));
}

/// Space at the end of a line goes, a form feed too; the first character always stays, as in ssh.
std::string_view WithoutTrailingSpace(std::string_view line) {
    const std::size_t last = line.find_last_not_of(" \t\r\n\f");
    return line.substr(0, last == std::string_view::npos ? 1 : last + 1);
}

bool IsEscape(std::string_view text, char quote) {
    if (text.size() < 2 || text[0] != '\\') return false;
    return text[1] == '\'' || text[1] == '"' || text[1] == '\\' || (quote == 0 && text[1] == ' ');
}

/// Takes one argument off the front of `text`. False when a quote is not closed.
bool TakeArgument(std::string_view& text, std::string& argument) {
    char quote = 0;
    while (true) {
        const std::size_t plain = kArgumentMarks.LengthBefore(text);
        argument += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const char c = text.front();
        if (IsEscape(text, quote)) {
            argument += text[1];
            text.remove_prefix(1);
        } else if (quote == 0 && kBlank.Has(c)) {
            break;
        } else if (quote == 0 && (c == '"' || c == '\'')) {
            quote = c;
        } else if (quote != 0 && c == quote) {
            quote = 0;
        } else {
            argument += c;
        }
        text.remove_prefix(1);
    }
    return quote == 0;
}

bool SplitArguments(std::string_view text, std::vector<std::string>& arguments) {
    while (true) {
        text.remove_prefix(kBlank.LengthOf(text));
        if (text.empty() || text.front() == '#') return true;
        if (!TakeArgument(text, arguments.emplace_back())) return false;
    }
}

char LowerOf(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

}  // namespace

std::optional<std::string> SshWords::Next() {
    if (isAtEnd) return std::nullopt;
    const std::size_t end = kWordEnd.LengthBefore(rest);
    std::string word(rest.substr(0, end));
    if (end == rest.size()) {
        isAtEnd = true;
        rest = {};
        return word;
    }
    const char separator = rest[end];
    rest.remove_prefix(end + 1);
    if (separator == '"') {
        const std::size_t close = rest.find('"');
        isAtEnd = close == std::string_view::npos;
        if (isAtEnd) {
            rest = {};
            return std::nullopt;
        }
        word += rest.substr(0, close);
        rest.remove_prefix(close + 1);
    }
    SkipSpace(rest);
    if (kSpace.Has(separator) && rest.starts_with('=')) {
        rest.remove_prefix(1);
        SkipSpace(rest);
    }
    return word;
}

void ParseSshLine(std::string_view line, SshLine& result) {
    result.kind = SshLineKind::kEmpty;
    result.keyword.clear();
    result.arguments.clear();
    SshWords words(WithoutTrailingSpace(line));
    std::optional<std::string> keyword = words.Next();
    if (keyword && keyword->empty()) keyword = words.Next();
    if (!keyword || keyword->empty() || keyword->front() == '#') return;
    result.keyword = ToAsciiLower(*keyword);
    result.rest = words.Rest();
    SkipSpace(result.rest);
    if (result.rest.empty()) {
        result.kind = SshLineKind::kNoArgument;
    } else {
        const bool isWhole = SplitArguments(result.rest, result.arguments);
        result.kind = isWhole ? SshLineKind::kDirective : SshLineKind::kBadQuotes;
    }
}

std::string ToAsciiLower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), LowerOf);
    return lower;
}

bool EqualsIgnoringAsciiCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, LowerOf, LowerOf);
}

}  // namespace connectdialog
