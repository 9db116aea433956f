// Copying strings, beside an atomic increment; taking texts apart, beside a plain split of the same text.
//
// The counter `ratio` is our time over the raw time. What is compared takes turns, and the best turn of each counts:
// these are so short that another process in between would be most of what is measured.
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "foundation/texttools.h"

namespace {

using namespace connectdialog;

constexpr double kNever = std::numeric_limits<double>::infinity();

/// Lowers `best` to the seconds that the work takes, when it takes less.
template <class Work>
void Time(double& best, Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

/// Raw does what the copy of a counted handle must: an atomic increment of the count, and the pointer is stored.
void BenchmarkCopy(benchmark::State& state) {
    constexpr std::size_t kCopies = 2048;
    const VUnicodeString source(u"a session's name");
    const auto slots = std::make_unique_for_overwrite<void*[]>(kCopies);
    std::allocator<VUnicodeString> allocator;
    VUnicodeString* const strings = allocator.allocate(kCopies);
    std::atomic<std::int32_t> references{1};
    double ours = kNever;
    double raw = kNever;
    for (auto _ : state) {
        Time(raw, [&] {
            for (std::size_t i = 0; i < kCopies; ++i) {
                references.fetch_add(1, std::memory_order_relaxed);
                slots[i] = &references;
            }
            benchmark::DoNotOptimize(slots.get());
            benchmark::ClobberMemory();
        });
        Time(ours, [&] {
            for (std::size_t i = 0; i < kCopies; ++i) std::construct_at(strings + i, source);
            benchmark::DoNotOptimize(strings);
            benchmark::ClobberMemory();
        });
        std::destroy_n(strings, kCopies);
    }
    allocator.deallocate(strings, kCopies);
    state.counters["raw ns"] = raw / kCopies * 1e9;
    state.counters["ns"] = ours / kCopies * 1e9;
    state.counters["ratio"] = ours / raw;
}
BENCHMARK(BenchmarkCopy);

/// A text of that many characters, put together from one piece.
struct Sample {
    const char* name;
    std::u16string_view piece;
};
constexpr Sample kSamples[] = {
    {"words", u"alpha,beta gamma,\"d, e\","},
    {"one token", u"abcdefghij"},
    {"empty tokens", u","},
    {"one token of quotes", u"a\"b\""},
};

std::size_t SplitRaw(std::u16string_view text) {
    std::vector<std::u16string> tokens;
    std::u16string token;
    bool isQuoted = false;
    for (const char16_t character : text) {
        if (character == u'"') {
            isQuoted = !isQuoted;
        } else if (character == u',' && !isQuoted) {
            tokens.push_back(token);
            token.clear();
        } else {
            token += character;
        }
    }
    tokens.push_back(token);
    return tokens.size();
}

std::size_t SplitOurs(std::u16string_view text) {
    VStringArray tokens;
    VTokenize(text, tokens, {u","}, {u"\"\""}, false, true);
    return tokens.GetCount();
}

/// Linear: the time of a character is the same whatever the length of the text.
void BenchmarkTokenize(benchmark::State& state) {
    const Sample& sample = kSamples[state.range(0)];
    const auto length = static_cast<std::size_t>(state.range(1));
    std::u16string text;
    while (text.size() < length) text += sample.piece;
    double ours = kNever;
    double raw = kNever;
    for (auto _ : state) {
        std::size_t expected = 0;
        std::size_t count = 0;
        Time(raw, [&] { expected = SplitRaw(text); });
        Time(ours, [&] { count = SplitOurs(text); });
        if (count != expected) std::abort();
    }
    const double characters = static_cast<double>(text.size());
    state.SetLabel(sample.name);
    state.counters["raw ns"] = raw / characters * 1e9;
    state.counters["ns"] = ours / characters * 1e9;
    state.counters["ratio"] = ours / raw;
}
BENCHMARK(BenchmarkTokenize)->ArgNames({"text", "length"})->ArgsProduct({{0, 1, 2, 3}, {1'000, 30'000, 1'000'000}});

}  // namespace
