#include "items/PageActs.h"

#include "display/StepTiming.h"
#include "model/Numbers.h"

#include <array>
#include <chrono>
#include <string_view>

namespace orvista {

namespace {

/// In the order of Effect; fading has words of its own.
constexpr std::array<std::string_view, 4> wayWords{"to the left", "to the right", "upwards", "downwards"};

std::string movingText(const ScriptStep& step) {
    const bool enters = step.kind == StepKind::Enter;
    if (step.effect == Effect::Fade)
        return enters ? "fades in" : "fades out";
    return std::string(enters ? "enters " : "leaves ")
        .append(wayWords[static_cast<std::size_t>(step.effect)])
        .append(", ")
        .append(decimalText(step.pixels))
        .append(step.pixels == 1 ? " dot every " : " dots every ")
        .append(decimalText(step.milliseconds))
        .append(" ms");
}

std::string actText(const ScriptStep& step) {
    if (step.kind == StepKind::Still)
        return "stands still";
    if (step.kind != StepKind::Blink)
        return movingText(step);
    const std::string half = decimalText(step.milliseconds) + " ms ";
    return "blinks " + (step.count == 1 ? "once" : decimalText(step.count) + " times") + ", " + half +
           "dark and " + half + "lit";
}

} // namespace

std::vector<std::string> pageActs(const Programme& programme, std::size_t page) {
    const DrawnPage& drawn = programme.pages().at(page);
    std::vector<std::string> acts;
    for (const ScriptStep& step : drawn.steps)
        if (const auto time = stepDuration(drawn, step, programme.panel(), programme.formats()); time > 0)
            acts.push_back(actText(step) + ": " + secondsText(std::chrono::milliseconds(time)));
    const bool isLast = page + 1 == programme.pageCount();
    if (acts.empty())
        acts.emplace_back(programme.duration() == 0 && isLast ? "stands still for good" : "is never seen");
    return acts;
}

} // namespace orvista
