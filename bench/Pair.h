#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <vector>

namespace orvista::bench {

using Seconds = std::chrono::duration<double>;

/// What a piece of work took: on the clock on the wall, and of the processor. The latter also counts where
/// other programs keep the machine busy.
struct Cost {
    Seconds wall{};
    Seconds processor{};
};

template <typename Work>
Cost costOf(Work&& work) {
    const std::clock_t processorStart = std::clock();
    const auto start = std::chrono::steady_clock::now();
    work();
    return {std::chrono::steady_clock::now() - start,
            Seconds(static_cast<double>(std::clock() - processorStart) / CLOCKS_PER_SEC)};
}

/// The costs of the same work, done again and again.
class Costs {
public:
    void add(const Cost& cost) {
        wall_.push_back(cost.wall);
        processor_ += cost.processor;
    }
    /// Median on the wall clock; zero without costs.
    Seconds wall() const {
        if (wall_.empty())
            return Seconds::zero();
        std::vector<Seconds> sorted = wall_;
        const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
        std::nth_element(sorted.begin(), middle, sorted.end());
        return *middle;
    }
    /// The shortest on the wall clock; zero without costs.
    Seconds least() const {
        return wall_.empty() ? Seconds::zero() : *std::min_element(wall_.begin(), wall_.end());
    }
    /// Sum of processor time.
    Seconds processor() const { return processor_; }

private:
    std::vector<Seconds> wall_;
    Seconds processor_{};
};

/// Times `work` beside `floor`, turn by turn, so that both see the same machine. Reports the median of each
/// (microseconds), their ratio and that of the shortest, which a busy machine disturbs least, what the work
/// takes of the processor and the ratio of that; the benchmark's own time is that of `work`. It needs
/// UseManualTime().
template <typename Work, typename Floor>
void runBesideFloor(benchmark::State& state, Work&& work, Floor&& floor) {
    Costs works;
    Costs floors;
    for ([[maybe_unused]] auto turn : state) {
        floors.add(costOf(floor));
        const Cost cost = costOf(work);
        works.add(cost);
        state.SetIterationTime(cost.wall.count());
    }
    state.counters["us"] = works.wall().count() * 1e6;
    state.counters["floor_us"] = floors.wall().count() * 1e6;
    state.counters["ratio"] = works.wall() / floors.wall();
    state.counters["least_ratio"] = works.least() / floors.least();
    state.counters["cpu_us"] = works.processor().count() * 1e6 / static_cast<double>(state.iterations());
    state.counters["cpu_ratio"] = works.processor() / floors.processor();
}

} // namespace orvista::bench
