// The SQLite store beside plain SQLite code on the same file.
//
// Each pair of figures is measured in this run; the counter `ratio` is ours over raw. The store has 100,000 sessions of
// 190 values; CONNECTDIALOG_BENCH_SESSIONS makes it smaller. Its file lies in the folder for temporary files.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <random>
#include <sqlite3.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "stores/sqlite/sqlitestore.h"

namespace connectdialog {
namespace {

namespace fs = std::filesystem;
/// For what waits for the disk.
struct WallTime {
    static double Now() {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    }
};
/// For what only computes: a busy machine does not blur it.
struct ProcessorTime {
    static double Now() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }
};

constexpr std::size_t kFolderSize = 10000;

std::size_t SessionCount() {
    const char* text = std::getenv("CONNECTDIALOG_BENCH_SESSIONS");
    return text != nullptr ? std::max(std::size_t{1}, static_cast<std::size_t>(std::strtoul(text, nullptr, 10)))
                           : 100000;
}

/// 190 value names like those of a session: 120 numbers, 60 short texts, 10 longer ones.
const std::vector<std::u16string>& ValueNames() {
    static const std::vector<std::u16string> names = [] {
        std::vector<std::u16string> made{u"Is Session"};
        for (char16_t i = 1; i < 190; ++i) {
            made.push_back(u"Setting Of Some Length " + std::u16string(1, u'A' + i / 26) +
                           std::u16string(1, u'A' + i % 26));
        }
        return made;
    }();
    return names;
}

void WriteSession(VProfileKey& key, std::size_t number) {
    const std::vector<std::u16string>& names = ValueNames();
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i % 19 < 12) {
            key.WriteDword(names[i].c_str(), static_cast<std::uint32_t>(i * number % 300));
        } else {
            key.WriteString(names[i].c_str(), i % 19 == 18 ? u"host.of.some.length.example.org" : u"value");
        }
    }
}

bool ReadSession(VProfileKey& key, VUnicodeString& text) {
    const std::vector<std::u16string>& names = ValueNames();
    bool found = true;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        found =
            (i % 19 < 12 ? key.ReadDword(names[i].c_str(), number) : key.ReadString(names[i].c_str(), text)) && found;
    }
    benchmark::DoNotOptimize(number);
    return found;
}

std::u16string SessionPath(std::size_t number) {
    const std::string folder = std::to_string(number / kFolderSize);
    const std::string name = "host number " + std::to_string(1000000 + number);
    return u"Sessions\\" + std::u16string(folder.begin(), folder.end()) + u"\\" +
           std::u16string(name.begin(), name.end());
}

/// The store, built once for all benchmarks, and a raw connection with the settings of ours.
class World {
  public:
    static World& Get() {
        static World world;
        return world;
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World() {
        for (sqlite3_stmt* statement : statements) sqlite3_finalize(statement);
        sqlite3_close(raw);
        factory.reset();
        fs::remove_all(folder);
    }

    std::unique_ptr<VProfileStoreFactory> OpenFile(const std::string& name) const {
        VReportMessageParams report;
        auto opened = stores::OpenSqliteStore((folder / name).string(), {}, report);
        if (opened == nullptr) throw std::runtime_error("cannot open " + name);
        return opened;
    }
    sqlite3_stmt* Prepare(const char* sql) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(raw, sql, -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(raw));
        statements.push_back(statement);
        return statement;
    }
    static sqlite3* OpenRaw(const fs::path& path) {
        sqlite3* opened = nullptr;
        sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                        nullptr);
        sqlite3_exec(opened, "PRAGMA page_size=8192; PRAGMA synchronous=EXTRA; PRAGMA cache_size=-8192", nullptr,
                     nullptr, nullptr);
        return opened;
    }

    std::size_t count = SessionCount();
    fs::path folder = fs::temp_directory_path() / ("connectdialog-bench-" + std::to_string(std::random_device{}()));
    std::unique_ptr<VProfileStoreFactory> factory;
    sqlite3* raw = nullptr;
    std::vector<std::int64_t> ids;  ///< of the sessions, by number

  private:
    World() {
        factory = OpenFile("sessions.db");
        VProfileStore store(factory.get());
        for (std::size_t i = 0; i < count; ++i) {
            VProfileKey key(store.GetRootKey(), SessionPath(i).c_str(), 0);
            WriteSession(key, i);
        }
        if (!store.Close()) throw std::runtime_error("cannot build the store");
        raw = OpenRaw(folder / "sessions.db");
        sqlite3_stmt* list = Prepare("SELECT id FROM tree WHERE kind = 6 ORDER BY name");
        while (sqlite3_step(list) == SQLITE_ROW) ids.push_back(sqlite3_column_int64(list, 0));
        sqlite3_reset(list);
    }
    std::vector<sqlite3_stmt*> statements;
};

/// Runs ours and raw in turn, so that both meet the same machine, and gives ours to the benchmark's clock.
template <class Time, class Ours, class Raw>
void Compare(benchmark::State& state, const char* unit, double perIteration, Ours ours, Raw raw) {
    double oursTime = 0;
    double rawTime = 0;
    for ([[maybe_unused]] auto _ : state) {
        const double start = Time::Now();
        raw();
        const double middle = Time::Now();
        ours();
        const double end = Time::Now();
        rawTime += middle - start;
        oursTime += end - middle;
        state.SetIterationTime(end - middle);
    }
    const double runs = static_cast<double>(state.iterations()) * perIteration;
    state.counters[std::string("raw_us_per_") + unit] = rawTime * 1e6 / runs;
    state.counters[std::string("us_per_") + unit] = oursTime * 1e6 / runs;
    state.counters["ratio"] = oursTime / rawTime;
}

/// What decoding costs at least: each value visited, texts widened.
std::size_t DecodeRaw(const unsigned char* at, std::size_t size, char16_t* text) {
    const unsigned char* const end = at + size;
    const auto number = [&] {
        std::size_t value = 0;
        for (int shift = 0;; shift += 7) {
            value |= static_cast<std::size_t>(*at & 0x7F) << shift;
            if ((*at++ & 0x80) == 0) return value;
        }
    };
    std::size_t sum = 0;
    for (++at; at < end;) {
        sum += number();
        const std::size_t head = number();
        if ((head & 7) == 1) {
            std::size_t value = 0;
            for (std::size_t i = head >> 3; i-- > 0;) value = value << 8 | at[i];
            sum += value;
        } else {
            std::copy(at, at + (head >> 3), text);
        }
        at += head >> 3;
    }
    benchmark::DoNotOptimize(text[0]);
    return sum;
}

/// Sessions of one folder, in random order, each opened and read by its path; raw by its id.
void ReadSessions(benchmark::State& state) {
    World& world = World::Get();
    std::vector<std::size_t> order(std::min(world.count, kFolderSize));
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    std::vector<std::u16string> paths;
    for (const std::size_t i : order) paths.push_back(SessionPath(i));
    sqlite3_stmt* select = world.Prepare("SELECT data FROM rows WHERE id = ?1");
    const bool check = state.range(0) != 0;
    std::vector<char16_t> buffer(1000);
    VUnicodeString text;
    const auto raw = [&] {
        for (const std::size_t i : order) {
            sqlite3_bind_int64(select, 1, world.ids[i]);
            sqlite3_step(select);
            const auto* data = static_cast<const unsigned char*>(sqlite3_column_blob(select, 0));
            benchmark::DoNotOptimize(
                DecodeRaw(data, static_cast<std::size_t>(sqlite3_column_bytes(select, 0)), buffer.data()));
            sqlite3_reset(select);
        }
    };
    const auto ours = [&] {
        for (const std::u16string& path : paths) {
            VProfileStore store(world.factory.get());
            if (check && !store.GetRootKey()->KeyExists(path.c_str())) state.SkipWithError("absent");
            VProfileKey key(store.GetRootKey(), path.c_str(), 0);
            if (!ReadSession(key, text)) state.SkipWithError("a value is missing");
        }
    };
    raw(), ours();
    Compare<ProcessorTime>(state, "session", static_cast<double>(order.size()), ours, raw);
}
BENCHMARK(ReadSessions)->ArgName("KeyExists")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);

/// A folder of 10,000 sessions: names and kinds.
void ListFolder(benchmark::State& state) {
    World& world = World::Get();
    sqlite3_stmt* list = world.Prepare("SELECT name, kind FROM tree WHERE parent = ?1 ORDER BY folded");
    sqlite3_stmt* parent = world.Prepare("SELECT parent FROM tree WHERE kind = 6 ORDER BY name LIMIT 1");
    sqlite3_step(parent);
    const std::int64_t folderId = sqlite3_column_int64(parent, 0);
    sqlite3_reset(parent);
    std::size_t names = 0;
    const auto raw = [&] {
        sqlite3_bind_int64(list, 1, folderId);
        for (names = 0; sqlite3_step(list) == SQLITE_ROW; ++names) {
            benchmark::DoNotOptimize(sqlite3_column_text(list, 0));
            benchmark::DoNotOptimize(sqlite3_column_int(list, 1));
        }
        sqlite3_reset(list);
    };
    const auto ours = [&] {
        VProfileStore store(world.factory.get());
        VProfileKey key(store.GetRootKey(), u"Sessions\\0", 0);
        VProfileKeyIterator children(key, false);
        VUnicodeString name;
        std::size_t met = 0;
        for (std::uint32_t kind = 0; children.NextWithKind(name, kind);) ++met;
        if (met != names) state.SkipWithError("the listings differ");
    };
    raw(), ours();
    Compare<ProcessorTime>(state, "name", static_cast<double>(names), ours, raw);
}
BENCHMARK(ListFolder)->UseManualTime()->Unit(benchmark::kMillisecond);

/// Plain SQLite on a file of its own, with the tables of a store.
class RawStore {
  public:
    explicit RawStore(const fs::path& path) : path(path), handle(World::OpenRaw(path)) {
        Run("CREATE TABLE rows (id INTEGER PRIMARY KEY AUTOINCREMENT, data BLOB NOT NULL) STRICT;"
            "CREATE TABLE tree (parent INTEGER NOT NULL, folded BLOB NOT NULL, name TEXT NOT NULL, kind INTEGER NOT "
            "NULL,"
            "  id INTEGER NOT NULL, PRIMARY KEY (parent, folded)) STRICT, WITHOUT ROWID;");
        sqlite3_prepare_v2(handle, "INSERT INTO rows (id, data) VALUES (?1, ?2)", -1, &row, nullptr);
        sqlite3_prepare_v2(handle, "INSERT INTO tree VALUES (1, ?1, ?2, 6, ?3)", -1, &child, nullptr);
        sqlite3_prepare_v2(handle, "UPDATE rows SET data = ?2 WHERE id = ?1", -1, &update, nullptr);
    }
    ~RawStore() {
        for (sqlite3_stmt* statement : {row, child, update}) sqlite3_finalize(statement);
        sqlite3_close(handle);
    }
    RawStore(const RawStore&) = delete;
    RawStore& operator=(const RawStore&) = delete;

    void Run(const char* sql) {
        if (sqlite3_exec(handle, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(handle));
    }
    void Insert(std::int64_t id, const std::string& data) {
        const std::string name = "host number " + std::to_string(1000000 + id);
        std::string folded;
        for (const char character : name) folded += {'\0', character};
        Write(row, id, data);
        sqlite3_bind_blob(child, 1, folded.data(), static_cast<int>(folded.size()), SQLITE_STATIC);
        sqlite3_bind_text(child, 2, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
        sqlite3_bind_int64(child, 3, id);
        sqlite3_step(child);
        sqlite3_reset(child);
    }
    void Update(std::int64_t id, const std::string& data) { Write(update, id, data); }

  private:
    static void Write(sqlite3_stmt* statement, std::int64_t id, const std::string& data) {
        sqlite3_bind_int64(statement, 1, id);
        sqlite3_bind_blob(statement, 2, data.data(), static_cast<int>(data.size()), SQLITE_STATIC);
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    fs::path path;
    sqlite3* handle;
    sqlite3_stmt* row = nullptr;
    sqlite3_stmt* child = nullptr;
    sqlite3_stmt* update = nullptr;
};

/// A row as the store packed it, for the raw side to write.
std::string SampleRow() {
    World& world = World::Get();
    sqlite3_stmt* select = world.Prepare("SELECT data FROM rows WHERE id = ?1");
    sqlite3_bind_int64(select, 1, world.ids.back());
    sqlite3_step(select);
    std::string row(static_cast<const char*>(sqlite3_column_blob(select, 0)),
                    static_cast<std::size_t>(sqlite3_column_bytes(select, 0)));
    sqlite3_reset(select);
    return row;
}

/// One new session, or one changed value, and its commit.
void SaveOne(benchmark::State& state) {
    const bool isNew = state.range(0) != 0;
    World& world = World::Get();
    const std::string data = SampleRow();
    const fs::path rawPath = world.folder / "raw.db";
    fs::remove(rawPath);
    fs::remove_all(world.folder / "ours.db");
    RawStore rawStore(rawPath);
    const auto factory = world.OpenFile("ours.db");
    std::int64_t next = 1;
    const auto save = [&](std::size_t number, bool whole) {
        VProfileStore store(factory.get());
        {
            VProfileKey key(store.GetRootKey(), SessionPath(number).c_str(), 0);
            if (whole) {
                WriteSession(key, number);
            } else {
                key.WriteDword(ValueNames()[20].c_str(), static_cast<std::uint32_t>(next));
            }
        }
        if (!store.Close()) state.SkipWithError("not saved");
    };
    const auto raw = [&] {
        ++next;
        rawStore.Run("BEGIN IMMEDIATE");
        isNew ? rawStore.Insert(next, data) : rawStore.Update(1, next % 2 == 0 ? data + 'x' : data);
        rawStore.Run("COMMIT");
    };
    const auto ours = [&] { save(isNew ? static_cast<std::size_t>(next) : 1, isNew); };
    rawStore.Insert(1, data);
    save(1, true);
    Compare<WallTime>(state, "save", 1, ours, raw);
}
BENCHMARK(SaveOne)->ArgName("new")->Arg(1)->Arg(0)->UseManualTime()->Iterations(150)->Unit(benchmark::kMillisecond);

/// The values of WriteSession packed by hand.
void PackRow(std::size_t number, std::string& row) {
    const auto append = [&](std::uint32_t value) {
        for (; value >= 0x80; value >>= 7) row.push_back(static_cast<char>(value | 0x80));
        row.push_back(static_cast<char>(value));
    };
    row.assign(1, '\x01');
    for (std::size_t i = 0; i < ValueNames().size(); ++i) {
        append(1);
        if (i % 19 < 12) {
            const auto value = static_cast<std::uint32_t>(i * number % 300);
            const std::uint32_t size = value > 255 ? 2 : value > 0 ? 1 : 0;
            append(size << 3 | 1);
            for (std::uint32_t at = 0; at < size; ++at) row.push_back(static_cast<char>(value >> (8 * at)));
        } else {
            const std::u16string_view text = i % 19 == 18 ? u"host.of.some.length.example.org" : u"value";
            append(static_cast<std::uint32_t>(text.size()) << 3 | 2);
            for (const char16_t unit : text) row.push_back(static_cast<char>(unit));
        }
    }
}

/// 10,000 new sessions in one unit.
void BuildTenThousand(benchmark::State& state) {
    World& world = World::Get();
    const auto raw = [&] {
        fs::remove(world.folder / "rawbuild.db");
        RawStore store(world.folder / "rawbuild.db");
        store.Run("BEGIN IMMEDIATE");
        std::string data;
        for (std::int64_t i = 0; i < 10000; ++i) {
            PackRow(static_cast<std::size_t>(i), data);
            store.Insert(i + 1, data);
        }
        store.Run("COMMIT");
    };
    const auto ours = [&] {
        fs::remove(world.folder / "build.db");
        const auto factory = world.OpenFile("build.db");
        VProfileStore store(factory.get());
        for (std::size_t i = 0; i < 10000; ++i) {
            VProfileKey key(store.GetRootKey(), SessionPath(i).c_str(), 0);
            WriteSession(key, i);
        }
        if (!store.Close()) state.SkipWithError("not built");
    };
    Compare<ProcessorTime>(state, "session", 10000, ours, raw);
}
BENCHMARK(BuildTenThousand)->UseManualTime()->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace connectdialog
