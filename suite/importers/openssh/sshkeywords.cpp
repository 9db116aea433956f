#include "suite/importers/openssh/sshkeywords.h"

#include <algorithm>
#include <limits>

#include "foundation/numbertext.h"
#include "suite/importers/openssh/sshdiagnostics.h"
#include "suite/importers/openssh/sshkeywordtable.h"
#include "suite/importers/openssh/sshlexer.h"
#include "suite/importers/openssh/sshpattern.h"

namespace connectdialog {
namespace {

/// Reads a decimal number as strtonum() does. -1 when it is none or lies outside 0 to `limit`.
int ParseNumber(std::string_view text, int limit) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    text.remove_prefix(begin);
    if (text.starts_with('+') && text.size() > 1 && text[1] != '-') text.remove_prefix(1);
    int number = -1;
    return ReadNumber(text, number) && number >= 0 && number <= limit ? number : -1;
}

/// Whether `text` is a time as "90", "1h30m" or "2W": numbers, each with a unit or none.
bool IsTime(std::string_view text) {
    if (text.empty()) return false;
    while (!text.empty()) {
        const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
        if (digits == 0 || ParseNumber(text.substr(0, digits), std::numeric_limits<int>::max()) < 0) return false;
        text.remove_prefix(digits);
        if (text.empty()) return true;
        if (std::string_view("sSmMhHdDwW").find(text.front()) == std::string_view::npos) return false;
        text.remove_prefix(1);
    }
    return true;
}

bool HasWord(std::string_view words, std::string_view word) {
    if (word.empty() || word.find(' ') != std::string_view::npos) return false;
    return words.find(' ' + std::string(word) + ' ') != std::string_view::npos;
}

/// Whether `pattern` matches one of `words`.
bool HasMatch(std::string_view words, std::string_view pattern) {
    SshPatternSet set;
    set.Add(pattern.starts_with('!') ? pattern.substr(1) : pattern);
    std::uint64_t steps = 0;
    while (!words.empty()) {
        words.remove_prefix(1);
        const std::size_t end = std::min(words.find(' '), words.size());
        if (end != 0 && set.Matches(words.substr(0, end), steps)) return true;
        words.remove_prefix(end);
    }
    return false;
}

/// Whether `list` names algorithms out of `names`. A list that removes some is not looked at by ssh, and only key
/// types may be patterns.
bool IsAlgorithmList(std::string_view list, std::string_view names, bool mayBePattern) {
    if (list.starts_with('-')) return true;
    if (list.starts_with('+') || list.starts_with('^')) list.remove_prefix(1);
    while (true) {
        const std::size_t comma = list.find(',');
        const std::string_view name = list.substr(0, comma);
        if (!HasWord(names, name) && !(mayBePattern && HasMatch(names, name))) return false;
        if (comma == std::string_view::npos) return true;
        list.remove_prefix(comma + 1);
    }
}

bool IsGoodArgument(const SshKeywordRow& row, std::string_view argument) {
    switch (row.arguments) {
        case SshArguments::kNumber:
            return ParseNumber(argument, std::numeric_limits<int>::max()) >= 0;
        case SshArguments::kTime:
            return argument == "none" || IsTime(argument);
        case SshArguments::kWord:
            return HasWord(row.words, ToAsciiLower(argument));
        case SshArguments::kCiphers:
            return IsAlgorithmList(argument, kSshCiphers, false);
        case SshArguments::kMacs:
            return IsAlgorithmList(argument, kSshMacs, false);
        case SshArguments::kKeyExchanges:
            return IsAlgorithmList(argument, kSshKeyExchanges, false);
        case SshArguments::kKeyTypes:
            return IsAlgorithmList(argument, kSshKeyTypes, true);
        default:
            return true;
    }
}

}  // namespace

const SshKeywordRow* FindSshKeyword(std::string_view name) {
    const auto row = std::ranges::lower_bound(kSshKeywords, name, {}, &SshKeywordRow::name);
    return row != kSshKeywords.end() && row->name == name ? &*row : nullptr;
}

SshArgumentCheck CheckSshArguments(const SshKeywordRow& row, const SshLine& line) {
    if (row.arguments == SshArguments::kAny) return {{}, true};
    const auto error = [&](const std::string& text) { return "keyword " + std::string(row.name) + text; };
    if (line.arguments.empty() || line.arguments.front().empty()) return {error(" lacks its argument"), false};
    if (!IsGoodArgument(row, line.arguments.front())) {
        return {error(" has the bad argument " + QuoteForMessage(line.arguments.front())), false};
    }
    return {line.arguments.size() == 1 ? "" : error(" has extra arguments"), true};
}

int ParseSshPort(std::string_view text) {
    return std::max(ParseNumber(text, 65535), 0);
}

}  // namespace connectdialog
