// Reading a text file line by line, beside a raw buffered read of the same file with the same decoding.
//
// The raw baseline reads blocks as large as those of the text file, decodes each and cuts lines at line feeds into a
// string that it uses again: the least that a reader of lines must do. The counter `ratio` is our speed over its speed.
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <string>

#include "foundation/vtextfile.h"
#include "scratchfile.h"

namespace {

using namespace connectdialog;

constexpr std::size_t kLines = 50'000;
constexpr std::size_t kBlock = 4096;

/// A file of lines such as settings and key maps have, in one encoding.
class SampleFile : public bench::ScratchFile {
  public:
    explicit SampleFile(TextEncoding encoding)
        : ScratchFile("connectdialog_benchmark_" + std::to_string(static_cast<int>(encoding))) {
        VTextFile file;
        file.SetEncoding(encoding);
        file.SetLineEnding(LineEnding::kLf);
        std::u16string lines;
        for (std::size_t i = 0; i < kLines; ++i) {
            VUnicodeString line;
            line.Format(u"KEY %1!d! = \"Fünfzehn Größen, 会话 %2!d!\" // comment\n", static_cast<int>(i),
                        static_cast<int>(i * 7919 % 1000));
            lines += line.View();
        }
        file.Open(Name(), platform::kGenericRead | platform::kGenericWrite, platform::kCreateAlways);
        file.Write(std::u16string_view(lines));
    }
};

std::size_t ReadLines(const SampleFile& sample) {
    VTextFile file;
    file.Open(sample.Name(), platform::kGenericRead, platform::kOpenExisting);
    VUnicodeString line;
    std::size_t count = 0;
    for (; file.ReadLine(line); ++count) benchmark::DoNotOptimize(line.GetData());
    return count;
}

std::size_t ReadRaw(const SampleFile& sample, TextEncoding encoding) {
    VFile file;
    file.Open(sample.Name(), platform::kGenericRead, platform::kOpenExisting);
    char bytes[kBlock];
    char16_t text[kBlock];
    std::u16string line;
    std::size_t count = 0;
    std::size_t left = 0;
    for (std::size_t done = 1; done > 0;) {
        file.Read(bytes + left, kBlock - left, done);
        const std::string_view block(bytes, left + done);
        const DecodedText decoded = DecodeText(encoding, block, done == 0, text);
        left = block.copy(bytes, block.size() - decoded.consumed, decoded.consumed);
        std::u16string_view rest(text, decoded.written);
        for (std::size_t end; (end = rest.find(u'\n')) != rest.npos; rest.remove_prefix(end + 1)) {
            line.append(rest, 0, end);
            benchmark::DoNotOptimize(line.data());
            line.clear();
            ++count;
        }
        line.append(rest);
    }
    return count;
}

template <class Read>
double SecondsOf(Read read) {
    const auto start = std::chrono::steady_clock::now();
    if (read() != kLines) std::abort();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The two take turns, so that what else the machine does hits both alike.
void BenchmarkLines(benchmark::State& state) {
    const auto encoding = static_cast<TextEncoding>(state.range(0));
    const SampleFile sample(encoding);
    double ours = 0;
    double raw = 0;
    for (auto _ : state) {
        raw += SecondsOf([&] { return ReadRaw(sample, encoding); });
        ours += SecondsOf([&] { return ReadLines(sample); });
    }
    const double lines = static_cast<double>(kLines) * static_cast<double>(state.iterations());
    state.counters["raw lines/s"] = lines / raw;
    state.counters["lines/s"] = lines / ours;
    state.counters["ratio"] = raw / ours;
}
BENCHMARK(BenchmarkLines)
    ->ArgName("encoding")
    ->Arg(static_cast<int>(TextEncoding::kLocal))
    ->Arg(static_cast<int>(TextEncoding::kUtf8))
    ->Arg(static_cast<int>(TextEncoding::kUtf16Le))
    ->Arg(static_cast<int>(TextEncoding::kUtf16Be));

}  // namespace
