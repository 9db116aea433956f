// Sessions and folders over the SQLite store, each beside the same work in plain SQLite code.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "allocationcount.h"
#include "config/sessionconfig.h"
#include "config/settingwalk.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "rawstore.h"
#include "sessiondb/profilefolderdata.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::bench {
namespace {

constexpr int kSmallFolder = 10000;
constexpr int kLargeFolder = 100000;

VUnicodeString SessionPath(const char16_t* folder, int number) {
    VUnicodeString path;
    path.Format(u"%1\\server-%2!06d!", folder, number);
    return path;
}

/// A scratch store, filled once: a folder "small" with whole sessions, "large" with session keys only.
class World {
  public:
    World() {
        folder =
            std::filesystem::temp_directory_path() / ("session-benchmark-" + std::to_string(std::random_device()()));
        std::filesystem::create_directory(folder);
        path = (folder / "bench.db").string();
        VReportMessageParams report;
        factory = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + path).c_str()), report);
        Require(factory != nullptr);
        InstallReferenceSuite(u"NorHalden", *factory);
        FillSmall();
        FillLarge();
    }
    ~World() { std::filesystem::remove_all(folder); }

    std::string path;

  private:
    void FillSmall() {
        const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
        Require(StoreSessionEntries(u"small", *session, kSmallFolder, [&](std::size_t index) {
            const VUnicodeString path = SessionPath(u"small", static_cast<int>(index));
            session->SetPath(path);
            session->GetConnectConfig()->SetHostName(GetEntryLeaf(path) + u".example.net");
            return true;
        }));
    }
    void FillLarge() {
        VProfileStore store(nullptr);
        for (int i = 0; i < kLargeFolder; ++i) {
            VProfileKey key(store.GetRootKey(), BuildSessionKeyPath(SessionPath(u"large", i)).GetData(), 0);
            key.WriteDword(kIsSessionValue, 1);
        }
        Require(store.Close());
        ProfileFolderData large(u"large", false);
        Require(large.SaveToStore());
    }

    std::filesystem::path folder;
    std::unique_ptr<VProfileStoreFactory> factory;
};

World& GetWorld() {
    static World world;
    return world;
}

std::int64_t IdOf(RawStore& raw, const char* name) {
    return raw.QueryNumber((std::string("SELECT id FROM tree WHERE name = '") + name + "'").c_str());
}

void RawReadSession(benchmark::State& state) {
    RawStore raw(GetWorld().path);
    const std::int64_t first = IdOf(raw, "server-000000");
    sqlite3_stmt* select = raw.Prepare("SELECT data FROM rows WHERE id = ?1");
    std::minstd_rand random(1);
    std::vector<RawValue> values;
    for (auto _ : state) {
        sqlite3_bind_int64(select, 1, first + static_cast<int>(random() % kSmallFolder));
        Require(sqlite3_step(select) == SQLITE_ROW);
        DecodeRow(ColumnBytes(select, 0), values);
        sqlite3_reset(select);
        benchmark::DoNotOptimize(values.data());
    }
    state.counters["values"] = static_cast<double>(values.size());
}
BENCHMARK(RawReadSession);

void LoadSession(benchmark::State& state) {
    GetWorld();
    std::minstd_rand random(1);
    std::vector<VUnicodeString> paths;
    for (int i = 0; i < kSmallFolder; ++i) paths.push_back(SessionPath(u"small", i));
    for (const VUnicodeString& path : paths) OpenSession(path);
    const std::uint64_t before = allocations;
    for (auto _ : state) {
        const VRef<ISessionConfig> session = OpenSession(paths[random() % kSmallFolder]);
        benchmark::DoNotOptimize(session.Get());
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocations - before), benchmark::Counter::kAvgIterations);
}
BENCHMARK(LoadSession);

void CompareUnchangedSession(benchmark::State& state) {
    GetWorld();
    const VRef<ISessionConfig> session = OpenSession(SessionPath(u"small", 1));
    for (auto _ : state) benchmark::DoNotOptimize(session->IsChanged());
}
BENCHMARK(CompareUnchangedSession);

void CloneSession(benchmark::State& state) {
    GetWorld();
    const VRef<ISessionConfig> session = OpenSession(SessionPath(u"small", 1));
    for (auto _ : state) VRef<ISessionConfig>::Adopt(session->Clone());
}
BENCHMARK(CloneSession);

const char* FolderOf(benchmark::State& state) {
    return state.range(0) == kSmallFolder ? "small" : "large";
}

void RawListFolder(benchmark::State& state) {
    RawStore raw(GetWorld().path);
    sqlite3_stmt* select = raw.Prepare("SELECT name, kind FROM tree WHERE parent = ?1 ORDER BY folded");
    const std::int64_t parent = IdOf(raw, FolderOf(state));
    for (auto _ : state) {
        std::vector<std::pair<std::string, int>> names;
        sqlite3_bind_int64(select, 1, parent);
        while (sqlite3_step(select) == SQLITE_ROW)
            names.emplace_back(ColumnBytes(select, 0), sqlite3_column_int(select, 1));
        sqlite3_reset(select);
        Require(names.size() > static_cast<std::size_t>(state.range(0)));
    }
}
BENCHMARK(RawListFolder)->Arg(kSmallFolder)->Arg(kLargeFolder)->Unit(benchmark::kMillisecond);

void LoadFolder(benchmark::State& state) {
    GetWorld();
    const VUnicodeString path(FolderOf(state));
    for (auto _ : state) {
        const ProfileFolderData folder(path, true);
        Require(folder.GetSessions().GetCount() == static_cast<std::uint64_t>(state.range(0)));
    }
}
BENCHMARK(LoadFolder)->Arg(kSmallFolder)->Arg(kLargeFolder)->Unit(benchmark::kMillisecond);

/// One new session durably, as plain code would: its row and its entry in the listing, in one transaction.
void RawCommitSession(benchmark::State& state) {
    RawStore raw(GetWorld().path);
    sqlite3_stmt* select = raw.Prepare("SELECT data FROM rows WHERE id = ?1");
    sqlite3_bind_int64(select, 1, IdOf(raw, "server-000001"));
    Require(sqlite3_step(select) == SQLITE_ROW);
    const std::string row(ColumnBytes(select, 0));
    sqlite3_reset(select);
    std::int64_t id = raw.QueryNumber("SELECT max(id) FROM rows");
    sqlite3_stmt* insertRow = raw.Prepare("INSERT INTO rows (id, data) VALUES (?1, ?2)");
    sqlite3_stmt* insertChild =
        raw.Prepare("INSERT INTO tree (parent, folded, name, kind, id) VALUES (-1, ?1, 'raw', 6, ?2)");
    for (auto _ : state) {
        const std::string folded = std::to_string(++id);
        raw.Execute("BEGIN IMMEDIATE");
        sqlite3_bind_int64(insertRow, 1, id);
        sqlite3_bind_blob(insertRow, 2, row.data(), static_cast<int>(row.size()), SQLITE_STATIC);
        Require(sqlite3_step(insertRow) == SQLITE_DONE);
        sqlite3_reset(insertRow);
        sqlite3_bind_blob(insertChild, 1, folded.data(), static_cast<int>(folded.size()), SQLITE_STATIC);
        sqlite3_bind_int64(insertChild, 2, id);
        Require(sqlite3_step(insertChild) == SQLITE_DONE);
        sqlite3_reset(insertChild);
        raw.Execute("COMMIT");
    }
}
BENCHMARK(RawCommitSession)->Unit(benchmark::kMicrosecond);

void SaveNewSession(benchmark::State& state) {
    GetWorld();
    int number = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const VUnicodeString path = SessionPath(u"saved", ++number);
        const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(GetEntryLeaf(path).GetData(), nullptr));
        session->SetPath(path);
        state.ResumeTiming();
        Require(SaveSession(*session));
    }
}
BENCHMARK(SaveNewSession)->Unit(benchmark::kMicrosecond)->Iterations(200);

void RawCommitValue(benchmark::State& state) {
    RawStore raw(GetWorld().path);
    const std::int64_t id = IdOf(raw, "server-000003");
    sqlite3_stmt* select = raw.Prepare("SELECT data FROM rows WHERE id = ?1");
    sqlite3_stmt* update = raw.Prepare("UPDATE rows SET data = ?2 WHERE id = ?1");
    for (auto _ : state) {
        raw.Execute("BEGIN IMMEDIATE");
        sqlite3_bind_int64(select, 1, id);
        Require(sqlite3_step(select) == SQLITE_ROW);
        std::string row(ColumnBytes(select, 0));
        row.back() = static_cast<char>(row.back() ^ 1);  // SQLite does not write a page that stays the same
        sqlite3_reset(select);
        sqlite3_bind_int64(update, 1, id);
        sqlite3_bind_blob(update, 2, row.data(), static_cast<int>(row.size()), SQLITE_STATIC);
        Require(sqlite3_step(update) == SQLITE_DONE);
        sqlite3_reset(update);
        raw.Execute("COMMIT");
    }
}
BENCHMARK(RawCommitValue)->Unit(benchmark::kMicrosecond);

void ChangeOneValue(benchmark::State& state) {
    GetWorld();
    const VRef<ISessionConfig> session = OpenSession(SessionPath(u"small", 2));
    auto& delay = dynamic_cast<VProfile<int>&>(*session->FindValue(u"Line Send Delay"));
    for (auto _ : state) {
        delay.Set(delay.Get() + 1);
        Require(SaveSession(*session));
    }
}
BENCHMARK(ChangeOneValue)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace connectdialog::bench
