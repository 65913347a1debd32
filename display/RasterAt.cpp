#include "display/RasterAt.h"

#include "display/PagePainter.h"
#include "display/StepTiming.h"

#include <algorithm>
#include <array>

namespace orvista {

namespace {

/// The level from which a dot is lit while a page fades: an ordered pattern, spread as evenly as 4 x 4 dots
/// allow, so that neighbours never change together.
constexpr std::array<std::array<int, 4>, 4> fadePattern = {
    {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}}};

void darken(LedRaster& raster, std::int64_t level) {
    for (int y = 0; y < raster.rows(); ++y)
        for (int x = 0; x < raster.columns(); ++x)
            if (fadePattern[static_cast<std::size_t>(y % 4)][static_cast<std::size_t>(x % 4)] >= level)
                raster.set(x, y, Led::Off);
}

} // namespace

LedRaster rasterAt(const Programme& programme, const DisplayValues& values, std::int64_t t) {
    LedRaster raster(programme.panel());
    const Programme::Moment moment = programme.momentAt(t);
    if (moment.page == nullptr)
        return raster;
    const DrawnPage& page = *moment.page;
    const FieldFormats& formats = programme.formats();
    if (moment.step == nullptr) {
        paintPage(raster, page, page.elements.size(), {}, formats, values);
        return raster;
    }

    const ScriptStep& step = *moment.step;
    const std::int64_t ticks = step.milliseconds > 0 ? moment.elapsed / step.milliseconds : 0;
    if (step.kind == StepKind::Blink && ticks % 2 == 0)
        return raster;
    const bool moves = step.kind == StepKind::Enter || step.kind == StepKind::Leave;
    const bool fades = moves && step.effect == Effect::Fade;
    Offset offset;
    if (moves && !fades)
        offset = scrolled(step, scrollDistance(page, step, programme.panel(), formats), ticks);
    paintPage(raster, page, step.elementCount, offset, formats, values);
    if (fades)
        darken(raster, step.kind == StepKind::Enter ? ticks : fadeLevels - ticks);
    return raster;
}

} // namespace orvista
