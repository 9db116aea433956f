// Files that are no store, damaged stores, and what becomes of them.
#include <chrono>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sqlite3.h>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "platform/clock.h"
#include "platform/codepage.h"
#include "profile/vprofilekey.h"
#include "stores/openstore.h"
#include "stores/sqlite/sqlitestore.h"
#include "support/storetools.h"
#include "support/temporaryfolder.h"

namespace connectdialog::test {
namespace {

namespace fs = std::filesystem;
using Factory = std::unique_ptr<VProfileStoreFactory>;

void RunSql(const fs::path& path, const std::string& sql) {
    sqlite3* database = nullptr;
    sqlite3_open(path.c_str(), &database);
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
    sqlite3_close(database);
}
std::vector<std::string> Inserts(const VReportMessageParams& report) {
    std::vector<std::string> inserts;
    for (std::size_t i = 0; i < report.GetInsertCount(); ++i)
        inserts.push_back(platform::ToNarrow(report.GetInserts()[i]));
    return inserts;
}

class SqliteFile : public testing::Test {
  protected:
    ~SqliteFile() override { platform::SetClock(nullptr); }

    Factory Open() {
        report.Clear();
        return stores::OpenSqliteStore(path, {}, report);
    }
    /// A store with enough in it to fill several pages.
    void Fill(std::uint32_t value = 1) {
        const Factory factory = Open();
        VProfileStore store(factory.get());
        for (char16_t i = 0; i < 40; ++i) {
            VProfileKey key(store.GetRootKey(),
                            (u"f\\" + std::u16string(1, u'A' + i % 26) + std::u16string(i, u'n')).c_str(), 0);
            ASSERT_TRUE(key.WriteDword(u"a", value) && key.WriteString(u"b", std::u16string(2000, u'x').c_str()));
        }
        ASSERT_TRUE(store.Close());
    }
    static std::vector<std::string> NamesIn(const fs::path& folder) {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
        return names;
    }
    static void SetDay(std::uint64_t day) {
        now = platform::kUnixEpoch + (day * 86400 + 3661) * platform::kFileTimePerSecond;
        platform::SetClock([] { return now; });
    }

    static inline std::uint64_t now = 0;
    TemporaryFolder folder;
    std::string path = folder / "store.db";
    VReportMessageParams report;
};

TEST_F(SqliteFile, IsPrivateAndMadeByTheFirstWriteOnly) {
    path = folder / "one/two/store.db";
    const Factory factory = Open();
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(DumpStore(*factory, {u"a"}), "");
    EXPECT_FALSE(VProfileStore(factory.get()).GetRootKey()->DeleteKey(u"k"));
    EXPECT_FALSE(fs::exists(folder / "one"));
    const mode_t before = ::umask(0);
    VProfileStore store(factory.get());
    EXPECT_TRUE(store.GetRootKey()->GetImpl()->IsWritable());
    EXPECT_TRUE(store.GetRootKey()->WriteDword(u"a", 1));
    EXPECT_TRUE(store.Commit());
    ::umask(before);
    EXPECT_EQ(ModeOf(path), 0600U);
    EXPECT_EQ(ModeOf(folder / "one/two"), 0700U);
    EXPECT_EQ(ModeOf(path + ".backups"), 0700U);
    for (const auto& entry : fs::directory_iterator(path + ".backups")) EXPECT_EQ(ModeOf(entry.path()), 0600U);
}

TEST_F(SqliteFile, WhatIsNoStoreIsRefusedAndNotTouched) {
    const std::tuple<const char*, std::uint32_t, std::function<void(const std::string& path)>> rows[] = {
        {"a folder", 5, [](const std::string& at) { fs::create_directory(at); }},
        {"a pipe", 5, [](const std::string& at) { ::mkfifo(at.c_str(), 0600); }},
        {"a text", 13, [](const std::string& at) { WriteFile(at, std::string(5000, 't')); }},
        {"a few bytes", 13, [](const std::string& at) { WriteFile(at, "SQL"); }},
        {"the bare magic", 13, [](const std::string& at) { WriteFile(at, std::string("SQLite format 3\0", 16)); }},
        {"a database of another", 13, [](const std::string& at) { RunSql(at, "CREATE TABLE rows (id)"); }},
        {"another application's", 13,
         [](const std::string& at) { RunSql(at, "PRAGMA application_id = 77; CREATE TABLE t (a)"); }},
        {"a newer version", 50,
         [](const std::string& at) { RunSql(at, "PRAGMA application_id = 0x424D7364; PRAGMA user_version = 2;"); }},
    };
    for (const auto& [what, code, make] : rows) {
        path = folder / what;
        make(path);
        const std::string before = fs::is_regular_file(path) ? ReadFile(path) : "";
        const std::size_t files = NamesIn(folder.GetPath()).size();
        EXPECT_EQ(Open(), nullptr) << what;
        EXPECT_EQ(report.GetCode(), code) << what;
        EXPECT_EQ(Inserts(report).front(), path);
        EXPECT_EQ(NamesIn(folder.GetPath()).size(), files) << what;
        EXPECT_EQ(fs::is_regular_file(path) ? ReadFile(path) : "", before) << what;
    }
    for (const char16_t* url : {u"", u"sqlite", u"sqlite:", u"file:/tmp/x", u"memory:x", u"SQLITE:x"}) {
        EXPECT_EQ(stores::OpenProfileStoreFactory(url, report), nullptr);
        EXPECT_EQ(report.GetCode(), 87U);
    }
}

TEST_F(SqliteFile, AStoreCutShortIsSetAsideAndItsBackupTakesItsPlace) {
    SetDay(20000);
    Fill(1);
    const std::string backup = path + ".backups/2024-10-04.db";
    ASSERT_TRUE(fs::exists(backup));
    Fill(2);  // the same day: not in the backup
    for (const auto cut : {fs::file_size(path) - 1, fs::file_size(path) - 8192, std::uintmax_t{8192},
                           std::uintmax_t{4000}, std::uintmax_t{0}}) {
        const std::string whole = ReadFile(path);
        fs::resize_file(path, cut);
        const std::string damaged = ReadFile(path);
        const Factory factory = Open();
        ASSERT_NE(factory, nullptr) << cut;
        EXPECT_EQ(report.GetCode(), 1015U);
        ASSERT_EQ(report.GetInsertCount(), 3U) << cut;
        const std::string aside = Inserts(report)[1];
        EXPECT_TRUE(aside.starts_with(path + ".damaged-20241004T010101Z")) << aside;
        EXPECT_EQ(Inserts(report)[2], backup);
        EXPECT_EQ(ReadFile(aside), damaged);
        EXPECT_EQ(ReadDwordOr(*factory, u"f\\A", u"a", 0), 1U);
        EXPECT_EQ(ModeOf(path), 0600U);
        WriteFile(path, whole);
    }
    WriteFile(backup, ReadFile(backup).substr(0, 9000));  // an unsound backup is not used
    fs::resize_file(path, 8192);
    const Factory factory = Open();
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(Inserts(report).at(2), "");
    EXPECT_EQ(DumpStore(*factory, {}), "");
    EXPECT_TRUE(WriteDwords(*factory, u"k", {u"a"}, 1));
}

TEST_F(SqliteFile, ADamagedRowFailsAloneAndIsNotOverwritten) {
    ASSERT_TRUE(WriteDwords(*Open(), u"good", {u"a"}, 7) && WriteDwords(*Open(), u"bad", {u"a"}, 7));
    for (const char* row : {"x''", "x'02'", "x'0101'", "x'010109'", "x'01011105'", "x'01000900'", "x'0101090101090005'",
                            "x'01FFFFFFFFFF0900'", "x'01FFFFFFFF0F09000109'", "x'016409FF'", "x'0101FFFFFFFF0F'",
                            "x'01010F00'", "zeroblob(100000)"}) {
        RunSql(path,
               "UPDATE rows SET data = " + std::string(row) + " WHERE id = (SELECT id FROM tree WHERE name = 'bad')");
        const std::string before = ReadFile(path);
        const Factory factory = Open();
        ASSERT_NE(factory, nullptr);
        VProfileStore store(factory.get());
        VProfileKey bad(store.GetRootKey(), u"bad", 0);
        std::uint32_t value = 0;
        EXPECT_FALSE(bad.ReadDword(u"a", value)) << row;
        EXPECT_EQ(CodeOf(bad), 1015U) << row;
        EXPECT_FALSE(bad.WriteDword(u"a", 1));
        EXPECT_EQ(CodeOf(bad), 1015U) << row;
        EXPECT_EQ(ReadDwordOr(*factory, u"good", u"a", 0), 7U);
        EXPECT_TRUE(store.Commit());
        EXPECT_EQ(ReadFile(path), before) << row;
    }
    const Factory factory = Open();
    VProfileStore store(factory.get());
    EXPECT_TRUE(store.GetRootKey()->DeleteKey(u"bad"));
}

TEST_F(SqliteFile, APageOfNoiseMakesNoCrash) {
    Fill();
    const std::string whole = ReadFile(path);
    for (std::size_t page = 1; page * 8192 < whole.size(); ++page) {
        std::string noisy = whole;
        for (std::size_t i = 0; i < 8192; i += 3) noisy[page * 8192 + i] = static_cast<char>(i * 37 + page);
        WriteFile(path, noisy);
        if (const Factory factory = Open()) {
            DumpStore(*factory, {u"a", u"b"});
            (void)WriteDwords(*factory, u"f\\A", {u"a"}, 2);
            VProfileStore store(factory.get());
            store.GetRootKey()->DeleteKey(u"f");
        }
        for (const std::string& name : NamesIn(folder.GetPath())) fs::remove_all(folder / name);
    }
}

TEST_F(SqliteFile, NamesOfAnAbandonedUnitAreNotTakenForStored) {
    {
        const Factory factory = Open();
        VProfileStore store(factory.get());
        EXPECT_TRUE(store.GetRootKey()->WriteDword(u"undone", 1));
        store.Abandon();
        EXPECT_TRUE(store.Close() && WriteDwords(*factory, u"k", {u"undone"}, 2));
    }
    EXPECT_EQ(DumpStore(*Open(), {u"undone"}), "k 5\n  .undone=2\n");
}

TEST_F(SqliteFile, KeepsTheNewestFiveBackupsOneADay) {
    for (std::uint64_t day = 20000; day < 20008; ++day) {
        SetDay(day);
        Fill(static_cast<std::uint32_t>(day));
        Fill(1);
        if (day == 20001) WriteFile(path + ".backups/2024-10-05.db.new-1", "of a process that died over it");
    }
    EXPECT_THAT(NamesIn(path + ".backups"),
                testing::UnorderedElementsAre("2024-10-07.db", "2024-10-08.db", "2024-10-09.db", "2024-10-10.db",
                                              "2024-10-11.db"));
    path += ".backups/2024-10-11.db";
    EXPECT_EQ(ReadDwordOr(*Open(), u"f\\A", u"a", 0), 20007U);
}

TEST_F(SqliteFile, TheJournalOfADeletedStoreIsNotPlayedBackIntoANewOne) {
    Fill();
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &raw), SQLITE_OK);
    // Pages that do not fit into the cache are written before the end, and their journal with them.
    sqlite3_exec(raw, "PRAGMA cache_size = 1; BEGIN; UPDATE rows SET data = zeroblob(20000)", nullptr, nullptr,
                 nullptr);
    const std::string journal = ReadFile(path + "-journal");
    sqlite3_close(raw);
    EXPECT_GT(journal.size(), 8192U);
    fs::remove(path);
    WriteFile(path + "-journal", journal);
    const Factory factory = Open();
    EXPECT_TRUE(WriteDwords(*factory, u"k", {u"a"}, 1));
    EXPECT_EQ(DumpStore(*Open(), {u"a"}), "k 5\n  .a=1\n");
}

TEST_F(SqliteFile, AFileThatWasReplacedIsNoticedByTheNextStore) {
    const Factory factory = Open();
    ASSERT_TRUE(WriteDwords(*factory, u"k", {u"a"}, 1));
    fs::rename(path, folder / "kept.db");
    EXPECT_EQ(ReadDwordOr(*factory, u"k", u"a", 0), 0U);
    EXPECT_TRUE(WriteDwords(*factory, u"k", {u"b"}, 2));
    fs::rename(folder / "kept.db", path);
    EXPECT_EQ(DumpStore(*factory, {u"a", u"b"}), "k 5\n  .a=1\n");
}

TEST_F(SqliteFile, AFileThatWasWrittenOverIsNoticedByTheNextStore) {
    const std::string own = path;
    for (const bool hasSameCounter : {false, true}) {
        const Factory factory = Open();
        ASSERT_TRUE(WriteDwords(*factory, u"k", {u"a"}, 1));
        path = folder / "other.db";
        fs::copy_file(own, path, fs::copy_options::overwrite_existing);
        ASSERT_TRUE(WriteDwords(*factory, u"x", {u"b"}, 2));
        ASSERT_TRUE(WriteDwords(*Open(), u"z", {u"c"}, 3) && WriteDwords(*Open(), u"z", {u"d"}, 3));
        std::string content = ReadFile(path);
        if (hasSameCounter) content.replace(24, 16, ReadFile(own), 24, 16);  // as that of each backup is
        path = own;
        WriteFile(path, content);
        fs::last_write_time(path, fs::last_write_time(path) + std::chrono::seconds(1));
        EXPECT_TRUE(WriteDwords(*factory, u"x", {u"b"}, 9));
        EXPECT_EQ(DumpStore(*Open(), {u"a", u"b", u"c", u"d"}), "k 5\n  .a=1\nx 5\n  .b=9\nz 5\n  .c=3\n  .d=3\n");
        fs::remove(path);
    }
}

}  // namespace
}  // namespace connectdialog::test
