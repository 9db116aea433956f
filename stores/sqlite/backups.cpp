#include "stores/sqlite/backups.h"

#include <algorithm>
#include <functional>
#include <sqlite3.h>
#include <string_view>

#include "foundation/vreportmessageparams.h"
#include "stores/sqlite/files.h"
#include "stores/sqlite/sqlitedatabase.h"
#include "stores/sqlite/utctime.h"

namespace connectdialog::stores {

namespace {

constexpr std::size_t kBackupsKept = 5;
constexpr std::string_view kSuffix = ".db";
constexpr std::string_view kUnfinished = ".new-";  ///< and the process, behind the name
constexpr std::size_t kNameLength = std::string_view("2026-11-21.db").size();

bool CopyDatabase(sqlite3* source, const std::string& path, VReportMessageParams& report) {
    if (!CreatePrivateFile(path, report)) return false;
    const DatabaseHandle target = OpenHandle(path, SQLITE_OPEN_READWRITE, report);
    if (target == nullptr) return false;
    sqlite3_backup* backup = sqlite3_backup_init(target.get(), "main", source, "main");
    if (backup != nullptr) sqlite3_backup_step(backup, -1);
    const int result = backup != nullptr ? sqlite3_backup_finish(backup) : sqlite3_errcode(target.get());
    if (result == SQLITE_OK) return true;
    report.Fail(ErrorFromSqlite(result));
    report.AddInsert(path.c_str());
    report.AddInsert(sqlite3_errmsg(target.get()));
    return false;
}

/// Reads the whole file: every page is where it belongs, and it is a store.
bool IsSound(const std::string& path) {
    VReportMessageParams ignored;
    DatabaseHandle handle = OpenHandle(path, SQLITE_OPEN_READONLY, ignored);
    FileHeader header;
    if (handle == nullptr || !ReadFileHeader(handle.get(), header, ignored)) return false;
    if (header.applicationId != kApplicationId) return false;
    sqlite3_stmt* check = nullptr;
    bool sound = sqlite3_prepare_v2(handle.get(), "PRAGMA quick_check(1)", -1, &check, nullptr) == SQLITE_OK &&
                 sqlite3_step(check) == SQLITE_ROW;
    sound = sound && std::string_view(reinterpret_cast<const char*>(sqlite3_column_text(check, 0))) == "ok";
    sqlite3_finalize(check);
    return sound;
}

}  // namespace

std::vector<std::string> BackupSet::ListNewestFirst() const {
    std::vector<std::string> names = ListFolder(folder);
    std::erase_if(names,
                  [](const std::string& name) { return name.size() != kNameLength || !name.ends_with(kSuffix); });
    std::sort(names.begin(), names.end(), std::greater<>());
    return names;
}

void BackupSet::MakeDaily(sqlite3* source, std::int64_t day) {
    if (day == lastDay) return;
    lastDay = day;
    const std::string name = FormatUtcDate(day) + std::string(kSuffix);
    std::vector<std::string> names = ListNewestFirst();
    if (std::find(names.begin(), names.end(), name) != names.end() || !Make(source, name)) return;
    RemoveUnfinished(name);
    names = ListNewestFirst();
    for (std::size_t i = kBackupsKept; i < names.size(); ++i) RemoveFile(folder + "/" + names[i]);
}

/// Copies of earlier days, whose process died over them.
void BackupSet::RemoveUnfinished(const std::string& today) const {
    for (const std::string& name : ListFolder(folder))
        if (name.find(kUnfinished) != std::string::npos && name < today) RemoveFile(folder + "/" + name);
}

bool BackupSet::Make(sqlite3* source, const std::string& name) const {
    VReportMessageParams ignored;
    const std::string unverified = folder + "/" + name + std::string(kUnfinished) + GetProcessSuffix();
    const bool made = CreatePrivateFolder(folder, ignored) && CopyDatabase(source, unverified, ignored) &&
                      IsSound(unverified) && RenameFile(unverified, folder + "/" + name, ignored);
    if (!made) RemoveFile(unverified);
    return made;
}

bool BackupSet::RestoreNewest(const std::string& path, std::string& restored, VReportMessageParams& report) const {
    for (const std::string& name : ListNewestFirst()) {
        const std::string backup = folder + "/" + name;
        if (!IsSound(backup)) continue;
        const DatabaseHandle source = OpenHandle(backup, SQLITE_OPEN_READONLY, report);
        restored = backup;
        return source != nullptr && CopyDatabase(source.get(), path, report);
    }
    return true;
}

}  // namespace connectdialog::stores
