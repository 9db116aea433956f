// Where the reader of OpenSSH configurations gets its files from.
//
// Paths are native, in bytes as the configuration has them, joined by `/`. The reader asks for nothing else of the
// machine, so that a test or a fuzzer gives it files from memory.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog {

enum class SshReadResult {
    kRead,
    kMissing,  ///< No such file.
    kFolder,   ///< A folder; ssh reads one as an empty file.
    kFailed,   ///< There, but cannot be read.
};

/// The files that a configuration may include.
class ISshFiles {
  public:
    virtual ~ISshFiles() = default;

    /// Reads a whole file into `text`. A file of more than `maxBytes` is not read.
    /// On failure: `text` is empty and `error` tells why in a few words when the result is kFailed.
    virtual SshReadResult Read(const std::string& path, std::size_t maxBytes, std::string& text,
                               std::string& error) = 0;
    /// The names of at most `maxNames` of the entries of a folder, in any order, without `.` and `..`.
    /// On failure: none.
    virtual std::vector<std::string> List(const std::string& folder, std::size_t maxNames) = 0;
    /// Whether anything is at `path`.
    virtual bool Exists(const std::string& path) = 0;
};

/// The files of this machine. Devices, pipes and sockets cannot be read: one that waits for its writer would hold up
/// the import for ever.
class DiskSshFiles : public ISshFiles {
  public:
    SshReadResult Read(const std::string& path, std::size_t maxBytes, std::string& text, std::string& error) override;
    std::vector<std::string> List(const std::string& folder, std::size_t maxNames) override;
    bool Exists(const std::string& path) override;
};

/// The paths that match `pattern` (`*`, `?`, `[a-z]`, `[!a-z]` within one name, `\` before any of them for the
/// character itself; a leading dot only by a dot), in the order of their bytes. A pattern without wildcards gives
/// its own path, whether or not it is there. Looks at no more than `entriesLeft` entries of folders, and lowers it by
/// those it looked at: when it is 0 afterwards the answer may be incomplete.
std::vector<std::string> ExpandSshGlob(ISshFiles& files, std::string_view pattern, std::size_t& entriesLeft);

}  // namespace connectdialog
