#include "display/Programme.h"
#include "widgets/PanelPicture.h"

#include <benchmark/benchmark.h>

namespace {

using namespace orvista;

constexpr PanelSize panel{128};
constexpr int cell = 8;
constexpr double framesPerSecond = 50;

/// The share of one core that 50 frames a second take: CPU seconds in each second.
void reportShare(benchmark::State& state) {
    state.counters["cpu_per_second_at_50fps"] =
        benchmark::Counter(static_cast<double>(state.iterations()) / framesPerSecond,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

Programme scrollingText() {
    const Project project;
    Programme programme(panel, fieldFormats(project));
    programme.add("STDMSG1",
                  "CLEAR\r\nTEXT 0 0 GREEN BLACK \"Level \"\r\nDISPVAR 48 0 ORANGE BLACK RegVar1\r\n"
                  "IN GO-LEFT 1 50\r\nACT STILL 3000\r\nOUT GO-UP 1 50",
                  StoredBitmaps());
    return programme;
}

/// What the window does for a frame: the LEDs of the moment, then their picture.
void redrawScrollingText(benchmark::State& state) {
    const Programme programme = scrollingText();
    const PanelPicture picture(panel, cell);
    QImage screen(picture.size(), QImage::Format_ARGB32_Premultiplied);
    std::int64_t moment = 0;
    for (auto _ : state) {
        const LedRaster raster = rasterAt(programme, {}, moment);
        QPainter painter(&screen);
        picture.paint(painter, raster);
        painter.end();
        benchmark::DoNotOptimize(screen.constBits());
        moment += 20;
    }
    reportShare(state);
}
BENCHMARK(redrawScrollingText)->Unit(benchmark::kMicrosecond);

/// The worst a panel can show.
void redrawAllLightsOn(benchmark::State& state) {
    const PanelPicture picture(panel, cell);
    QImage screen(picture.size(), QImage::Format_ARGB32_Premultiplied);
    LedRaster raster(panel);
    raster.fill(0, 0, panel.columns, panel.rows, Led::Orange);
    for (auto _ : state) {
        QPainter painter(&screen);
        picture.paint(painter, raster);
        painter.end();
        benchmark::DoNotOptimize(screen.constBits());
    }
    reportShare(state);
}
BENCHMARK(redrawAllLightsOn)->Unit(benchmark::kMicrosecond);

/// The floor: putting a finished picture of the same size on the screen.
void copyFinishedPicture(benchmark::State& state) {
    const PanelPicture picture(panel, cell);
    const QImage finished = picture.image(LedRaster(panel));
    QImage screen(picture.size(), QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&screen);
        painter.drawImage(0, 0, finished);
        painter.end();
        benchmark::DoNotOptimize(screen.constBits());
    }
    reportShare(state);
}
BENCHMARK(copyFinishedPicture)->Unit(benchmark::kMicrosecond);

} // namespace
