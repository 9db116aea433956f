// Enciphering and deciphering a password, beside the key schedules that these take when each is run anew.
//
// The raw baseline is four schedules of the cipher: two layers, there and back. The counter `ratio` is our time over
// it.
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>

#include "profile/vblowfishstring.h"
#include "profile/vcipherblowfish.h"

namespace {

using namespace connectdialog;

constexpr int kSchedules = 4;

double SecondsOf(auto work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void RunSchedules() {
    constexpr std::array<std::uint8_t, 16> kKey = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    for (int i = 0; i < kSchedules; ++i) {
        VCipherBlowfish cipher;
        cipher.Init(kKey.data(), kKey.data());
        benchmark::DoNotOptimize(cipher);
    }
}

/// The two take turns, so that what else the machine does hits both alike. Mode 0 is that of the store.
void BenchmarkPassword(benchmark::State& state) {
    VBlowfishString password;
    password.SetMode(static_cast<std::uint32_t>(state.range(0)));
    password.Set(u"sixteen letters!");
    double ours = 0;
    double raw = 0;
    for (auto _ : state) {
        raw += SecondsOf(RunSchedules);
        ours += SecondsOf([&] {
            if (password.DecipherBlowfish(password.EncipherBlowfish()).GetLength() != 16) std::abort();
        });
    }
    const auto runs = static_cast<double>(state.iterations());
    state.counters["raw us"] = raw / runs * 1e6;
    state.counters["us"] = ours / runs * 1e6;
    state.counters["ratio"] = ours / raw;
}
BENCHMARK(BenchmarkPassword)->ArgName("mode")->Arg(0)->Arg(2);

}  // namespace
