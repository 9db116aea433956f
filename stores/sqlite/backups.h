// The rolling set of verified backups beside a store.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct sqlite3;

namespace connectdialog {

class VReportMessageParams;

namespace stores {

/// `STORE.backups/YYYY-MM-DD.db`, at most one a day, the newest five. A file takes this name only after a check of the
/// whole copy; copies are made by the database's own call, so that a running store may be copied at any time.
class BackupSet {
  public:
    explicit BackupSet(const std::string& storePath) : folder(storePath + ".backups") {}

    /// Makes the backup of the day (days since 1970) unless there is one. Looks at the disk once a day. A backup that
    /// cannot be made is no failure of the commit that it follows: the next process or day tries again.
    void MakeDaily(sqlite3* source, std::int64_t day);
    bool HasAny() const { return !ListNewestFirst().empty(); }
    /// Copies the newest backup that is still sound to `path`, which must not exist, and gives the backup's path; ""
    /// when there is none. On failure to copy: false, with a report.
    bool RestoreNewest(const std::string& path, std::string& restored, VReportMessageParams& report) const;

  private:
    std::vector<std::string> ListNewestFirst() const;
    bool Make(sqlite3* source, const std::string& name) const;
    void RemoveUnfinished(const std::string& today) const;

    std::string folder;
    std::int64_t lastDay = -1;
};

}  // namespace stores
}  // namespace connectdialog
