#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace orvista::bench {

using Seconds = std::chrono::duration<double>;

template <typename Work>
Seconds timeOf(Work&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::steady_clock::now() - start;
}

class Durations {
public:
    void add(Seconds duration) { durations_.push_back(duration); }
    /// Zero without durations.
    Seconds median() const {
        if (durations_.empty())
            return Seconds::zero();
        std::vector<Seconds> sorted = durations_;
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
        std::nth_element(sorted.begin(), middle, sorted.end());
        return *middle;
    }

private:
    std::vector<Seconds> durations_;
};

/// Times `work` beside `floor`, turn by turn, so that both see the same machine. Reports the median of each
/// (microseconds) and their ratio; the benchmark's own time is that of `work`. It needs UseManualTime().
template <typename Work, typename Floor>
void runBesideFloor(benchmark::State& state, Work&& work, Floor&& floor) {
    Durations works;
    Durations floors;
    for ([[maybe_unused]] auto turn : state) {
        floors.add(timeOf(floor));
        const Seconds duration = timeOf(work);
        works.add(duration);
        state.SetIterationTime(duration.count());
    }
    state.counters["us"] = works.median().count() * 1e6;
    state.counters["floor_us"] = floors.median().count() * 1e6;
    state.counters["ratio"] = works.median() / floors.median();
}

} // namespace orvista::bench
