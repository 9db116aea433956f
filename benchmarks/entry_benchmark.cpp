// Operations on the session tree over the SQLite store, each beside the same work in plain SQLite code.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "config/sessionconfig.h"
#include "foundation/vreportmessageparams.h"
#include "imports/configpanels.h"
#include "profile/vprofilekey.h"
#include "rawstore.h"
#include "sessiondb/entryoperations.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::bench {
namespace {

VUnicodeString SessionName(std::int64_t number) {
    VUnicodeString name;
    name.Format(u"server-%1!06d!", static_cast<int>(number));
    return name;
}

/// A store of its own with one folder, "many", of whole sessions.
class World {
  public:
    explicit World(std::int64_t count)
        : folder(std::filesystem::temp_directory_path() / ("entry-benchmark-" + std::to_string(count))) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        path = (folder / "bench.db").string();
        VReportMessageParams report;
        factory = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + path).c_str()), report);
        Require(factory != nullptr);
        InstallReferenceSuite(u"NorHalden", *factory);
        VRef<GlobalConfig> global;
        Require(GetGlobalConfig(global, -1));
        global->sessionArrangementMode.Set(static_cast<int>(SessionArrangement::kManual));
        const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
        Require(StoreSessionEntries(u"many", *session, static_cast<std::size_t>(count), [&](std::size_t index) {
            const VUnicodeString name = SessionName(static_cast<std::int64_t>(index));
            session->SetPath(u"many\\" + name);
            session->GetConnectConfig()->SetHostName(name + u".example.net");
            return true;
        }));
    }
    ~World() { std::filesystem::remove_all(folder); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    std::string path;

  private:
    std::filesystem::path folder;
    std::unique_ptr<VProfileStoreFactory> factory;
};

std::int64_t IdOfMany(RawStore& raw) {
    return raw.QueryNumber("SELECT id FROM tree WHERE name = 'many'");
}

void Step(sqlite3_stmt* statement) {
    Require(sqlite3_step(statement) == SQLITE_DONE);
    sqlite3_reset(statement);
}

void RawCopyFolder(benchmark::State& state) {
    const World world(state.range(0));
    RawStore raw(world.path);
    const std::int64_t many = IdOfMany(raw);
    sqlite3_stmt* select = raw.Prepare(
        "SELECT folded, name, kind, data FROM tree JOIN rows ON rows.id = tree.id WHERE parent = ?1 ORDER BY folded");
    sqlite3_stmt* insertRow = raw.Prepare("INSERT INTO rows (id, data) VALUES (?1, ?2)");
    sqlite3_stmt* insertChild =
        raw.Prepare("INSERT INTO tree (parent, folded, name, kind, id) VALUES (?1, ?2, ?3, ?4, ?5)");
    for (auto _ : state) {
        std::int64_t id = raw.QueryNumber("SELECT max(id) FROM rows") + 1;
        const std::int64_t parent = id;
        raw.Execute("BEGIN IMMEDIATE");
        sqlite3_bind_int64(select, 1, many);
        while (sqlite3_step(select) == SQLITE_ROW) {
            sqlite3_bind_int64(insertRow, 1, ++id);
            sqlite3_bind_value(insertRow, 2, sqlite3_column_value(select, 3));
            Step(insertRow);
            sqlite3_bind_int64(insertChild, 1, parent);
            for (int i = 0; i < 3; ++i) sqlite3_bind_value(insertChild, i + 2, sqlite3_column_value(select, i));
            sqlite3_bind_int64(insertChild, 5, id);
            Step(insertChild);
        }
        sqlite3_reset(select);
        raw.Execute("COMMIT");
        state.PauseTiming();
        raw.Execute(("DELETE FROM rows WHERE id > " + std::to_string(parent)).c_str());
        raw.Execute(("DELETE FROM tree WHERE parent = " + std::to_string(parent)).c_str());
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(RawCopyFolder)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void CopyFolder(benchmark::State& state) {
    const World world(state.range(0));
    for (auto _ : state) {
        const VUnicodeString copy = CopyEntry(u"many", u"", true, VUnicodeString(), true);
        Require(!copy.IsEmpty());
        state.PauseTiming();
        Require(DeleteEntry(copy));
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CopyFolder)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

void RenameFolder(benchmark::State& state) {
    const World world(state.range(0));
    VUnicodeString name = u"many";
    for (auto _ : state) {
        const VUnicodeString next = name == u"many" ? u"other"_v : u"many"_v;
        Require(RenameEntry(name, next, VUnicodeString()));
        name = next;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(RenameFolder)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(4);

/// The row with the lists written back with another byte at its end, and the names of the folder read before: a list
/// must be held against them.
void RawRewriteList(benchmark::State& state) {
    const World world(state.range(0));
    RawStore raw(world.path);
    const std::int64_t many = IdOfMany(raw);
    const std::int64_t lists = raw.QueryNumber(
        ("SELECT id FROM tree WHERE name = '__FolderData__' AND parent = " + std::to_string(many)).c_str());
    sqlite3_stmt* names = raw.Prepare("SELECT name, kind FROM tree WHERE parent = ?1 ORDER BY folded");
    sqlite3_stmt* select = raw.Prepare("SELECT data FROM rows WHERE id = ?1");
    sqlite3_stmt* update = raw.Prepare("UPDATE rows SET data = ?2 WHERE id = ?1");
    const bool readsNames = state.range(1) != 0;
    for (auto _ : state) {
        raw.Execute("BEGIN IMMEDIATE");
        std::vector<std::string> read;
        sqlite3_bind_int64(names, 1, many);
        while (readsNames && sqlite3_step(names) == SQLITE_ROW) read.emplace_back(ColumnBytes(names, 0));
        sqlite3_reset(names);
        sqlite3_bind_int64(select, 1, lists);
        Require(sqlite3_step(select) == SQLITE_ROW);
        std::string row(ColumnBytes(select, 0));
        sqlite3_reset(select);
        for (char& byte : row) byte = static_cast<char>(byte ^ 1);  // each page differs, as behind a moved entry
        sqlite3_bind_int64(update, 1, lists);
        sqlite3_bind_blob(update, 2, row.data(), static_cast<int>(row.size()), SQLITE_STATIC);
        Step(update);
        raw.Execute("COMMIT");
    }
}
BENCHMARK(RawRewriteList)
    ->ArgNames({"sessions", "reads names"})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(100);

void ArrangeOne(benchmark::State& state) {
    const World world(state.range(0));
    std::minstd_rand random(1);
    const auto pick = [&] { return SessionName(static_cast<std::int64_t>(random()) % state.range(0)); };
    for (auto _ : state) {
        const VUnicodeString moved = pick();
        VUnicodeString reference = pick();
        while (reference == moved) reference = pick();
        Require(!ArrangeEntry(u"many\\" + moved, reference, true).IsEmpty());
    }
}
BENCHMARK(ArrangeOne)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(100);

void RawDelete(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        const World world(state.range(0));
        RawStore raw(world.path);
        const std::int64_t many = IdOfMany(raw);
        sqlite3_stmt* deleteRow = raw.Prepare("DELETE FROM rows WHERE id = ?1");
        sqlite3_stmt* deleteChild = raw.Prepare("DELETE FROM tree WHERE parent = ?1 AND folded = ?2");
        sqlite3_stmt* list = raw.Prepare("SELECT folded, id FROM tree WHERE parent = ?1 AND kind = 6");
        std::vector<std::pair<std::string, std::int64_t>> keys;
        sqlite3_bind_int64(list, 1, many);
        while (sqlite3_step(list) == SQLITE_ROW) keys.emplace_back(ColumnBytes(list, 0), sqlite3_column_int64(list, 1));
        sqlite3_reset(list);
        state.ResumeTiming();
        raw.Execute("BEGIN IMMEDIATE");
        for (const auto& [folded, id] : keys) {
            sqlite3_bind_int64(deleteRow, 1, id);
            Step(deleteRow);
            sqlite3_bind_int64(deleteChild, 1, many);
            sqlite3_bind_blob(deleteChild, 2, folded.data(), static_cast<int>(folded.size()), SQLITE_STATIC);
            Step(deleteChild);
        }
        raw.Execute("COMMIT");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(RawDelete)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

void DeleteMany(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        const World world(state.range(0));
        std::vector<VUnicodeString> paths;
        for (std::int64_t i = 0; i < state.range(0); ++i) paths.push_back(u"many\\" + SessionName(i));
        state.ResumeTiming();
        Require(DeleteEntries(paths) == paths.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(DeleteMany)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

}  // namespace
}  // namespace connectdialog::bench
