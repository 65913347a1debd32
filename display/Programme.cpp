#include "display/Programme.h"

#include "display/PagePainter.h"
#include "display/StepTiming.h"

#include "model/Numbers.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr std::size_t maximumProgrammeRemarks = 10'000;

bool isHorizontal(Effect effect) {
    return effect == Effect::Left || effect == Effect::Right;
}

} // namespace

std::int64_t scrollDistance(const ScriptPage& page, const ScriptStep& step, PanelSize panel,
                            const FieldFormats& formats) {
    const std::int64_t panelLength = isHorizontal(step.effect) ? panel.columns : panel.rows;
    // Leaving to the left or upwards, and entering the other way, the page passes with its whole length;
    // otherwise it only crosses the panel, and what lies beyond is not seen.
    const bool forward = step.effect == Effect::Left || step.effect == Effect::Up;
    if (forward != (step.kind == StepKind::Leave))
        return panelLength;
    const PageExtent extent = pageExtent(page, step.elementCount, formats);
    return std::max(panelLength, isHorizontal(step.effect) ? extent.width : extent.height);
}

std::int64_t stepDuration(const ScriptPage& page, const ScriptStep& step, PanelSize panel,
                          const FieldFormats& formats) {
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
    const std::int64_t distance = scrollDistance(page, step, panel, formats);
    return (distance + step.pixels - 1) / step.pixels * milliseconds;
}

FieldFormats fieldFormats(const Project& project) {
    FieldFormats formats;
    std::ranges::transform(project.RegVar, formats.floats.begin(), floatFormat);
    std::ranges::transform(project.CoilVar, formats.booleans.begin(), [](const BooleanVariable& variable) {
        return BooleanTexts{variable.onText, variable.offText};
    });
    return formats;
}

Programme::Programme(PanelSize panel, FieldFormats formats) : panel_(panel), formats_(std::move(formats)) {
    const LedRaster check(panel);
}

void Programme::add(std::string_view name, std::string_view script, const BitmapProvider& bitmaps) {
    InterpretedScript interpreted = interpretScript(script);
    for (ScriptRemark& remark : interpreted.remarks)
        if (remarks_.size() < maximumProgrammeRemarks)
            remarks_.push_back({std::string(name), remark.line, std::move(remark.text)});
    for (ScriptPage& page : interpreted.pages) {
        lookUpImages(name, page, bitmaps);
        for (std::size_t step = 0; step < page.steps.size(); ++step) {
            duration_ += stepDuration(page, page.steps[step], panel_, formats_);
            const std::int64_t previousEnd = slots_.empty() ? 0 : slots_.back().end;
            if (duration_ > previousEnd)
                slots_.push_back({duration_, pages_.size(), step});
        }
        pages_.push_back(std::move(page));
    }
}

void Programme::lookUpImages(std::string_view name, ScriptPage& page, const BitmapProvider& bitmaps) {
    for (ScriptElement& element : page.elements) {
        auto* image = std::get_if<ImageElement>(&element);
        if (image == nullptr)
            continue;
        std::string problem = "was not found";
        if (const auto bytes = bitmaps.bitmap(image->name)) {
            auto result = readBitmap(*bytes);
            if (auto* picture = std::get_if<LedImage>(&result)) {
                image->image = std::make_shared<const LedImage>(std::move(*picture));
                continue;
            }
            problem = description(std::get<BitmapError>(result));
        }
        if (remarks_.size() < maximumProgrammeRemarks)
            remarks_.push_back({std::string(name), 0, "bitmap " + image->name + " " + problem});
    }
}

std::int64_t Programme::pageDuration(std::size_t page) const {
    std::int64_t duration = 0;
    for (const ScriptStep& step : pages_.at(page).steps)
        duration += stepDuration(pages_[page], step, panel_, formats_);
    return duration;
}

Programme::Moment Programme::momentAt(std::int64_t t) const {
    if (pages_.empty())
        return {};
    if (slots_.empty())
        return {&pages_.back(), nullptr, 0};
    const std::int64_t inRound = std::max<std::int64_t>(t, 0) % duration_;
    const auto slot = std::ranges::upper_bound(slots_, inRound, {}, &Slot::end);
    const std::int64_t start = slot == slots_.begin() ? 0 : std::prev(slot)->end;
    const ScriptPage& page = pages_[slot->page];
    return {&page, &page.steps[slot->step], inRound - start};
}

Programme deviceProgramme(const Project& project, const MessageCoils& coils, const PlayList& playList,
                          const BitmapProvider& bitmaps, PanelSize panel) {
    Programme programme(panel, fieldFormats(project));
    const auto number = [](std::size_t index) { return decimalText(static_cast<std::int64_t>(index) + 1); };
    if (coils.emergency.any()) {
        for (std::size_t i = 0; i < emergencyMessageCount; ++i)
            if (coils.emergency[i])
                programme.add(emergencyMessageName + number(i), project.ALTMSG[i], bitmaps);
        return programme;
    }
    for (const std::size_t i : playList.messages)
        if (i < regularMessageCount && coils.regular[i])
            programme.add(regularMessageName + number(i), project.STDMSG[i], bitmaps);
    return programme;
}

} // namespace orvista
