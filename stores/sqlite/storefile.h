// Opening the file of a store: what it is, whether it may be touched, and what happens to a damaged one.
#pragma once

#include <memory>
#include <string>

#include "stores/sqlite/backups.h"
#include "stores/sqlite/files.h"
#include "stores/sqlite/sqlitestore.h"

struct sqlite3;

namespace connectdialog::stores {

class SqliteDatabase;

/// The first two are success.
enum class OpenResult {
    kReady,     ///< a connection was given
    kAbsent,    ///< there is no store yet, and none was to be created
    kSetAside,  ///< the store was damaged and has been set aside; open again. The report tells the names; it is empty
                ///< when another process has set the store aside.
    kFailed     ///< the report tells why
};

class StoreFile {
  public:
    StoreFile(const std::string& path, const SqliteStoreOptions& options);

    OpenResult Open(bool create, std::unique_ptr<SqliteDatabase>& database, VReportMessageParams& report);
    /// Whether a store is, or could be created, where this user may write. Does not open it.
    bool IsWritable() const;
    FileStamp GetStamp() const { return ReadFileStamp(path); }
    /// To be called after a commit.
    void BackUp(SqliteDatabase& database);

  private:
    enum class Condition { kGood, kEmpty, kDamaged, kFailed };
    bool CheckPath(bool create, FileKind& found, VReportMessageParams& report) const;
    bool Create(VReportMessageParams& report) const;
    bool FillNew(const std::string& newPath, VReportMessageParams& report) const;
    static bool Fill(SqliteDatabase& database, VReportMessageParams& report);
    bool CheckHeader(sqlite3* handle, VReportMessageParams& report) const;
    static Condition ConditionAfter(const VReportMessageParams& failure);
    static Condition ExamineLength(SqliteDatabase& database, VReportMessageParams& report);
    static Condition Examine(SqliteDatabase& database, VReportMessageParams& report);
    static bool Migrate(SqliteDatabase& database, VReportMessageParams& report);
    OpenResult SetAside(SqliteDatabase& database, VReportMessageParams& report);
    bool ReplaceDamaged(const std::string& asideBase, std::string& aside, std::string& backup,
                        VReportMessageParams& report);
    bool Refuse(std::uint32_t code, const char* cause, VReportMessageParams& report) const;

    std::string path;
    SqliteStoreOptions options;
    BackupSet backups;
};

}  // namespace connectdialog::stores
