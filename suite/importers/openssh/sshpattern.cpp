#include "suite/importers/openssh/sshpattern.h"

#include <algorithm>

namespace connectdialog {
namespace {

/// Several `*` in a row mean the same as one.
std::string Collapsed(std::string_view pattern) {
    std::string collapsed;
    for (const char c : pattern) {
        if (c != '*' || !collapsed.ends_with('*')) collapsed += c;
    }
    return collapsed;
}

/// A pattern that demands more characters than a name can have matches none and is not worth keeping.
bool CanMatch(std::string_view pattern) {
    const auto stars = static_cast<std::size_t>(std::ranges::count(pattern, '*'));
    return pattern.size() - stars <= kMaxSshNameBytes;
}

}  // namespace

bool MatchesSshPattern(std::string_view name, std::string_view pattern, std::uint64_t& steps) {
    std::size_t at = 0;
    std::size_t in = 0;
    // Where to go back to when what follows the last `*` does not fit: that star takes one character more. Earlier
    // stars never need to, since the last one can take all they would.
    std::size_t star = std::string_view::npos;
    std::size_t resume = 0;
    while (at < name.size()) {
        ++steps;
        if (in < pattern.size() && pattern[in] == '*') {
            star = ++in;
            resume = at;
        } else if (in < pattern.size() && (pattern[in] == '?' || pattern[in] == name[at])) {
            ++in;
            ++at;
        } else if (star != std::string_view::npos) {
            in = star;
            at = ++resume;
        } else {
            return false;
        }
    }
    while (in < pattern.size() && pattern[in] == '*') ++in;
    return in == pattern.size();
}

bool SshPatternSet::Side::Matches(std::string_view name, std::uint64_t& steps) const {
    ++steps;
    return literals.contains(name) || std::ranges::any_of(wildcards, [&](const std::string& pattern) {
               ++steps;
               return MatchesSshPattern(name, pattern, steps);
           });
}

void SshPatternSet::Add(std::string_view pattern) {
    const bool isNegated = pattern.starts_with('!');
    if (isNegated) pattern.remove_prefix(1);
    Side& side = isNegated ? excluded : included;
    if (!CanMatch(pattern)) return;
    if (pattern.find_first_of("*?") == std::string_view::npos) {
        side.literals.emplace(pattern);
    } else {
        side.wildcards.push_back(Collapsed(pattern));
    }
}

bool SshPatternSet::Matches(std::string_view name, std::uint64_t& steps) const {
    return included.Matches(name, steps) && !excluded.Matches(name, steps);
}

void SshPatternSet::AddList(std::string_view list) {
    while (true) {
        const std::size_t comma = list.find(',');
        Add(list.substr(0, comma));
        if (comma == std::string_view::npos) return;
        list.remove_prefix(comma + 1);
    }
}

}  // namespace connectdialog
