// When the settings of a block apply: the condition of a `Host` or `Match` line.
//
//     Match     = "all" | criteria, of which "all" may be the second
//     criterion = ["!"] ("canonical" | "final")
//               | ["!"] ("host" | "originalhost" | "user" | "localuser" | "tagged") list of patterns
//               | ["!"] ("exec" | "localnetwork" | "sessiontype" | "command" | "version") argument
//
// Those of the last row ask the machine that connects and are never true here; `exec` would run a command.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "suite/importers/openssh/sshpattern.h"

namespace connectdialog {

/// What conditions look at: the host asked for, and what has been set for it so far.
struct SshMatchSubject {
    std::string host;          ///< What `Host` lines match: the alias; in the final pass the real host name.
    std::string realHost;      ///< What `Match host` matches, in lower case: HostName so far, else the alias.
    std::string originalHost;  ///< The alias.
    std::string user;          ///< User so far, else the local user.
    std::string localUser;
    std::string tag;  ///< Tag so far.
    bool isFinalPass = false;
};

/// What parsing a `Match` line brings to light.
struct SshMatchReport {
    std::string error;               ///< What ssh refuses about it; empty when nothing.
    std::vector<std::string> notes;  ///< What is not done as the file says.
    bool hasFinal = false;           ///< It asks for a second pass over the files.
};

/// One criterion of a `Match` line.
struct SshTest {
    enum class Kind : std::uint8_t { kAll, kFinal, kHost, kOriginalHost, kUser, kLocalUser, kTagged, kUnknowable };
    Kind kind;
    bool isNegated;
    SshPatternSet patterns;  ///< Of kHost to kTagged.
};

/// The condition of one block.
class SshCondition {
  public:
    /// Always true: a file's beginning, before its first `Host` or `Match`.
    static SshCondition Always() { return SshCondition(Kind::kAlways); }
    /// Never true: a block whose own line is broken must not be mistaken for the one before it.
    static SshCondition Never() { return SshCondition(Kind::kNever); }
    /// True when the subject's host belongs to `patterns`.
    static SshCondition Host(SshPatternSet patterns);
    /// The condition of a `Match` line with `text` behind its keyword. On failure: Never(), and `report.error`.
    static SshCondition Match(std::string_view text, SshMatchReport& report);

    /// `steps` grows by the work done.
    bool Holds(const SshMatchSubject& subject, std::uint64_t& steps) const;
    bool IsNever() const { return kind == Kind::kNever; }
    /// The only hosts for which it may hold; null when they cannot be listed.
    const std::set<std::string, std::less<>>* OnlyHosts() const;

  private:
    enum class Kind : std::uint8_t { kAlways, kNever, kHost, kMatch };
    explicit SshCondition(Kind kind) : kind(kind) {}

    Kind kind;
    SshPatternSet hosts;
    std::vector<SshTest> tests;
};

}  // namespace connectdialog
