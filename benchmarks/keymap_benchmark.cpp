// Loading and saving keymap files of a growing number of lines, each beside the least that such a task must do: reading
// the same lines, and writing the same bytes. `ratio` is our time over that time.
#include <benchmark/benchmark.h>
#include <string>

#include "foundation/vreportmessageparams.h"
#include "foundation/vtextfile.h"
#include "keymap/extendedkeytable.h"
#include "keymap/keymap.h"
#include "keymap/keymapwriter.h"
#include "keymap/standardkeytable.h"
#include "scratchfile.h"
#include "textlines.h"

namespace {

using namespace connectdialog;

/// The i-th of all keys with all modifiers, so that bindings fill the map as real ones would.
std::uint32_t SampleKey(std::size_t i) {
    constexpr std::size_t kStandardCount = std::size(kStandardKeys);
    constexpr std::size_t kCount = kStandardCount + std::size(kExtendedKeys);
    const std::size_t row = i % kCount;
    const std::uint32_t code =
        row < kStandardCount ? kStandardKeys[row].code : kExtendedKeys[row - kStandardCount].code;
    return code | static_cast<std::uint32_t>(i / kCount % 16) << 25;
}

/// A keymap of sends, functions and programs, in a file. Keys that do not read back by name are given by number.
class SampleFile : public bench::ScratchFile {
  public:
    explicit SampleFile(std::size_t lines) : ScratchFile("connectdialog_keymap_benchmark") {
        VTextFile file;
        file.SetEncoding(TextEncoding::kUtf8);
        file.Open(Name(), platform::kGenericWrite, platform::kCreateAlways);
        for (std::size_t i = 0; i < lines; ++i) {
            VUnicodeString line;
            const char16_t* action = i % 3 == 0   ? u"\"\\033[%2!d!~\""
                                     : i % 3 == 1 ? u"VT_F20"
                                                  : u"RUN(\"p\")(\"a %2!d!\")";
            line.Format((u"N 0x%1!08X! "_v + action).GetData(), SampleKey(i), static_cast<unsigned>(i));
            file.WriteLine(line);
        }
    }
};

bool Load(const VUnicodeString& name, Keymap& keymap) {
    VReportMessageParams report;
    return keymap.LoadExisting(name, report) && report.GetCode() == 0;
}

/// The two take turns, so that what else the machine does hits both alike.
void BenchmarkLoad(benchmark::State& state) {
    const auto lines = static_cast<std::size_t>(state.range(0));
    const SampleFile sample(lines);
    double raw = 0;
    double ours = 0;
    for (auto _ : state) {
        Keymap keymap;
        raw += bench::SecondsOf([&] { return bench::ReadLines(sample.Name()); });
        ours += bench::SecondsOf([&] { return Load(sample.Name(), keymap); });
    }
    const double total = static_cast<double>(lines) * static_cast<double>(state.iterations());
    state.counters["ns/line"] = ours / total * 1e9;
    state.counters["raw ns/line"] = raw / total * 1e9;
    state.counters["ratio"] = ours / raw;
}
BENCHMARK(BenchmarkLoad)->ArgName("lines")->Arg(1'000)->Arg(2'500)->Arg(5'000)->Arg(10'000);

void BenchmarkSave(benchmark::State& state) {
    const SampleFile sample(static_cast<std::size_t>(state.range(0)));
    Keymap keymap;
    if (!Load(sample.Name(), keymap)) std::abort();
    std::u16string lines;
    for (const VUnicodeString& line : FormatBindings(keymap.GetEntries())) lines.append(line.View()).append(u"\r\n");
    const VUnicodeString text(lines);
    double raw = 0;
    double ours = 0;
    for (auto _ : state) {
        raw += bench::SecondsOf([&] {
            VTextFile file;
            file.SetEncoding(TextEncoding::kUtf8);
            return file.Open(sample.Name(), platform::kGenericWrite, platform::kCreateAlways) && file.Write(text);
        });
        ours += bench::SecondsOf([&] { return keymap.Save(sample.Name()); });
    }
    const double total = static_cast<double>(keymap.GetEntries().GetCount()) * static_cast<double>(state.iterations());
    state.counters["ns/line"] = ours / total * 1e9;
    state.counters["ratio"] = ours / raw;
}
BENCHMARK(BenchmarkSave)->ArgName("lines")->Arg(1'000)->Arg(5'000);

}  // namespace
