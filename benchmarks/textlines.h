// The raw side of reading text files: their lines and nothing else.
#pragma once

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>

#include "foundation/vtextfile.h"

namespace connectdialog::bench {

/// Time on the clock of the wall; `task` gives false when it failed, which ends the benchmark.
template <class Task>
double SecondsOf(Task task) {
    const auto start = std::chrono::steady_clock::now();
    if (!task()) std::abort();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// False when the file cannot be opened.
inline bool ReadLines(const VUnicodeString& name) {
    VTextFile file;
    VUnicodeString line;
    if (!file.Open(name, platform::kGenericRead, platform::kOpenExisting)) return false;
    while (file.ReadLine(line)) benchmark::DoNotOptimize(line.GetData());
    return true;
}

}  // namespace connectdialog::bench
