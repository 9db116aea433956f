// Importing an OpenSSH configuration of many hosts, beside reading the file and building the same rows in plain SQLite.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "rawstore.h"
#include "stores/openstore.h"
#include "suite/hostsetup/hostsetup.h"
#include "suite/importers/openssh/opensshimport.h"
#include "suite/importers/openssh/sshfiles.h"

namespace connectdialog::bench {
namespace {

/// A configuration of so many hosts, and a place for stores.
class Scratch {
  public:
    explicit Scratch(std::int64_t hosts)
        : folder(std::filesystem::temp_directory_path() / ("import-benchmark-" + std::to_string(hosts))) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        std::ofstream file(GetConfig());
        for (std::int64_t i = 0; i < hosts; ++i)
            file << "Host server" << i << "\n    HostName server" << i << ".example.net\n    User admin\n    Port "
                 << 2200 + i % 100 << "\n    IdentityFile ~/.ssh/id_" << i % 10 << "\n\n";
        file << "Host *\n    ServerAliveInterval 30\n";
    }
    ~Scratch() { std::filesystem::remove_all(folder); }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    std::string GetConfig() const { return (folder / "config").string(); }
    std::string NewStorePath() { return (folder / ("store-" + std::to_string(++stores) + ".db")).string(); }

  private:
    std::filesystem::path folder;
    int stores = 0;
};

/// A store that is ready for the day: it has its tables and the backup that the first commit of a day makes.
std::unique_ptr<VProfileStoreFactory> MakeStore(const std::string& path) {
    VReportMessageParams report;
    auto factory = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + path).c_str()), report);
    Require(factory != nullptr);
    VProfileStore store(factory.get());
    VProfileKey(store.GetRootKey(), u"Global", 0).WriteDword(u"Ready", 1);
    Require(store.Close());
    return factory;
}

void ImportInto(VProfileStoreFactory& factory, const std::string& config, std::int64_t hosts) {
    VReportMessageParams report;
    InstallReferenceSuite(u"connectctl", factory);
    SshImportRequest request;
    request.file = config;
    request.user = GetCurrentSshUser();
    DiskSshFiles files;
    SshImportResult result;
    Require(ImportOpenSshConfig(files, request, result, report));
    Require(result.Count(SshImportOutcome::kMade) == static_cast<std::size_t>(hosts));
}

void ImportHosts(benchmark::State& state) {
    Scratch scratch(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const auto factory = MakeStore(scratch.NewStorePath());
        state.ResumeTiming();
        ImportInto(*factory, scratch.GetConfig(), state.range(0));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ImportHosts)->Arg(1000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

struct StoredKey {
    std::int64_t parent = 0;
    std::int64_t id = 0;
    std::int64_t kind = 0;
    std::string folded;
    std::string name;
    std::vector<RawValue> values;
};

/// In the order in which they were made, which is that of the file.
std::vector<StoredKey> ReadKeys(const std::string& storePath) {
    RawStore store(storePath);
    std::vector<StoredKey> keys;
    sqlite3_stmt* select = store.Prepare(
        "SELECT parent, tree.id, kind, folded, name, data FROM tree JOIN rows ON rows.id = tree.id ORDER BY tree.id");
    while (sqlite3_step(select) == SQLITE_ROW) {
        keys.push_back({sqlite3_column_int64(select, 0),
                        sqlite3_column_int64(select, 1),
                        sqlite3_column_int64(select, 2),
                        std::string(ColumnBytes(select, 3)),
                        std::string(ColumnBytes(select, 4)),
                        {}});
        DecodeRow(ColumnBytes(select, 5), keys.back().values);
    }
    return keys;
}

void BuildRows(const std::string& storePath, const std::vector<StoredKey>& keys) {
    RawStore store(storePath);
    store.Execute("PRAGMA page_size = 8192");
    store.Execute(
        "CREATE TABLE rows (id INTEGER PRIMARY KEY AUTOINCREMENT, data BLOB NOT NULL) STRICT;"
        "CREATE TABLE tree (parent INTEGER NOT NULL, folded BLOB NOT NULL, name TEXT NOT NULL, kind INTEGER NOT NULL,"
        " id INTEGER NOT NULL, PRIMARY KEY (parent, folded)) STRICT, WITHOUT ROWID;");
    sqlite3_stmt* insertRow = store.Prepare("INSERT INTO rows (id, data) VALUES (?1, ?2)");
    sqlite3_stmt* insertChild =
        store.Prepare("INSERT INTO tree (parent, folded, name, kind, id) VALUES (?1, ?2, ?3, ?4, ?5)");
    store.Execute("BEGIN IMMEDIATE");
    std::string row;
    for (const StoredKey& key : keys) {
        EncodeRow(key.values, row);
        sqlite3_bind_int64(insertRow, 1, key.id);
        sqlite3_bind_blob(insertRow, 2, row.data(), static_cast<int>(row.size()), SQLITE_STATIC);
        Require(sqlite3_step(insertRow) == SQLITE_DONE);
        sqlite3_reset(insertRow);
        sqlite3_bind_int64(insertChild, 1, key.parent);
        sqlite3_bind_blob(insertChild, 2, key.folded.data(), static_cast<int>(key.folded.size()), SQLITE_STATIC);
        sqlite3_bind_text(insertChild, 3, key.name.data(), static_cast<int>(key.name.size()), SQLITE_STATIC);
        sqlite3_bind_int64(insertChild, 4, key.kind);
        sqlite3_bind_int64(insertChild, 5, key.id);
        Require(sqlite3_step(insertChild) == SQLITE_DONE);
        sqlite3_reset(insertChild);
    }
    store.Execute("COMMIT");
}

/// Reads the file and builds the rows that an import of it made, out of their values.
void RawReadAndBuild(benchmark::State& state) {
    Scratch scratch(state.range(0));
    const std::string imported = scratch.NewStorePath();
    ImportInto(*MakeStore(imported), scratch.GetConfig(), state.range(0));
    const std::vector<StoredKey> keys = ReadKeys(imported);
    for (auto _ : state) {
        std::ifstream file(scratch.GetConfig());
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        benchmark::DoNotOptimize(text.data());
        BuildRows(scratch.NewStorePath(), keys);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(RawReadAndBuild)->Arg(1000)->Arg(10000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace connectdialog::bench
