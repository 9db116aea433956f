// The same work as the library's, in plain SQLite code: what the figures are held against.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

namespace connectdialog::bench {

/// Ends the program when SQLite refuses: a baseline that failed is none.
inline void Require(bool succeeded) {
    if (!succeeded) std::abort();
}

/// A connection with the store's own settings, and statements that are prepared once.
class RawStore {
  public:
    explicit RawStore(const std::string& path) {
        Require(sqlite3_open(path.c_str(), &database) == SQLITE_OK);
        Execute("PRAGMA cache_size = -8192; PRAGMA journal_mode = DELETE; PRAGMA synchronous = EXTRA");
    }
    ~RawStore() {
        for (sqlite3_stmt* statement : statements) sqlite3_finalize(statement);
        sqlite3_close(database);
    }
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    void Execute(const char* sql) { Require(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK); }
    sqlite3_stmt* Prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        Require(sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) == SQLITE_OK);
        statements.push_back(statement);
        return statement;
    }
    std::int64_t QueryNumber(const char* sql) {
        sqlite3_stmt* statement = Prepare(sql);
        Require(sqlite3_step(statement) == SQLITE_ROW);
        const std::int64_t number = sqlite3_column_int64(statement, 0);
        sqlite3_reset(statement);
        return number;
    }

  private:
    sqlite3* database = nullptr;
    std::vector<sqlite3_stmt*> statements;
};

/// A value as a program would hold it after decoding a row: the id of its name, a number or a text.
struct RawValue {
    std::uint64_t name = 0;
    std::uint64_t number = 0;
    std::string bytes;
    std::uint8_t tag = 0;
};

inline std::uint64_t ReadVarint(std::string_view& row) {
    std::uint64_t value = 0;
    for (int shift = 0; !row.empty() && shift < 64; shift += 7) {
        const auto byte = static_cast<std::uint8_t>(row.front());
        row.remove_prefix(1);
        value |= std::uint64_t{byte & 0x7FU} << shift;
        if (byte < 0x80) break;
    }
    return value;
}

inline constexpr std::uint8_t kNumberTag = 1;

/// Decodes a packed row: a version byte, then for each value the distance of its name's id, its size and tag, its
/// bytes.
inline void DecodeRow(std::string_view row, std::vector<RawValue>& values) {
    values.clear();
    row.remove_prefix(1);
    std::uint64_t name = 0;
    while (!row.empty()) {
        RawValue& value = values.emplace_back();
        value.name = name += ReadVarint(row);
        const std::uint64_t head = ReadVarint(row);
        const std::size_t size = head >> 3;
        value.tag = head & 7;
        if (value.tag == kNumberTag)
            for (std::size_t i = 0; i < size; ++i)
                value.number |= std::uint64_t{static_cast<std::uint8_t>(row[i])} << (8 * i);
        else
            value.bytes.assign(row.substr(0, size));
        row.remove_prefix(size);
    }
}

inline void AppendVarint(std::uint64_t value, std::string& row) {
    for (; value >= 0x80; value >>= 7) row.push_back(static_cast<char>(value | 0x80));
    row.push_back(static_cast<char>(value));
}

/// Packs values into a row that DecodeRow takes apart.
inline void EncodeRow(const std::vector<RawValue>& values, std::string& row) {
    row.assign(1, '\x01');
    std::uint64_t name = 0;
    for (const RawValue& value : values) {
        AppendVarint(value.name - name, row);
        name = value.name;
        if (value.tag == kNumberTag) {
            std::uint64_t size = 0;
            while (value.number >> (8 * size) != 0) ++size;
            AppendVarint(size << 3 | value.tag, row);
            for (std::uint64_t i = 0; i < size; ++i) row.push_back(static_cast<char>(value.number >> (8 * i)));
        } else {
            AppendVarint(value.bytes.size() << 3 | value.tag, row);
            row += value.bytes;
        }
    }
}

/// The blob of the current row.
inline std::string_view ColumnBytes(sqlite3_stmt* statement, int column) {
    return {static_cast<const char*>(sqlite3_column_blob(statement, column)),
            static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
}

}  // namespace connectdialog::bench
