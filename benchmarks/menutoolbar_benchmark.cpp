// Parsing descriptions of menus and toolbars of a growing number of lines, beside reading the same lines: `speed` is
// our speed over that speed. And what a host does at its start: all that leads from a file to menus, bars and keys.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <limits>
#include <span>

#include "foundation/vtextfile.h"
#include "menutoolbar/menubuild.h"
#include "menutoolbar/standardcommands.h"
#include "menutoolbar/vcustommenutoolbar.h"
#include "scratchfile.h"
#include "textlines.h"

namespace {

using namespace connectdialog;

/// Twenty lines that use all that a description has; `%1!d!` makes their names differ. Keys come before their use.
constexpr const char16_t* kLines[] = {
    u"// ---- the commands of group %1!d!, with their keys and the texts that explain them ----",
    u"ACCELERATOR",
    u"    key-connect-%1!d!, C, VIRTKEY|ALT",
    u"    key-copy-%1!d!, C, CTRL|SHIFT|VIRTKEY",
    u"END",
    u"STRINGTABLE",
    u"    text-connect-%1!d!, \"Connects to the saved session that you pick\\nConnect\"",
    u"    text-copy-%1!d!, \"Copies the selected text to the clipboard\\nCopy\"",
    u"END",
    u"",
    u"POPUPMENU \"Group %1!d!\"",
    u"    MENUITEM \"&Connect...\", MENU_CONNECT, , text-connect-%1!d!, key-connect-%1!d!",
    u"    MENUITEM \"&Quick connect...\", MENU_QUICK_CONNECT",
    u"    SEPARATOR",
    u"    POPUPMENU \"More of it\"",
    u"        MENUITEM \"&Copy, also as a picture\", MENU_COPY, , text-copy-%1!d!, key-copy-%1!d!",
    u"        MENUITEM \"&Open the session\", OPEN_SESSION, Servers\\Web\\Frontend\\server-%1!d!",
    u"        MENUITEM \"Sa&y hello\", SEND, \"echo hello, world\\r\"",
    u"    END",
    u"END",
};

/// Short items and nothing else: the least to read and the most to make.
constexpr const char16_t* kItems[] = {
    u"MENU menu%1!d!",
    u"    MENUITEM \"&Item number %1!d!\", MENU_COPY",
    u"    MENUITEM \"&Item number %1!d!\", MENU_PASTE",
    u"    MENUITEM \"&Item number %1!d!\", MENU_SELECT_ALL",
    u"END",
};

class SampleFile : public bench::ScratchFile {
  public:
    SampleFile(std::span<const char16_t* const> pattern, std::size_t lines)
        : ScratchFile("connectdialog_menutoolbar_benchmark") {
        VTextFile file;
        file.SetEncoding(TextEncoding::kUtf8);
        file.Open(Name(), platform::kGenericWrite, platform::kCreateAlways);
        for (std::size_t i = 0; i < lines; ++i) {
            VUnicodeString line;
            line.Format(pattern[i % pattern.size()], static_cast<unsigned>(i / pattern.size()));
            file.WriteLine(line);
        }
    }
};

/// The two take turns, and the best turn of each counts: what else the machine does only makes turns longer.
void Measure(benchmark::State& state, std::span<const char16_t* const> pattern) {
    const auto lines = static_cast<std::size_t>(state.range(0));
    const SampleFile sample(pattern, lines);
    double raw = std::numeric_limits<double>::max();
    double ours = raw;
    for (auto _ : state) {
        VMenuToolbarTextRep rep;
        rep.SetCommandTable(&GetStandardMenuCommands());
        rep.SetFileName(sample.Name());
        bench::ReadLines(sample.Name());  // so that neither is the one that finds cold caches
        raw = std::min(raw, bench::SecondsOf([&] { return bench::ReadLines(sample.Name()); }));
        ours = std::min(ours, bench::SecondsOf([&] { return rep.Parse() == MenuParseResult::kClean; }));
    }
    state.counters["ns/line"] = ours / static_cast<double>(lines) * 1e9;
    state.counters["raw ns/line"] = raw / static_cast<double>(lines) * 1e9;
    state.counters["speed"] = raw / ours;
}

void BenchmarkParse(benchmark::State& state) {
    Measure(state, kLines);
}
BENCHMARK(BenchmarkParse)->ArgName("lines")->Arg(1'000)->Arg(5'000)->Arg(10'000)->Arg(20'000)->Arg(40'000);

void BenchmarkParseItems(benchmark::State& state) {
    Measure(state, kItems);
}
BENCHMARK(BenchmarkParseItems)->ArgName("lines")->Arg(10'000);

/// From the file to what windows show.
void BenchmarkBuildMenus(benchmark::State& state) {
    const SampleFile sample(kLines, static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        VCustomMenuToolbar menus;
        VMenuToolbarTextRep& rep = menus.GetRep();
        rep.SetCommandTable(&GetStandardMenuCommands());
        rep.SetFileName(sample.Name());
        if (rep.Parse() != MenuParseResult::kClean) std::abort();
        for (const MenuEntryPtr<VMenuToolbar>& block : rep.GetMenus()) menus.RegisterCommands(*block);
        for (const MenuEntryPtr<VMenuToolbar>& block : rep.GetMenus())
            benchmark::DoNotOptimize(MakePopupMenu(*block, menus));
        benchmark::DoNotOptimize(MakeAccelerators(menus));
        rep.Reset();
    }
}
BENCHMARK(BenchmarkBuildMenus)->ArgName("lines")->Arg(200)->Arg(2'000)->Unit(benchmark::kMillisecond);

}  // namespace
