#include "display/SettledPage.h"

#include "display/PagePainter.h"
#include "display/StepTiming.h"
#include "script/ScriptInterpreter.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

auto firstStepAfterEntering(const ScriptPage& page) {
    return std::ranges::find_if(page.steps,
                                [](const ScriptStep& step) { return step.kind != StepKind::Enter; });
}

} // namespace

LedRaster settledPage(const Programme& programme, std::size_t page, const DisplayValues& values) {
    const DrawnPage& settled = programme.pages().at(page);
    const auto step = firstStepAfterEntering(settled);
    const std::size_t count = step == settled.steps.end() ? settled.elements.size() : step->elementCount;
    LedRaster raster(programme.panel());
    paintPage(raster, settled, count, {}, programme.formats(), values);
    return raster;
}

std::int64_t settledTime(const Programme& programme, std::size_t page) {
    const DrawnPage& entering = programme.pages().at(page);
    std::int64_t time = programme.pageStart(page);
    for (auto step = entering.steps.begin(); step != firstStepAfterEntering(entering); ++step)
        time += stepDuration(entering, *step, programme.panel(), programme.formats());
    return time;
}

std::size_t pageOfLine(const Programme& programme, std::size_t line) {
    const auto next = std::ranges::upper_bound(programme.pages(), line, {}, &ScriptPage::firstLine);
    return static_cast<std::size_t>(std::max<std::ptrdiff_t>(next - programme.pages().begin(), 1)) - 1;
}

Programme programmeOfLine(std::string_view script, std::size_t line, PanelSize panel, FieldFormats formats,
                          const BitmapProvider& bitmaps) {
    InterpretedScript alone;
    interpretPageByPage(script, [&alone, line](ScriptPage& page) {
        if (alone.pages.empty())
            alone.pages.push_back(std::move(page));
        else if (page.firstLine <= line)
            alone.pages.front() = std::move(page);
    });
    Programme programme(panel, std::move(formats));
    programme.add({}, std::move(alone), bitmaps);
    return programme;
}

} // namespace orvista
