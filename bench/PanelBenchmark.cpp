#include "display/RasterAt.h"
#include "widgets/PanelPicture.h"

#include <benchmark/benchmark.h>

namespace {

using namespace orvista;

constexpr double framesPerSecond = 50;
constexpr int pictureWidth = 1000;

/// The largest cell with which a panel is no wider than the picture.
int cellOf(PanelSize panel) {
    return PanelPicture::cellFor(panel, {pictureWidth, pictureWidth});
}

PanelSize panelOf(const benchmark::State& state) {
    return {static_cast<int>(state.range(0))};
}

/// The share of one core that 50 frames a second take: CPU seconds in each second.
void reportShare(benchmark::State& state) {
    state.counters["cpu_per_second_at_50fps"] =
        benchmark::Counter(static_cast<double>(state.iterations()) / framesPerSecond,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// Text from edge to edge, coming and going.
Programme scrollingText(PanelSize panel) {
    const Project project;
    Programme programme(panel, fieldFormats(project));
    std::string text;
    while (text.size() < static_cast<std::size_t>(panel.columns) / 8)
        text += "Level 12 ";
    programme.add({},
                  "CLEAR\r\nTEXT 0 0 GREEN BLACK \"" + text +
                      "\"\r\nDISPVAR 48 0 ORANGE BLACK RegVar1\r\n"
                      "IN GO-LEFT 1 50\r\nACT STILL 3000\r\nOUT GO-UP 1 50",
                  NoBitmaps());
    return programme;
}

/// What the window does for a frame: the LEDs of the moment, then their picture.
void redrawScrollingText(benchmark::State& state) {
    const PanelSize panel = panelOf(state);
    const Programme programme = scrollingText(panel);
    const PanelPicture picture(panel, cellOf(panel));
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
BENCHMARK(redrawScrollingText)->Arg(128)->Arg(512)->Unit(benchmark::kMicrosecond);

/// The worst a panel can show.
void redrawAllLightsOn(benchmark::State& state) {
    const PanelSize panel = panelOf(state);
    const PanelPicture picture(panel, cellOf(panel));
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
BENCHMARK(redrawAllLightsOn)->Arg(128)->Arg(512)->Unit(benchmark::kMicrosecond);

/// A window that was resized: a new board and the first picture on it.
void redrawAtANewSize(benchmark::State& state) {
    const PanelSize panel = panelOf(state);
    const LedRaster raster = rasterAt(scrollingText(panel), {}, 5000);
    for (auto _ : state) {
        const PanelPicture picture(panel, cellOf(panel));
        benchmark::DoNotOptimize(picture.image(raster).constBits());
    }
}
BENCHMARK(redrawAtANewSize)->Arg(128)->Arg(512)->Unit(benchmark::kMicrosecond);

/// The floor: putting a finished picture of the same size on the screen.
void copyFinishedPicture(benchmark::State& state) {
    const PanelSize panel = panelOf(state);
    const PanelPicture picture(panel, cellOf(panel));
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
BENCHMARK(copyFinishedPicture)->Arg(128)->Arg(512)->Unit(benchmark::kMicrosecond);

} // namespace
