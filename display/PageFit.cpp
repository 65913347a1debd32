#include "display/PageFit.h"

#include "display/LedFont.h"
#include "display/StepTiming.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
#include <variant>

namespace orvista {

namespace {

/// The lit dots of a character within its cell; empty for a blank.
struct LitDots {
    int left = 8;
    int top = 15;
    int right = 0;
    int bottom = 0;

    bool isBlank() const { return right == 0; }
    LitDots with(const LitDots& other) const {
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
};

using FontDots = std::array<LitDots, 256>;

LitDots litDots(const Glyph& picture) {
    LitDots dots;
    for (int row = 0; row < static_cast<int>(picture.rows.size()); ++row)
        for (int column = 0; column < 8; ++column)
            if ((picture.rows[static_cast<std::size_t>(row)] & 0x80 >> column) != 0)
                dots = dots.with({column, row, column + 1, row + 1});
    return dots;
}

FontDots dotsOf(LedFont font) {
    FontDots dots;
    for (std::size_t character = 0; character < dots.size(); ++character)
        dots[character] = litDots(glyph(font, static_cast<unsigned char>(character)));
    return dots;
}

const LitDots& litDots(LedFont font, char character) {
    static const FontDots small = dotsOf(LedFont::Small5x7);
    static const FontDots large = dotsOf(LedFont::Large8x15);
    return (font == LedFont::Small5x7 ? small : large)[static_cast<unsigned char>(character)];
}

LitDots numberDotsOf(LedFont font) {
    LitDots dots;
    for (const char character : std::string_view("0123456789.:-*"))
        dots = dots.with(litDots(font, character));
    return dots;
}

/// All that a number, a time or a date can light.
const LitDots& numberDots(LedFont font) {
    static const LitDots small = numberDotsOf(LedFont::Small5x7);
    static const LitDots large = numberDotsOf(LedFont::Large8x15);
    return font == LedFont::Small5x7 ? small : large;
}

char characterAt(std::string_view text, std::size_t index) {
    return index < text.size() ? text[index] : ' ';
}

/// The cells of a text or a field.
class Cells {
public:
    Cells(const TextElement& text, const FieldFormats&)
        : placement_(text.placement), font_(text.font), count_(text.text.size()), text_(text.text) {}

    Cells(const FieldElement& field, const FieldFormats& formats)
        : placement_(field.placement),
          font_(field.font),
          count_(static_cast<std::size_t>(shownWidth(field, formats))) {
        if (field.value == LiveValue::Boolean) {
            text_ = formats.booleans[field.index].on;
            otherText_ = formats.booleans[field.index].off;
        } else {
            number_ = numberDots(font_);
        }
    }

    std::size_t count() const { return count_; }
    LitDots dots(std::size_t index) const {
        return number_.with(litDots(font_, characterAt(text_, index)))
            .with(litDots(font_, characterAt(otherText_, index)));
    }
    DotBox box(std::size_t index, const LitDots& dots) const {
        const std::int64_t left = placement_.x + static_cast<std::int64_t>(index) * cellWidth(font_);
        const std::int64_t top = placement_.y;
        return {left + dots.left, top + dots.top, left + dots.right, top + dots.bottom};
    }
    /// The cells from `first` to before `end` lie on the panel with all their dots.
    struct Inside {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    Inside inside(PanelSize panel) const {
        const std::int64_t width = cellWidth(font_);
        if (placement_.y < 0 || placement_.y + cellHeight(font_) > panel.rows)
            return {};
        const auto limited = [this](std::int64_t index) {
            return static_cast<std::size_t>(
                std::clamp<std::int64_t>(index, 0, static_cast<std::int64_t>(count_)));
        };
        return {limited((width - 1 - placement_.x) / width),
                placement_.x >= panel.columns ? 0 : limited((panel.columns - placement_.x) / width)};
    }

private:
    Placement placement_;
    LedFont font_;
    std::size_t count_;
    std::string_view text_;
    std::string_view otherText_;
    LitDots number_;
};

} // namespace

PageFit::PageFit(const DrawnPage& page, PanelSize panel, const FieldFormats& formats)
    : page_(page), panel_(panel), formats_(formats) {
    // Of equal steps the last draws most and goes farthest.
    for (auto step = page.steps.rbegin(); step != page.steps.rend(); ++step)
        takePass(*step);
}

void PageFit::takePass(const ScriptStep& step) {
    const bool moves = (step.kind == StepKind::Enter || step.kind == StepKind::Leave) &&
                       step.effect != Effect::Fade && step.milliseconds > 0;
    if (!moves)
        return;
    const bool sideways = isSideways(step.effect);
    // A longer leap carries characters over the panel unseen.
    const int longest = sideways ? panel_.columns - cellWidth(LedFont::Large8x15) + 1 : panel_.rows;
    if (step.pixels > std::max(longest, 1))
        return;
    Pass pass{step.kind, step.effect, step.pixels, 0, 0, step.elementCount};
    if (std::ranges::any_of(passes_, [&](const Pass& later) { return goesAsFar(later, pass); }))
        return;
    const std::int64_t distance = scrollDistance(page_, step, panel_, formats_);
    const Offset first = scrolled(step, distance, 0);
    const Offset last = scrolled(step, distance, moveCount(step, distance) - 1);
    std::tie(pass.lowest, pass.highest) = sideways ? std::minmax({first.x, last.x, std::int64_t{0}})
                                                   : std::minmax({first.y, last.y, std::int64_t{0}});
    passes_.push_back(pass);
}

/// Whether a pass shows all that an earlier one shows: upwards and downwards a character may be as high as
/// the panel, so that the leaps matter.
bool PageFit::goesAsFar(const Pass& later, const Pass& earlier) {
    return later.kind == earlier.kind && later.effect == earlier.effect &&
           (isSideways(later.effect) || later.pixels <= earlier.pixels);
}

bool PageFit::isSeen(const DotBox& lit, std::size_t element, Passing passing, bool atOnce) const {
    const bool isInColumns = lit.left >= 0 && lit.right <= panel_.columns;
    const bool isInRows = lit.top >= 0 && lit.bottom <= panel_.rows;
    if (isInColumns && isInRows)
        return true;
    if (passing == Passing::Ignored || (!isInColumns && !isInRows))
        return false;
    const auto [start, end, length] = isInRows ? std::tuple(lit.left, lit.right, std::int64_t{panel_.columns})
                                               : std::tuple(lit.top, lit.bottom, std::int64_t{panel_.rows});
    return std::ranges::any_of(passes_, [&, start = start, end = end, length = length](const Pass& pass) {
        if (pass.elementCount <= element || isSideways(pass.effect) != isInRows)
            return false;
        if (atOnce && end - start + pass.pixels - 1 > length)
            return false;
        return -start <= pass.highest && length - end >= pass.lowest;
    });
}

std::optional<Effect> PageFit::wayOut(const DotBox& unseen) const {
    // To the right and downwards a page only crosses the panel, which ends as its first dots reach the far
    // side.
    if (unseen.top >= 0 && unseen.bottom <= panel_.rows) {
        if (unseen.left >= 0)
            return Effect::Left;
        if (unseen.right <= panel_.columns && -unseen.left < panel_.columns)
            return Effect::Right;
    } else if (unseen.left >= 0 && unseen.right <= panel_.columns) {
        if (unseen.top >= 0)
            return Effect::Up;
        if (unseen.bottom <= panel_.rows && -unseen.top < panel_.rows)
            return Effect::Down;
    }
    return std::nullopt;
}

PageFit::Unseen PageFit::unseen(std::size_t element, Passing passing) const {
    const auto ofCells = [&](const Cells& cells) {
        Unseen unseen;
        DotBox extent;
        const Cells::Inside inside = cells.inside(panel_);
        for (std::size_t i = 0; i < cells.count(); ++i) {
            if (i >= inside.first && i < inside.end)
                continue;
            const LitDots dots = cells.dots(i);
            const DotBox box = cells.box(i, dots);
            if (dots.isBlank() || isSeen(box, element, passing, true))
                continue;
            if (unseen.count++ == 0)
                unseen.first = i;
            extent = unseen.count == 1 ? box : around(extent, box);
        }
        if (unseen.count > 0)
            unseen.wayOut = wayOut(extent);
        return unseen;
    };
    const ScriptElement& drawn = page_.elements[element];
    if (const auto* text = std::get_if<TextElement>(&drawn))
        return ofCells(Cells(*text, formats_));
    if (const auto* field = std::get_if<FieldElement>(&drawn))
        return ofCells(Cells(*field, formats_));
    const DotBox box = drawnBox(page_, element, formats_);
    if (box.left == box.right || isSeen(box, element, passing, false))
        return {};
    return {1, 0, wayOut(box)};
}

std::size_t unfitCharacters(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
                            Passing passing) {
    const PageFit fit(page, panel, formats);
    std::size_t count = 0;
    for (std::size_t i = 0; i < page.elements.size(); ++i)
        if (!std::holds_alternative<ImageElement>(page.elements[i]))
            count += fit.unseen(i, passing).count;
    return count;
}

} // namespace orvista
