// The session tree of the connect dialog over the SQLite store, without a window.
#include <benchmark/benchmark.h>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "config/sessionconfig.h"
#include "connectdialog/ui/connectdialog.h"
#include "foundation/vreportmessageparams.h"
#include "profile/vprofilekey.h"
#include "rawstore.h"
#include "resources/connectcommands.h"
#include "resources/dialogids.h"
#include "sessiondb/sessionpaths.h"
#include "sessiondb/sessiontree.h"
#include "stores/openstore.h"
#include "suite/configpanels/referenceconfigpanels.h"
#include "suite/dialogkit/headless/headlessdialog.h"
#include "suite/dialogkit/headless/headlesskit.h"
#include "suite/dialogkit/headless/headlesstree.h"
#include "suite/hostsetup/hostsetup.h"

namespace connectdialog::bench {
namespace {

constexpr int kFolders = 1000;
constexpr int kSessionsInFolder = 100;
constexpr int kSessions = kFolders * kSessionsInFolder;

VUnicodeString Name(const char16_t* format, int number) {
    VUnicodeString name;
    name.Format(format, number);
    return name;
}

class BenchDialog : public ConnectDialog {
  public:
    BenchDialog() : ConnectDialog(u"Sessions"_v, {}, nullptr) { Require(Create()); }
    ~BenchDialog() override { Destroy(); }
    HeadlessTree& Tree() { return *dynamic_cast<HeadlessDialog&>(*GetWindow()).GetTree(ConnectDialogIds::kTree); }
    VTreeItems& Items() { return GetTree().GetItems(); }
    void Expand(TreeItem item) { ExpandItem(item); }

  protected:
    RunningSessions AskRunningSessions() override { return {}; }
};

/// A scratch store: 1,000 folders "f0000" to "f0999" with 100 whole sessions each.
class World {
  public:
    World() {
        folder =
            std::filesystem::temp_directory_path() / ("dialog-benchmark-" + std::to_string(std::random_device()()));
        std::filesystem::create_directory(folder);
        path = (folder / "bench.db").string();
        VReportMessageParams report;
        factory = stores::OpenProfileStoreFactory(VUnicodeString(("sqlite:" + path).c_str()), report);
        Require(factory != nullptr);
        InstallReferenceSuite(u"NorHalden", *factory);
        const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
        VProfileStore unit(nullptr);
        Require(unit.JoinUnitOfWork());
        for (int i = 0; i < kFolders; ++i) Fill(Name(u"f%1!04d!", i), kSessionsInFolder, *session);
        Require(unit.Close());
        kit.AnswerBoxes([](const VUnicodeString&, unsigned) { return kAnswerYes; });
    }
    ~World() { std::filesystem::remove_all(folder); }

    static void Fill(const VUnicodeString& parent, int count, ISessionConfig& session) {
        Require(StoreSessionEntries(parent, session, static_cast<std::size_t>(count), [&](std::size_t index) {
            session.SetPath(JoinEntryPath(parent, Name(u"server-%1!06d!", static_cast<int>(index))));
            session.GetConnectConfig()->SetHostName(GetEntryLeaf(session.GetPath()) + u".example.net");
            return true;
        }));
    }

    HeadlessDialogKit kit;
    std::string path;

  private:
    std::filesystem::path folder;
    std::unique_ptr<VProfileStoreFactory> factory;
};

World& GetWorld() {
    static World world;
    return world;
}

void SetExpanded(bool isExpanded) {
    for (int i = 0; i < kFolders; ++i) Require(WriteIsExpanded(Name(u"f%1!04d!", i), isExpanded));
    Require(WriteIsExpanded(VUnicodeString(), isExpanded));
}

void RawListNames(benchmark::State& state) {
    RawStore raw(GetWorld().path);
    sqlite3_stmt* select = raw.Prepare("SELECT parent, name, kind FROM tree ORDER BY parent, folded");
    for (auto _ : state) {
        std::vector<std::pair<std::int64_t, std::string>> names;
        while (sqlite3_step(select) == SQLITE_ROW)
            names.emplace_back(sqlite3_column_int64(select, 0), ColumnBytes(select, 1));
        sqlite3_reset(select);
        Require(names.size() > static_cast<std::size_t>(kSessions));
    }
}
BENCHMARK(RawListNames)->Unit(benchmark::kMillisecond);

/// Argument 1: all folders were open the last time, so that every session is in the tree.
void ReloadTree(benchmark::State& state) {
    GetWorld();
    const bool isExpanded = state.range(0) != 0;
    {
        VProfileStore unit(nullptr);
        Require(unit.JoinUnitOfWork());
        SetExpanded(isExpanded);
        Require(unit.Close());
    }
    const auto before = mallinfo2().uordblks;
    BenchDialog dialog;
    const auto used = static_cast<double>(mallinfo2().uordblks - before);
    for (auto _ : state) dialog.ReloadTree();
    const auto count = static_cast<double>(dialog.Items().GetCount());
    state.counters["items"] = count;
    state.counters["bytes/item"] = used / count;
}
BENCHMARK(ReloadTree)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void ExpandFolder(benchmark::State& state) {
    GetWorld();
    const auto count = static_cast<int>(state.range(0));
    const VUnicodeString name = Name(u"large-%1!d!", count);
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
    World::Fill(name, count, *session);
    BenchDialog dialog;
    for (auto _ : state) {
        state.PauseTiming();
        dialog.ReloadTree();
        const TreeItem item = dialog.Tree().Find(name);
        state.ResumeTiming();
        dialog.Expand(item);
        Require(dialog.Items().GetFirstChild(item) != TreeItem::kNone);
    }
    state.counters["us/session"] =
        benchmark::Counter(1e6 / count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(ExpandFolder)->Arg(1000)->Arg(10000)->Arg(40000)->Unit(benchmark::kMillisecond)->Iterations(5);

void FindNothing(BenchDialog& dialog) {
    GetWorld().kit.ExpectDialog(FindSessionIds::kDialog, [](HeadlessDialog& find) {
        find.Type(FindSessionIds::kText, u"no such text"_v);
        Require(find.Press(kIdOk));
    });
    dialog.FindFirst();
}

/// The first search of a dialog reads every session; the second has them all.
void FindInAll(benchmark::State& state) {
    const bool isSecond = state.range(0) != 0;
    GetWorld();
    for (auto _ : state) {
        state.PauseTiming();
        const auto before = mallinfo2().uordblks;
        auto dialog = std::make_unique<BenchDialog>();
        if (isSecond) FindNothing(*dialog);
        state.ResumeTiming();
        FindNothing(*dialog);
        state.PauseTiming();
        state.counters["bytes/session"] = static_cast<double>(mallinfo2().uordblks - before) / kSessions;
        dialog.reset();
        state.ResumeTiming();
    }
}
BENCHMARK(FindInAll)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);

void DeleteSelected(benchmark::State& state) {
    GetWorld();
    const auto count = static_cast<int>(state.range(0));
    const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"", nullptr));
    BenchDialog dialog;
    for (auto _ : state) {
        state.PauseTiming();
        World::Fill(u"doomed"_v, count, *session);
        dialog.ReloadTree();
        const TreeItem folder = dialog.Tree().Find(u"doomed");
        dialog.Expand(dialog.Items().GetFirstChild(TreeItem::kNone));
        dialog.Expand(folder);
        Require(dialog.Tree().Click(dialog.Items().GetFirstChild(folder)));
        Require(dialog.Tree().Click(dialog.Items().GetLastChild(folder), Accelerator::kShift));
        state.ResumeTiming();
        dialog.DeleteSelection();
        Require(dialog.Items().GetFirstChild(folder) == TreeItem::kNone);
    }
    state.counters["us/session"] =
        benchmark::Counter(1e6 / count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(DeleteSelected)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace connectdialog::bench
