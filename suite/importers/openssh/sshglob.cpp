// The wildcards of Include.
#include <algorithm>
#include <optional>

#include "suite/importers/openssh/sshfiles.h"

namespace connectdialog {
namespace {

constexpr std::string_view kWildcards = "*?[";

/// One element of a pattern: a star, or a set of the characters it takes.
class GlobElement {
  public:
    /// Takes an element off the front of `pattern`, which is not empty. A `[` that is not closed is itself.
    static GlobElement Take(std::string_view& pattern) {
        GlobElement element;
        const std::size_t close = pattern[0] == '[' ? pattern.find(']', pattern.starts_with("[!") ? 3 : 2) : 0;
        if (pattern[0] == '[' && close != std::string_view::npos) {
            element.set = pattern.substr(1, close - 1);
            element.kind = kSet;
            pattern.remove_prefix(close + 1);
            return element;
        }
        if (pattern[0] == '*') element.kind = kStar;
        if (pattern[0] == '?') element.kind = kAnyOne;
        if (pattern[0] == '\\' && pattern.size() > 1) pattern.remove_prefix(1);
        element.set = pattern.substr(0, 1);
        pattern.remove_prefix(1);
        return element;
    }

    bool IsStar() const { return kind == kStar; }
    /// Requires: not a star.
    bool Takes(char c) const {
        if (kind == kAnyOne) return true;
        return kind == kSet ? IsInSet(c) : set.front() == c;
    }

  private:
    enum Kind { kLiteral, kAnyOne, kStar, kSet };
    Kind kind = kLiteral;
    std::string_view set;

    bool IsInSet(char c) const {
        const bool isNegated = set.starts_with('!');
        bool isListed = false;
        for (std::size_t i = isNegated ? 1 : 0; i < set.size(); ++i) {
            const bool isRange = i + 2 < set.size() && set[i + 1] == '-';
            const char last = isRange ? set[i + 2] : set[i];
            const auto byte = static_cast<unsigned char>(c);
            isListed =
                isListed || (byte >= static_cast<unsigned char>(set[i]) && byte <= static_cast<unsigned char>(last));
            if (isRange) i += 2;
        }
        return isListed != isNegated;
    }
};

std::vector<GlobElement> ParseGlob(std::string_view pattern) {
    std::vector<GlobElement> elements;
    while (!pattern.empty()) elements.push_back(GlobElement::Take(pattern));
    return elements;
}

bool Matches(std::string_view name, const std::vector<GlobElement>& glob) {
    std::size_t at = 0;
    std::size_t in = 0;
    std::optional<std::size_t> star;
    std::size_t resume = 0;
    while (at < name.size()) {
        if (in < glob.size() && glob[in].IsStar()) {
            star = ++in;
            resume = at;
        } else if (in < glob.size() && glob[in].Takes(name[at])) {
            ++in;
            ++at;
        } else if (star) {
            in = *star;
            at = ++resume;
        } else {
            return false;
        }
    }
    while (in < glob.size() && glob[in].IsStar()) ++in;
    return in == glob.size();
}

std::string WithoutEscapes(std::string_view pattern) {
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\' && i + 1 < pattern.size()) ++i;
        text += pattern[i];
    }
    return text;
}

/// The entries of `folder` (empty, or ending in `/`) whose name matches `pattern`, with `tail` behind the name.
void AppendMatches(ISshFiles& files, const std::string& folder, std::string_view pattern, std::string_view tail,
                   std::size_t& entriesLeft, std::vector<std::string>& paths) {
    const std::vector<std::string> names = files.List(folder.empty() ? "." : folder, entriesLeft);
    entriesLeft -= std::min(names.size(), entriesLeft);
    const std::vector<GlobElement> glob = ParseGlob(pattern);
    for (const std::string& name : names) {
        if (name.starts_with('.') && !pattern.starts_with('.')) continue;
        if (Matches(name, glob)) paths.push_back(folder + name + std::string(tail));
    }
}

}  // namespace

std::vector<std::string> ExpandSshGlob(ISshFiles& files, std::string_view pattern, std::size_t& entriesLeft) {
    if (pattern.find_first_of(kWildcards) == std::string_view::npos) return {WithoutEscapes(pattern)};
    std::vector<std::string> found = {""};
    while (!pattern.empty() && !found.empty()) {
        const std::size_t slash = std::min(pattern.find('/'), pattern.size());
        const std::string_view name = pattern.substr(0, slash);
        const std::string_view tail = pattern.substr(slash, slash < pattern.size() ? 1 : 0);
        pattern.remove_prefix(slash + tail.size());
        std::vector<std::string> next;
        for (const std::string& folder : found) {
            if (name.find_first_of(kWildcards) != std::string_view::npos) {
                AppendMatches(files, folder, name, tail, entriesLeft, next);
            } else {
                next.push_back(folder + WithoutEscapes(name) + std::string(tail));
            }
        }
        found = std::move(next);
    }
    std::erase_if(found, [&](const std::string& path) { return !files.Exists(path); });
    std::ranges::sort(found);
    return found;
}

}  // namespace connectdialog
