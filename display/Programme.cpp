#include "display/Programme.h"

#include "display/PagePainter.h"
#include "display/StepTiming.h"

#include "model/ItemKind.h"
#include "model/Text.h"

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
        return BooleanTexts{variable.onText.substr(0, maximumBooleanText),
                            variable.offText.substr(0, maximumBooleanText)};
    });
    return formats;
}

Programme::Programme(PanelSize panel, FieldFormats formats) : panel_(panel), formats_(std::move(formats)) {
    const LedRaster check(panel);
}

void Programme::add(std::string_view name, std::string_view script, const BitmapProvider& bitmaps) {
    if (script.size() > maximumScriptBytes - scriptBytes_) {
        remark(name, 0, "is left out: the scripts are too long");
        return;
    }
    scriptBytes_ += script.size();
    InterpretedScript interpreted = interpretScript(script);
    for (ScriptRemark& found : interpreted.remarks)
        remark(name, found.line, std::move(found.text));
    for (ScriptPage& page : interpreted.pages) {
        lookUpImages(name, page, bitmaps);
        append(std::move(page));
    }
}

void Programme::append(ScriptPage page) {
    for (std::size_t step = 0; step < page.steps.size(); ++step) {
        const std::int64_t duration = stepDuration(page, page.steps[step], panel_, formats_);
        if (duration == 0)
            continue;
        duration_ += duration;
        slots_.push_back({duration_, pages_.size(), step});
    }
    pages_.push_back(std::move(page));
}

void Programme::remark(std::string_view message, std::size_t line, std::string text) {
    if (remarks_.size() < maximumProgrammeRemarks)
        remarks_.push_back({std::string(message), line, std::move(text)});
}

void Programme::lookUpImages(std::string_view message, ScriptPage& page, const BitmapProvider& bitmaps) {
    for (ScriptElement& element : page.elements) {
        auto* image = std::get_if<ImageElement>(&element);
        if (image == nullptr)
            continue;
        const auto [known, isNew] = images_.try_emplace(lowerAscii(image->name));
        if (isNew)
            known->second = loadImage(message, image->name, bitmaps);
        image->image = known->second;
    }
}

std::shared_ptr<const LedImage> Programme::loadImage(std::string_view message, const std::string& name,
                                                     const BitmapProvider& bitmaps) {
    const std::string subject = "bitmap " + name.substr(0, maximumRemarkLength) + " ";
    const auto bytes = bitmaps.bitmap(name);
    if (!bytes) {
        remark(message, 0, subject + "was not found");
        return nullptr;
    }
    auto result = readBitmap(*bytes);
    if (const auto* error = std::get_if<BitmapError>(&result)) {
        remark(message, 0, subject + std::string(description(*error)));
        return nullptr;
    }
    return std::make_shared<const LedImage>(std::get<LedImage>(std::move(result)));
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
    if (coils.emergency.any()) {
        for (std::size_t i = 0; i < emergencyMessageCount; ++i)
            if (coils.emergency[i])
                programme.add(emergencyMessages.name(i), project.ALTMSG[i], bitmaps);
        return programme;
    }
    for (const std::size_t i : playList.messages)
        if (i < regularMessageCount && coils.regular[i])
            programme.add(regularMessages.name(i), project.STDMSG[i], bitmaps);
    return programme;
}

} // namespace orvista
