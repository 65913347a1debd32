#include "display/StepTiming.h"

#include "display/PageLayout.h"

#include <algorithm>

namespace orvista {

std::int64_t scrollDistance(const DrawnPage& page, const ScriptStep& step, PanelSize panel,
                            const FieldFormats& formats) {
    const std::int64_t panelLength = isSideways(step.effect) ? panel.columns : panel.rows;
    // Leaving to the left or upwards, and entering the other way, the page passes with its whole length;
    // otherwise it only crosses the panel, and what lies beyond is not seen.
    const bool forward = step.effect == Effect::Left || step.effect == Effect::Up;
    if (forward != (step.kind == StepKind::Leave))
        return panelLength;
    const PageExtent extent = pageExtent(page, step.elementCount, formats);
    return std::max(panelLength, isSideways(step.effect) ? extent.width : extent.height);
}

std::int64_t moveCount(const ScriptStep& step, std::int64_t distance) {
    return (distance + step.pixels - 1) / step.pixels;
}

Offset scrolled(const ScriptStep& step, std::int64_t distance, std::int64_t moves) {
    const std::int64_t travelled = std::min(distance, moves * step.pixels);
    const std::int64_t away = step.kind == StepKind::Enter ? distance - travelled : travelled;
    // An entering page comes from the side opposite to the one it moves to.
    const std::int64_t side = step.kind == StepKind::Enter ? 1 : -1;
    switch (step.effect) {
    case Effect::Left:
        return {side * away, 0};
    case Effect::Right:
        return {-side * away, 0};
    case Effect::Up:
        return {0, side * away};
    case Effect::Down:
        return {0, -side * away};
    case Effect::Fade:
        break;
    }
    return {};
}

bool lasts(const ScriptStep& step) {
    return step.milliseconds > 0 && (step.kind != StepKind::Blink || step.count > 0);
}

std::int64_t stepDuration(const DrawnPage& page, const ScriptStep& step, PanelSize panel,
                          const FieldFormats& formats) {
    if (!lasts(step))
        return 0;
    const std::int64_t milliseconds = step.milliseconds;
    switch (step.kind) {
    case StepKind::Still:
        return milliseconds;
    case StepKind::Blink:
        return 2 * milliseconds * step.count;
    case StepKind::Enter:
    case StepKind::Leave:
        break;
    }
    if (step.effect == Effect::Fade)
        return fadeLevels * milliseconds;
    return moveCount(step, scrollDistance(page, step, panel, formats)) * milliseconds;
}

} // namespace orvista
