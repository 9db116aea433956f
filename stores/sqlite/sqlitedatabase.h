// One connection to a SQLite file, its prepared statements, and the mapping of its errors.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "stores/sqlite/statements.h"

struct sqlite3;
struct sqlite3_stmt;

namespace connectdialog {

class VReportMessageParams;

namespace stores {

/// The number that the library names for a SQLite result code: 5 read-only or not allowed, 32 busy or locked, 112 full,
/// 1015 corrupt, 2 cannot open, 8 no memory, 87 too big, else 1117.
std::uint32_t ErrorFromSqlite(int result);

struct CloseDatabase {
    void operator()(sqlite3* handle) const;
};
using DatabaseHandle = std::unique_ptr<sqlite3, CloseDatabase>;

/// Opens a connection without looking into the file. On failure: null, with a report.
DatabaseHandle OpenHandle(const std::string& path, int flags, VReportMessageParams& report);

/// What the first bytes of a file say, read through SQLite's own descriptor: any other that is closed in this process
/// would drop the file's locks.
struct FileHeader {
    std::int64_t fileSize = 0;
    bool isSqlite = false;
    std::uint32_t changeCounter = 0;  ///< changed by every commit; SQLite sees by it that its pages are old
    std::uint32_t applicationId = 0;
    std::uint32_t schemaVersion = 0;
};
/// On failure: false, with a report.
bool ReadFileHeader(sqlite3* handle, FileHeader& header, VReportMessageParams& report);

class SqliteDatabase {
  public:
    explicit SqliteDatabase(DatabaseHandle handle) : handle(std::move(handle)) {}
    ~SqliteDatabase();
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    sqlite3* GetHandle() const { return handle.get(); }
    /// Sets what every connection of a store is set to. Looks into the file. On failure: false, with a report.
    bool Configure(std::chrono::milliseconds busyTimeout, VReportMessageParams& report);
    /// Runs statements that give no rows.
    bool Execute(const char* sql, VReportMessageParams& report);
    /// The number that a pragma or a query of one number gives.
    bool QueryNumber(const char* sql, std::int64_t& number, VReportMessageParams& report);
    /// Prepares all statements: false, with a report, when the tables are not as they should be.
    bool PrepareAll(VReportMessageParams& report);
    /// Null, with a report, when it cannot be prepared.
    sqlite3_stmt* Prepare(Sql sql, VReportMessageParams& report);
    /// Runs a statement without parameters.
    bool Run(Sql sql, VReportMessageParams& report);

    bool IsReadOnly() const;
    bool InTransaction() const;
    /// The file at the path is another than the one that is open, or none.
    bool HasMoved() const;
    /// Fails the report with the latest error: code and SQLite's own words. Gives false.
    bool Fail(int result, VReportMessageParams& report) const;

  private:
    std::array<sqlite3_stmt*, kStatements.size()> statements{};
    DatabaseHandle handle;
};

/// One run of a prepared statement. Its end resets the statement, which gives the file's locks back.
class Query {
  public:
    /// A statement that cannot be prepared makes the first Step fail.
    Query(SqliteDatabase& database, Sql sql, VReportMessageParams& report);
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    // Blobs and texts are not copied: they must live as long as the query.

    Query& Bind(std::int64_t value);
    Query& BindBlob(std::string_view value);
    Query& BindText(std::string_view value);

    /// True while there is a row. False at the end, and after a failure, which HasFailed tells and the report explains.
    bool Step();
    bool HasFailed() const { return failed; }
    /// Runs a statement that gives no rows.
    bool Run();

    // Columns of the current row, counted from 0; bytes live until the next step.

    std::int64_t GetInteger(int column) const;
    std::string_view GetBytes(int column) const;

  private:
    SqliteDatabase& database;
    VReportMessageParams& report;
    sqlite3_stmt* statement;
    int parameter = 0;
    bool failed;
};

}  // namespace stores
}  // namespace connectdialog
