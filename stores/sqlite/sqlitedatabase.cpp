#include "stores/sqlite/sqlitedatabase.h"

#include <array>
#include <cerrno>
#include <sqlite3.h>

#include "foundation/vreportmessageparams.h"
#include "platform/lasterror.h"

namespace connectdialog::stores {

namespace {

constexpr std::size_t kHeaderSize = 100;
constexpr std::string_view kMagic("SQLite format 3\0", 16);
constexpr std::size_t kChangeCounterOffset = 24;
constexpr std::size_t kUserVersionOffset = 60;
constexpr std::size_t kApplicationIdOffset = 68;

std::uint32_t BigEndian32(const unsigned char* bytes) {
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

}  // namespace

std::uint32_t ErrorFromSqlite(int result) {
    switch (result & 0xFF) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return platform::kSuccess;
        case SQLITE_READONLY:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return platform::kAccessDenied;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return platform::kSharingViolation;
        case SQLITE_FULL:
            return platform::kDiskFull;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
        // The statements are always the same: one that is refused has not found its tables as they should be.
        case SQLITE_ERROR:
            return platform::kStoreCorrupt;
        case SQLITE_CANTOPEN:
            return platform::kFileNotFound;
        case SQLITE_NOMEM:
            return platform::kNotEnoughMemory;
        case SQLITE_TOOBIG:
            return platform::kInvalidParameter;
        default:
            return platform::kDeviceError;
    }
}

void CloseDatabase::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

DatabaseHandle OpenHandle(const std::string& path, int flags, VReportMessageParams& report) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    DatabaseHandle handle(opened);
    if (result == SQLITE_OK) {
        sqlite3_extended_result_codes(opened, 1);
        return handle;
    }
    const int cause = opened != nullptr ? sqlite3_system_errno(opened) : 0;
    report.Fail(cause != 0 ? platform::ErrorFromErrno(cause) : ErrorFromSqlite(result));
    report.AddInsert(path.c_str());
    report.AddInsert(opened != nullptr ? sqlite3_errmsg(opened) : sqlite3_errstr(result));
    return nullptr;
}

bool ReadFileHeader(sqlite3* handle, FileHeader& header, VReportMessageParams& report) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    std::array<unsigned char, kHeaderSize> bytes{};
    sqlite3_int64 size = 0;
    if (file == nullptr || file->pMethods == nullptr) return report.Fail(platform::kInvalidParameter);
    int result = file->pMethods->xFileSize(file, &size);
    if (result == SQLITE_OK && size > 0) result = file->pMethods->xRead(file, bytes.data(), kHeaderSize, 0);
    if (result != SQLITE_OK && result != SQLITE_IOERR_SHORT_READ) {
        report.Fail(ErrorFromSqlite(result));
        report.AddInsert(sqlite3_errstr(result));
        return false;
    }
    header.fileSize = size;
    header.isSqlite = std::string_view(reinterpret_cast<const char*>(bytes.data()), kMagic.size()) == kMagic;
    header.changeCounter = BigEndian32(&bytes[kChangeCounterOffset]);
    header.applicationId = BigEndian32(&bytes[kApplicationIdOffset]);
    header.schemaVersion = BigEndian32(&bytes[kUserVersionOffset]);
    return true;
}

SqliteDatabase::~SqliteDatabase() {
    for (sqlite3_stmt* statement : statements) sqlite3_finalize(statement);
}

bool SqliteDatabase::Configure(std::chrono::milliseconds busyTimeout, VReportMessageParams& report) {
    sqlite3* db = handle.get();
    sqlite3_busy_timeout(db, static_cast<int>(busyTimeout.count()));
    // The file may come from anywhere: nothing in it may run by itself.
    sqlite3_db_config(db, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(db, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    return Execute(kConnectionPragmas, report);
}

bool SqliteDatabase::Execute(const char* sql, VReportMessageParams& report) {
    const int result = sqlite3_exec(handle.get(), sql, nullptr, nullptr, nullptr);
    return result == SQLITE_OK || Fail(result, report);
}

bool SqliteDatabase::QueryNumber(const char* sql, std::int64_t& number, VReportMessageParams& report) {
    sqlite3_stmt* statement = nullptr;
    int result = sqlite3_prepare_v2(handle.get(), sql, -1, &statement, nullptr);
    if (result == SQLITE_OK) result = sqlite3_step(statement);
    if (result == SQLITE_ROW) number = sqlite3_column_int64(statement, 0);
    const bool found = result == SQLITE_ROW || Fail(result, report);
    sqlite3_finalize(statement);
    return found;
}

bool SqliteDatabase::PrepareAll(VReportMessageParams& report) {
    for (std::size_t i = 0; i < kStatements.size(); ++i) {
        if (Prepare(static_cast<Sql>(i), report) == nullptr) return false;
    }
    return true;
}

sqlite3_stmt* SqliteDatabase::Prepare(Sql sql, VReportMessageParams& report) {
    const auto index = static_cast<std::size_t>(sql);
    sqlite3_stmt*& statement = statements[index];
    if (statement != nullptr) return statement;
    const int result =
        sqlite3_prepare_v3(handle.get(), kStatements[index], -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (result != SQLITE_OK) Fail(result, report);
    return statement;
}

bool SqliteDatabase::Run(Sql sql, VReportMessageParams& report) {
    return Query(*this, sql, report).Run();
}

bool SqliteDatabase::IsReadOnly() const {
    return sqlite3_db_readonly(handle.get(), "main") != 0;
}

bool SqliteDatabase::InTransaction() const {
    return sqlite3_get_autocommit(handle.get()) == 0;
}

bool SqliteDatabase::HasMoved() const {
    int moved = 0;
    sqlite3_file_control(handle.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

bool SqliteDatabase::Fail(int result, VReportMessageParams& report) const {
    // A file that is there and cannot be opened is not absent.
    const int cause = (result & 0xFF) == SQLITE_CANTOPEN ? sqlite3_system_errno(handle.get()) : 0;
    report.Fail(cause != 0 && cause != ENOENT ? platform::ErrorFromErrno(cause) : ErrorFromSqlite(result));
    report.AddInsert(sqlite3_db_filename(handle.get(), "main"));
    report.AddInsert(sqlite3_errmsg(handle.get()));
    return false;
}

Query::Query(SqliteDatabase& database, Sql sql, VReportMessageParams& report)
    : database(database), report(report), statement(database.Prepare(sql, report)), failed(statement == nullptr) {}

Query::~Query() {
    if (statement != nullptr) sqlite3_reset(statement);
}

Query& Query::Bind(std::int64_t value) {
    if (statement != nullptr) sqlite3_bind_int64(statement, ++parameter, value);
    return *this;
}

Query& Query::BindBlob(std::string_view value) {
    // A null address would bind NULL and not an empty blob.
    const char* data = value.data() != nullptr ? value.data() : "";
    if (statement != nullptr) sqlite3_bind_blob64(statement, ++parameter, data, value.size(), SQLITE_STATIC);
    return *this;
}

Query& Query::BindText(std::string_view value) {
    if (statement != nullptr) {
        sqlite3_bind_text64(statement, ++parameter, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    return *this;
}

bool Query::Step() {
    if (failed) return false;
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW) return true;
    failed = result != SQLITE_DONE;
    if (failed) database.Fail(result, report);
    return false;
}

bool Query::Run() {
    while (Step()) {
    }
    return !failed;
}

std::int64_t Query::GetInteger(int column) const {
    return sqlite3_column_int64(statement, column);
}

std::string_view Query::GetBytes(int column) const {
    const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

}  // namespace connectdialog::stores
