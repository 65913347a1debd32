#include "check/FixedPage.h"

#include "check/MessageCheck.h"
#include "model/Numbers.h"
#include "script/ScriptInterpreter.h"
#include "script/ScriptWords.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvista {

namespace {

std::optional<std::size_t> elementOn(const ScriptPage& page, std::size_t line) {
    const auto found = std::ranges::lower_bound(
        page.elements, line, {}, [](const ScriptElement& element) { return sourceOf(element).line; });
    if (found == page.elements.end() || sourceOf(*found).line != line)
        return std::nullopt;
    return static_cast<std::size_t>(found - page.elements.begin());
}

DotBox movedBox(DotBox box, std::int64_t dots) {
    box.left += dots;
    box.right += dots;
    return box;
}

} // namespace

std::optional<FixedPage> FixedPage::drawnAt(const FixGround& ground, const Place& place) {
    std::optional<std::size_t> element;
    InterpretedScript read =
        interpretUntil(scriptOf(ground.project, place.item),
                       [&](const ScriptPage& page) { return elementOn(page, place.line).has_value(); });
    if (!read.pages.empty())
        element = elementOn(read.pages.back(), place.line);
    if (!element)
        return std::nullopt;
    BitmapsByName bitmaps;
    return FixedPage(ground, place.item, drawnPage(std::move(read.pages.back()), ground.bitmaps, bitmaps),
                     *element);
}

FixedPage::FixedPage(const FixGround& ground, Item message, DrawnPage page, std::size_t element)
    : message_(message), text_(scriptOf(ground.project, message)), page_(std::move(page)), element_(element) {
    for (std::size_t i = 0; i < page_.elements.size(); ++i)
        boxes_.push_back(drawnBox(page_, i, ground.formats));
}

FixEdit FixedPage::inserted(std::size_t line, std::size_t column, std::string text) const {
    return {message_, line, column, 0, nullptr, std::move(text)};
}

FixEdit FixedPage::withPosition(std::size_t element, std::size_t which, std::int64_t position) const {
    const std::size_t line = sourceOf(page_.elements[element]).line;
    const std::size_t skipped = text_.skipped(line);
    ScriptWords words(text_.line(line).substr(skipped), skipped);
    for (std::size_t i = 0; i <= which; ++i) // the command's word comes first
        words.word();
    const std::size_t column = words.column();
    return {message_, line, column, words.word().size(), nullptr, decimalText(position)};
}

FixEdit FixedPage::withX(std::size_t element, std::int64_t x) const {
    return withPosition(element, 0, x);
}

FixEdit FixedPage::withY(std::size_t element, std::int64_t y) const {
    return withPosition(element, 1, y);
}

std::vector<FixEdit> FixedPage::movedBy(const std::vector<std::size_t>& elements, std::int64_t dots) const {
    std::vector<FixEdit> edits;
    std::ranges::transform(elements, std::back_inserter(edits),
                           [&](std::size_t moved) { return withX(moved, x(moved) + dots); });
    return edits;
}

std::vector<std::size_t> FixedPage::meeting(std::size_t element) const {
    std::vector<std::size_t> group{element};
    std::vector<bool> isTaken(count());
    isTaken[element] = true;
    for (std::size_t known = 0; known < group.size(); ++known)
        for (std::size_t i = 0; i < count(); ++i)
            if (!isTaken[i] && meet(boxes_[group[known]], boxes_[i])) {
                isTaken[i] = true;
                group.push_back(i);
            }
    return group;
}

bool FixedPage::wouldMeet(const std::vector<std::size_t>& elements, std::int64_t dots) const {
    std::vector<bool> isMoved(count());
    for (const std::size_t moved : elements)
        isMoved[moved] = true;
    return std::ranges::any_of(elements, [&](std::size_t moved) {
        for (std::size_t i = 0; i < count(); ++i)
            if (!isMoved[i] && !meet(boxes_[moved], boxes_[i]) &&
                meet(movedBox(boxes_[moved], dots), boxes_[i]))
                return true;
        return false;
    });
}

std::vector<std::size_t> FixedPage::after(std::size_t element, std::int64_t column) const {
    std::vector<std::size_t> later;
    for (std::size_t i = 0; i < count(); ++i) {
        const bool onSameRows =
            boxes_[i].top < boxes_[element].bottom && boxes_[element].top < boxes_[i].bottom;
        if (i != element && onSameRows && boxes_[i].left >= column)
            later.push_back(i);
    }
    return later;
}

} // namespace orvista
