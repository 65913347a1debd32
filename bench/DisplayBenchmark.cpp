#include "display/RasterAt.h"

#include <benchmark/benchmark.h>

#include <string>

/// One frame of a panel of 128 x 16. At 50 frames a second a frame may take 20 ms: the counter "share" is the
/// part of one core that drawing takes then.
namespace orvista::bench {
namespace {

constexpr double framesASecond = 50.0;

void drawFrames(benchmark::State& state, const std::string& script) {
    const NoBitmaps noBitmaps;
    Programme programme({128}, fieldFormats(Project()));
    programme.add({}, script, noBitmaps);
    const DisplayValues values;
    std::int64_t t = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(rasterAt(programme, values, t += 20));
    state.counters["share"] = benchmark::Counter(static_cast<double>(state.iterations()) / framesASecond,
                                                 benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

const std::string pump = "TEXT 0 0 RED BLACK \"Temp:        C\"\r\n"
                         "DISPVAR 48 0 GREEN BLACK RegVar1\r\n";

void still(benchmark::State& state) {
    drawFrames(state, pump + "ACT STILL 3000");
}
BENCHMARK(still);

void scrolling(benchmark::State& state) {
    drawFrames(state, pump + "IN GO-LEFT 1 50\r\nOUT GO-LEFT 1 50");
}
BENCHMARK(scrolling);

void fading(benchmark::State& state) {
    drawFrames(state, pump + "IN FADE 50\r\nOUT FADE 50");
}
BENCHMARK(fading);

/// A megabyte of text, seen from somewhere in its middle: no dearer than a short one.
void longText(benchmark::State& state) {
    drawFrames(state, "TEXT 0 0 RED BLACK \"" + std::string(1 << 20, 'x') + "\"\r\nOUT GO-LEFT 1 1");
}
BENCHMARK(longText);

void hundredThousandPages(benchmark::State& state) {
    std::string script;
    for (int page = 0; page < 100'000; ++page)
        script += "CLEAR\r\n" + pump + "ACT STILL 1000\r\n";
    drawFrames(state, script);
}
BENCHMARK(hundredThousandPages);

void interpretAMegabyte(benchmark::State& state) {
    std::string script;
    while (script.size() < 1 << 20)
        script += "CLEAR\r\n" + pump + "ACT STILL 1000\r\n";
    for (auto _ : state)
        benchmark::DoNotOptimize(interpretScript(script));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * script.size()));
}
BENCHMARK(interpretAMegabyte)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orvista::bench
