// Patterns of host and user names as OpenSSH's configuration has them: `*`, `?` and a leading `!`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

/// The longest name that is matched, in bytes: what the resolver takes for a host name. Whoever matches keeps to it,
/// which bounds the cost of one match whatever the pattern.
inline constexpr std::size_t kMaxSshNameBytes = 1025;

/// Whether `name` matches `pattern`: `*` stands for any characters, `?` for one, the rest for itself, by case. Takes
/// at most |name| x |pattern| steps, which are added to `steps`.
bool MatchesSshPattern(std::string_view name, std::string_view pattern, std::uint64_t& steps);

/// The patterns of one `Host` line or one `Match` criterion. A name belongs to them when one of them matches and none
/// of those with `!` does. Names without wildcards are found by search, so that a line of ten thousand costs little.
class SshPatternSet {
  public:
    /// Adds one pattern; a `!` in front makes it exclude.
    void Add(std::string_view pattern);
    /// Adds the patterns of a comma-separated list, as in `Match host a,!b`.
    void AddList(std::string_view list);
    /// Requires: `name` of at most kMaxSshNameBytes. `steps` grows by the work done.
    bool Matches(std::string_view name, std::uint64_t& steps) const;

    /// The names that are included by name alone.
    const std::set<std::string, std::less<>>& Literals() const { return included.literals; }
    /// Whether a name that is not among the literals can belong to the set.
    bool HasWildcards() const { return !included.wildcards.empty(); }

  private:
    struct Side {
        std::set<std::string, std::less<>> literals;
        std::vector<std::string> wildcards;
        bool Matches(std::string_view name, std::uint64_t& steps) const;
    };
    Side included;
    Side excluded;
};

}  // namespace connectdialog
