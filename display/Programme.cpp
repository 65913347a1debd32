#include "display/Programme.h"

#include "display/StepTiming.h"

#include "model/Text.h"

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr std::size_t maximumProgrammeRemarks = 10'000;

} // namespace

Programme::Programme(PanelSize panel, FieldFormats formats) : panel_(panel), formats_(std::move(formats)) {
    const LedRaster check(panel);
}

void Programme::add(Item message, std::string_view script, const BitmapProvider& bitmaps) {
    if (script.size() > maximumScriptBytes - scriptBytes_) {
        remark(message, 0, "is left out: the scripts are too long");
        return;
    }
    scriptBytes_ += script.size();
    add(message, interpretScript(script), bitmaps);
}

void Programme::add(Item message, InterpretedScript script, const BitmapProvider& bitmaps) {
    for (ScriptRemark& found : script.remarks)
        remark(message, found.line, std::move(found.text));
    for (ScriptPage& page : script.pages)
        append(drawnPage(std::move(page),
                         [&](const std::string& bitmap) { return image(message, bitmap, bitmaps); }));
}

void Programme::append(DrawnPage page) {
    for (std::size_t step = 0; step < page.steps.size(); ++step) {
        const std::int64_t duration = stepDuration(page, page.steps[step], panel_, formats_);
        if (duration == 0)
            continue;
        duration_ += duration;
        slots_.push_back({duration_, pages_.size(), step});
    }
    pages_.push_back(std::move(page));
}

void Programme::remark(Item message, std::size_t line, std::string text) {
    if (remarks_.size() < maximumProgrammeRemarks)
        remarks_.push_back({message, line, std::move(text)});
}

std::shared_ptr<const LedImage> Programme::image(Item message, const std::string& name,
                                                 const BitmapProvider& bitmaps) {
    const auto [known, isNew] = images_.try_emplace(lowerAscii(name));
    if (!isNew)
        return known->second;
    const FoundBitmap found = bitmaps.bitmap(name);
    if (!found.image)
        remark(message, 0,
               "bitmap " + name.substr(0, maximumRemarkLength) + " " +
                   std::string(found.error ? description(*found.error) : "was not found"));
    return known->second = found.image;
}

std::int64_t Programme::pageStart(std::size_t page) const {
    const auto first = std::ranges::lower_bound(slots_, page, {}, &Slot::page);
    return first == slots_.begin() ? 0 : std::prev(first)->end;
}

Programme::Moment Programme::momentAt(std::int64_t t) const {
    if (pages_.empty())
        return {};
    if (slots_.empty())
        return {&pages_.back(), nullptr, 0};
    const std::int64_t inRound = std::max<std::int64_t>(t, 0) % duration_;
    const auto slot = std::ranges::upper_bound(slots_, inRound, {}, &Slot::end);
    const std::int64_t start = slot == slots_.begin() ? 0 : std::prev(slot)->end;
    const DrawnPage& page = pages_[slot->page];
    return {&page, &page.steps[slot->step], inRound - start};
}

Programme deviceProgramme(const Project& project, const MessageCoils& coils, const PlayList& playList,
                          const BitmapProvider& bitmaps, PanelSize panel) {
    Programme programme(panel, fieldFormats(project));
    if (coils.emergency.any()) {
        for (std::size_t i = 0; i < emergencyMessageCount; ++i)
            if (coils.emergency[i])
                programme.add({Kind::Emergency, i}, project.ALTMSG[i], bitmaps);
        return programme;
    }
    for (const std::size_t i : playList.messages)
        if (i < regularMessageCount && coils.regular[i])
            programme.add({Kind::Regular, i}, project.STDMSG[i], bitmaps);
    return programme;
}

} // namespace orvista
