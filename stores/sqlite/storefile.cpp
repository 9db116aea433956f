#include "stores/sqlite/storefile.h"

#include <chrono>
#include <filesystem>
#include <sqlite3.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "foundation/vreportmessageparams.h"
#include "platform/clock.h"
#include "platform/lasterror.h"
#include "stores/sqlite/sqlitedatabase.h"
#include "stores/sqlite/utctime.h"

namespace connectdialog::stores {

namespace {

constexpr std::chrono::milliseconds kLockPause{10};

/// SQLite's own locks on the file of a connection that is in no transaction. They can be had where a transaction cannot
/// begin, because the content is damaged; whoever has them all is alone with the file.
class ExclusiveLock {
  public:
    ExclusiveLock(sqlite3* handle, std::chrono::milliseconds patience) {
        sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
        for (Take(); (result & 0xFF) == SQLITE_BUSY && patience > kLockPause; patience -= kLockPause) {
            std::this_thread::sleep_for(kLockPause);
            Take();
        }
    }
    ~ExclusiveLock() { file->pMethods->xUnlock(file, SQLITE_LOCK_NONE); }
    ExclusiveLock(const ExclusiveLock&) = delete;
    ExclusiveLock& operator=(const ExclusiveLock&) = delete;

    int GetResult() const { return result; }

  private:
    /// All or none: whoever keeps one of them may keep another process waiting for ever.
    void Take() {
        result = SQLITE_OK;
        for (const int level : {SQLITE_LOCK_SHARED, SQLITE_LOCK_RESERVED, SQLITE_LOCK_EXCLUSIVE}) {
            if (result == SQLITE_OK) result = file->pMethods->xLock(file, level);
        }
        if (result != SQLITE_OK) file->pMethods->xUnlock(file, SQLITE_LOCK_NONE);
    }

    sqlite3_file* file = nullptr;
    int result = SQLITE_OK;
};

/// Seconds since 1970 UTC.
std::int64_t Now() {
    const auto now = static_cast<std::int64_t>(platform::GetFileTimeNow() - platform::kUnixEpoch);
    return now / static_cast<std::int64_t>(platform::kFileTimePerSecond);
}

/// A path that SQLite takes for nothing but a file (":memory:" and "file:…" are names of its own) and that a change of
/// the current folder does not move.
std::string AbsolutePath(const std::string& path) {
    std::error_code failure;
    const std::filesystem::path absolute = std::filesystem::absolute(path, failure);
    return failure ? "./" + path : absolute.string();
}

}  // namespace

StoreFile::Condition StoreFile::ConditionAfter(const VReportMessageParams& failure) {
    return failure.GetCode() == platform::kStoreCorrupt ? Condition::kDamaged : Condition::kFailed;
}

StoreFile::StoreFile(const std::string& storePath, const SqliteStoreOptions& options)
    : path(AbsolutePath(storePath)), options(options), backups(path) {}

bool StoreFile::Refuse(std::uint32_t code, const char* cause, VReportMessageParams& report) const {
    report.Fail(code);
    report.AddInsert(path.c_str());
    report.AddInsert(cause);
    return false;
}

/// False, with a report, when there can be no store. Creates the one that was not found.
bool StoreFile::CheckPath(bool create, FileKind& found, VReportMessageParams& report) const {
    found = LookAtFile(path, report);
    switch (found) {
        case FileKind::kFile:
            return true;
        case FileKind::kUnknown:
            return false;
        case FileKind::kFolder:
            return Refuse(platform::kAccessDenied, "it is a folder", report);
        case FileKind::kOther:
            return Refuse(platform::kAccessDenied, "it is not a file", report);
        case FileKind::kAbsent:
            break;
    }
    return !create || Create(report);
}

/// A new store gets its name when it is whole, so that nobody finds a half made one. Where files cannot have two names
/// it is filled under its own.
bool StoreFile::Create(VReportMessageParams& report) const {
    const std::string fresh = path + ".new-" + GetProcessSuffix();
    RemoveFile(fresh);
    VReportMessageParams ignored;
    bool isMade =
        CreatePrivateFolder(GetFolderOf(path), report) && CreatePrivateFile(fresh, report) && FillNew(fresh, report);
    if (isMade) {
        // That of a store that was deleted: it must not be played back into this one.
        if (::access(path.c_str(), F_OK) != 0) RemoveFile(path + "-journal");
        isMade = LinkFile(fresh, path, ignored) || CreatePrivateFile(path, report);
    }
    RemoveFile(fresh);
    return isMade;
}

bool StoreFile::FillNew(const std::string& newPath, VReportMessageParams& report) const {
    DatabaseHandle handle = OpenHandle(newPath, SQLITE_OPEN_READWRITE, report);
    if (handle == nullptr) return false;
    SqliteDatabase database(std::move(handle));
    return database.Configure(options.busyTimeout, report) && Fill(database, report);
}

bool StoreFile::Fill(SqliteDatabase& database, VReportMessageParams& report) {
    return database.Execute(kCreationPragmas, report) && Migrate(database, report);
}

/// Says whether the file may be touched at all. An empty one may: a process died between creating and filling it.
bool StoreFile::CheckHeader(sqlite3* handle, VReportMessageParams& report) const {
    FileHeader header;
    if (!ReadFileHeader(handle, header, report)) return false;
    if (header.fileSize == 0) return true;
    if (!header.isSqlite || header.applicationId != kApplicationId) {
        return Refuse(platform::kInvalidData, "it is not a session store", report);
    }
    if (header.schemaVersion > static_cast<std::uint32_t>(kSchemaVersion)) {
        return Refuse(platform::kNotSupported, "it was written by a newer version", report);
    }
    return true;
}

/// Whether the file holds all its pages: a last page cut short reads as zeros and is no error to SQLite. The read
/// transaction keeps writers from being half done with a longer file.
StoreFile::Condition StoreFile::ExamineLength(SqliteDatabase& database, VReportMessageParams& report) {
    std::int64_t pages = 0;
    std::int64_t pageSize = 0;
    FileHeader header;
    const bool known = database.Run(Sql::kBeginRead, report) &&
                       database.QueryNumber("PRAGMA page_count", pages, report) &&
                       database.QueryNumber("PRAGMA page_size", pageSize, report) &&
                       ReadFileHeader(database.GetHandle(), header, report);
    VReportMessageParams ignored;
    if (database.InTransaction()) database.Run(Sql::kCommit, ignored);
    if (!known) return ConditionAfter(report);
    if (pages == 0) return Condition::kEmpty;
    return pages * pageSize <= header.fileSize ? Condition::kGood : Condition::kDamaged;
}

StoreFile::Condition StoreFile::Examine(SqliteDatabase& database, VReportMessageParams& report) {
    const Condition length = ExamineLength(database, report);
    if (length != Condition::kGood) return length;
    std::int64_t version = 0;
    std::int64_t root = 0;
    const bool usable = database.QueryNumber("PRAGMA user_version", version, report) &&
                        (version >= kSchemaVersion || Migrate(database, report)) && database.PrepareAll(report) &&
                        database.QueryNumber("SELECT count(*) FROM rows WHERE id = 1", root, report);
    if (!usable) return ConditionAfter(report);
    return root == 1 ? Condition::kGood : Condition::kDamaged;
}

/// Brings the schema up to date in one transaction. Another process may have done so meanwhile.
bool StoreFile::Migrate(SqliteDatabase& database, VReportMessageParams& report) {
    std::int64_t version = 0;
    bool done = database.Run(Sql::kBeginWrite, report) && database.QueryNumber("PRAGMA user_version", version, report);
    for (; done && version < kSchemaVersion; ++version) {
        const std::string stamp = "PRAGMA user_version = " + std::to_string(version + 1);
        done = database.Execute(kMigrations[static_cast<std::size_t>(version)], report) &&
               database.Execute(stamp.c_str(), report);
    }
    done = done && database.Run(Sql::kCommit, report);
    VReportMessageParams ignored;
    if (!done && database.InTransaction()) database.Run(Sql::kRollback, ignored);
    return done;
}

OpenResult StoreFile::Open(bool create, std::unique_ptr<SqliteDatabase>& database, VReportMessageParams& report) {
    FileKind found = FileKind::kUnknown;
    if (!CheckPath(create, found, report)) return OpenResult::kFailed;
    if (found == FileKind::kAbsent && !create) return OpenResult::kAbsent;
    DatabaseHandle handle = OpenHandle(path, SQLITE_OPEN_READWRITE, report);
    if (handle == nullptr || !CheckHeader(handle.get(), report)) return OpenResult::kFailed;
    auto opened = std::make_unique<SqliteDatabase>(std::move(handle));
    const bool configured = opened->Configure(options.busyTimeout, report);
    Condition condition = configured ? Examine(*opened, report) : ConditionAfter(report);
    // A store is made before it gets its name: one that has backups and nothing in it was cut down.
    const bool isCut = found == FileKind::kFile && !opened->IsReadOnly() && backups.HasAny();
    if (condition == Condition::kEmpty && isCut) condition = Condition::kDamaged;
    if (condition == Condition::kEmpty) {
        if (!create) return OpenResult::kAbsent;
        if (!Fill(*opened, report)) return OpenResult::kFailed;
        condition = Examine(*opened, report);
    }
    if (condition == Condition::kDamaged) return SetAside(*opened, report);
    if (condition != Condition::kGood) return OpenResult::kFailed;
    database = std::move(opened);
    return OpenResult::kReady;
}

OpenResult StoreFile::SetAside(SqliteDatabase& database, VReportMessageParams& report) {
    const ExclusiveLock lock(database.GetHandle(), options.busyTimeout);
    if (lock.GetResult() != SQLITE_OK) {
        Refuse(platform::kStoreCorrupt, sqlite3_errstr(lock.GetResult()), report);
        return OpenResult::kFailed;
    }
    // Another process may have set it aside while this one waited; what is there now has not been looked at.
    report.Clear();
    if (database.HasMoved()) return OpenResult::kSetAside;
    std::string aside;
    std::string backup;
    if (!ReplaceDamaged(path + ".damaged-" + FormatUtcTime(Now()), aside, backup, report)) return OpenResult::kFailed;
    report.Fail(platform::kStoreCorrupt);
    for (const std::string& insert : {path, aside, backup}) report.AddInsert(insert.c_str());
    return OpenResult::kSetAside;
}

/// The damaged file gets its second name before the first one is taken from it, so a crash loses neither; the journal
/// goes first, lest it be played back into the file that comes.
bool StoreFile::ReplaceDamaged(const std::string& asideBase, std::string& aside, std::string& backup,
                               VReportMessageParams& report) {
    aside = asideBase;
    for (int i = 2; ::access(aside.c_str(), F_OK) == 0; ++i) aside = asideBase + "-" + std::to_string(i);
    const std::string restored = path + ".restored-" + GetProcessSuffix();
    RemoveFile(restored);
    if (!backups.RestoreNewest(restored, backup, report)) {
        RemoveFile(restored);
        return false;
    }
    const std::string journal = path + "-journal";
    if (::access(journal.c_str(), F_OK) == 0 && !RenameFile(journal, aside + "-journal", report)) return false;
    if (backup.empty()) return RenameFile(path, aside, report);
    return LinkFile(path, aside, report) && RenameFile(restored, path, report);
}

bool StoreFile::IsWritable() const {
    return ::access(path.c_str(), W_OK) == 0 || (::access(path.c_str(), F_OK) != 0 && CanCreateFile(path));
}

void StoreFile::BackUp(SqliteDatabase& database) {
    backups.MakeDaily(database.GetHandle(), Now() / kSecondsPerDay);
}

}  // namespace connectdialog::stores
