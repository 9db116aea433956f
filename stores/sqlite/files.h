// The few file operations that the provider needs beside SQLite's own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace connectdialog {

class VReportMessageParams;

namespace stores {

enum class FileKind { kAbsent, kFile, kFolder, kOther, kUnknown };

/// kUnknown, with a report, when the system does not tell.
FileKind LookAtFile(const std::string& path, VReportMessageParams& report);

/// What tells that a file is another one, or was written.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t number = 0;  ///< 0: there is none
    std::int64_t size = 0;
    std::int64_t written = 0;  ///< nanoseconds since 1970

    bool IsOfSameFile(const FileStamp& other) const { return device == other.device && number == other.number; }
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
FileStamp ReadFileStamp(const std::string& path);

/// Creates an empty file for this user alone, unless there is one. It never opens the file: closing any descriptor of a
/// database drops the locks that this process has on it. On failure: false, with a report.
bool CreatePrivateFile(const std::string& path, VReportMessageParams& report);
/// Creates the folder for this user alone, and those above it that are missing. On failure: false, with a report.
bool CreatePrivateFolder(const std::string& path, VReportMessageParams& report);
/// "" for a bare name.
std::string GetFolderOf(const std::string& path);
/// Whether a file could be created at the path, as far as the folders above it tell.
bool CanCreateFile(const std::string& path);

/// Gives the file at `from` the name `to` too, which must be free: nothing is ever overwritten.
bool LinkFile(const std::string& from, const std::string& to, VReportMessageParams& report);
/// Replaces what is at `to` in one step.
bool RenameFile(const std::string& from, const std::string& to, VReportMessageParams& report);
void RemoveFile(const std::string& path);
/// Names, not paths, in no order; none when there is no such folder.
std::vector<std::string> ListFolder(const std::string& path);
/// Unique among running processes.
std::string GetProcessSuffix();

}  // namespace stores
}  // namespace connectdialog
