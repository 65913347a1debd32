#include "check/Occlusions.h"

#include "display/LedFont.h"

#include <algorithm>
#include <iterator>
#include <variant>

namespace orvista {

namespace {

/// Characters that are looked at on one page: more than any page needs that was drawn to be read, and few
/// enough to keep a hostile one cheap.
constexpr int maximumComparisons = 10'000;

bool isInked(const TextElement& text) {
    return text.text.find_first_not_of(' ') != std::string::npos;
}

/// Whether a character at a place has a lit dot within a rectangle.
bool hasDotWithin(const Glyph& picture, LedFont font, std::int64_t left, std::int64_t top,
                  const DotBox& box) {
    const auto firstColumn = std::max<std::int64_t>(0, box.left - left);
    const auto endColumn = std::min<std::int64_t>(cellWidth(font), box.right - left);
    const auto firstRow = std::max<std::int64_t>(0, box.top - top);
    const auto endRow = std::min<std::int64_t>(cellHeight(font), box.bottom - top);
    const unsigned columns = 0xFFU >> firstColumn & ~(0xFFU >> endColumn);
    for (std::int64_t row = firstRow; row < endRow; ++row)
        if ((picture.rows[static_cast<std::size_t>(row)] & columns) != 0)
            return true;
    return false;
}

} // namespace

Occlusions::Occlusions(const DrawnPage& page, const FieldFormats& formats)
    : page_(page), comparisonsLeft_(maximumComparisons) {
    for (std::size_t i = 0; i < page.elements.size(); ++i) {
        if (std::holds_alternative<FieldElement>(page.elements[i])) {
            const DotBox box = drawnBox(page, i, formats);
            fields_.push_back({i, box, fields_.empty() ? box : around(fields_.back().reach, box)});
        }
        const auto* text = std::get_if<TextElement>(&page.elements[i]);
        if (text != nullptr && isInked(*text))
            texts_.push_back(i);
    }
    if (fields_.empty())
        return;
    for (std::size_t i = 0; i < page.elements.size(); ++i)
        boxes_.push_back(drawnBox(page, i, formats));
}

std::optional<std::size_t> Occlusions::fieldUnder(std::size_t element) const {
    const auto end = std::ranges::lower_bound(fields_, element, {}, &Field::element);
    if (end == fields_.begin() || !meet(std::prev(end)->reach, boxes_[element]))
        return std::nullopt;
    const auto under = std::find_if(fields_.begin(), end,
                                    [&](const Field& field) { return meet(field.box, boxes_[element]); });
    return under == end ? std::nullopt : std::optional(under->element);
}

bool Occlusions::coversText(std::size_t field) {
    return std::ranges::any_of(texts_,
                               [&](std::size_t text) { return firstCovered(field, text).has_value(); });
}

std::optional<std::size_t> Occlusions::firstCovered(std::size_t field, std::size_t text) {
    if (text >= field || !meet(boxes_[text], boxes_[field]))
        return std::nullopt;
    return firstUnder(std::get<TextElement>(page_.elements[text]), boxes_[field]);
}

std::optional<std::size_t> Occlusions::firstUnder(const TextElement& text, const DotBox& cells) {
    const std::int64_t width = cellWidth(text.font);
    const std::int64_t left = text.placement.x;
    const std::int64_t first = std::max<std::int64_t>(0, (cells.left - left) / width);
    const std::int64_t end =
        std::min((cells.right - left + width - 1) / width, static_cast<std::int64_t>(text.text.size()));
    for (std::int64_t i = first; i < end && comparisonsLeft_ > 0; ++i, --comparisonsLeft_) {
        const char character = text.text[static_cast<std::size_t>(i)];
        if (character != ' ' && hasDotWithin(glyph(text.font, static_cast<unsigned char>(character)),
                                             text.font, left + i * width, text.placement.y, cells))
            return static_cast<std::size_t>(i);
    }
    return std::nullopt;
}

} // namespace orvista
