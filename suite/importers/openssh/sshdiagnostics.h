// What a reader of OpenSSH configurations has to say about the files it read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

enum class SshSeverity {
    kNote,     ///< Read as ssh reads it, but the user should know (a command that is not run, a newer keyword).
    kSkipped,  ///< Something ssh would use is not in the result (a limit of ours, a value that cannot be used).
    kRefused,  ///< ssh refuses the whole file because of this line; the rest was still read.
};

/// A finding at one line of one file.
struct SshDiagnostic {
    SshSeverity severity;
    std::string file;
    std::size_t line;  ///< From 1; 0 when the file as a whole is meant.
    std::string text;  ///< One sentence without file, line and closing dot; printable, no control characters.
};

/// The findings of one import in the order of their discovery. A broken file may have one at each of a million lines:
/// the first `kMaxKept` are kept and the others counted.
class SshDiagnostics {
  public:
    static constexpr std::size_t kMaxKept = 1000;

    void Add(SshSeverity severity, std::string_view file, std::size_t line, std::string_view text);
    const std::vector<SshDiagnostic>& All() const { return kept; }
    /// How many were counted and not kept.
    std::size_t Dropped() const { return dropped; }
    /// True when one of them, kept or not, is `kRefused`.
    bool IsRefused() const { return refused; }

  private:
    std::vector<SshDiagnostic> kept;
    std::size_t dropped = 0;
    bool refused = false;
};

/// `raw` in single quotes, fit for a message: see foundation/printable.h. Bytes that are not part of well-formed UTF-8
/// become U+FFFD; cut after 80 code units with "...".
std::string QuoteForMessage(std::string_view raw);

}  // namespace connectdialog
