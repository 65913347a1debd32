#include "check/FixFamilies.h"
#include "check/FixedPage.h"
#include "check/Occlusions.h"
#include "display/LedFont.h"
#include "model/Numbers.h"
#include "model/VariableEditing.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace orvista {

namespace {

/// The first character that a value covers.
struct Covered {
    std::size_t text = 0;  ///< its element
    std::size_t first = 0; ///< of the text's characters
    std::int64_t left = 0; ///< dots from the panel's edge
};

std::vector<Covered> coveredBy(const FixGround& ground, const FixedPage& drawn) {
    Occlusions occlusions(drawn.page(), ground.formats);
    std::vector<Covered> all;
    for (std::size_t i = 0; i < drawn.element(); ++i) {
        const auto* const text = std::get_if<TextElement>(&drawn.page().elements[i]);
        const auto first = text == nullptr ? std::nullopt : occlusions.firstCovered(drawn.element(), i);
        if (first)
            all.push_back(
                {i, *first, drawn.x(i) + static_cast<std::int64_t>(*first) * cellWidth(text->font)});
    }
    return all;
}

/// Dots that are lit, or that a value or bitmap takes, and how far they move to the right.
struct Moved {
    DotBox dots;
    std::int64_t by = 0;
};

/// Of a text's characters from one on and before another, those that are not blank, with what lies between.
std::optional<DotBox> inkOf(const TextElement& text, DotBox box, std::size_t first, std::size_t end) {
    const std::string_view part = std::string_view(text.text).substr(0, end);
    const std::size_t begin = part.find_first_not_of(' ', first);
    if (begin == std::string_view::npos)
        return std::nullopt;
    const std::int64_t cell = cellWidth(text.font);
    box.right = box.left + static_cast<std::int64_t>(part.find_last_not_of(' ') + 1) * cell;
    box.left += static_cast<std::int64_t>(begin) * cell;
    return box;
}

/// The page in pieces that move as one.
class MovedPage {
public:
    explicit MovedPage(const FixedPage& drawn) : drawn_(drawn) {}

    void add(std::size_t element, std::int64_t by) { add(element, 0, std::string_view::npos, by); }
    /// Of a text its characters from one on and before another.
    void add(std::size_t element, std::size_t first, std::size_t end, std::int64_t by) {
        const auto* const text = std::get_if<TextElement>(&drawn_.page().elements[element]);
        const auto dots = text == nullptr ? std::optional(drawn_.box(element))
                                          : inkOf(*text, drawn_.box(element), first, end);
        if (dots)
            pieces_.push_back({*dots, by});
    }

    /// Whether something moves onto something that it did not lie on.
    bool wouldMeet() const {
        return std::ranges::any_of(pieces_, [this](const Moved& one) {
            return one.by != 0 && std::ranges::any_of(pieces_, [&](const Moved& other) {
                       return !meet(one.dots, other.dots) && meet(there(one), there(other));
                   });
        });
    }

private:
    static DotBox there(const Moved& piece) {
        return {piece.dots.left + piece.by, piece.dots.top, piece.dots.right + piece.by, piece.dots.bottom};
    }

    const FixedPage& drawn_;
    std::vector<Moved> pieces_;
};

/// Whether what is seen whole is so after moving to the right, too.
bool fitMoved(const FixedPage& drawn, const std::vector<std::size_t>& elements, std::int64_t dots,
              PanelSize panel) {
    return std::ranges::none_of(elements, [&](std::size_t i) {
        const std::int64_t right = drawn.box(i).right;
        return right <= panel.columns && right + dots > panel.columns;
    });
}

/// Puts blanks in front of what is covered, and moves what follows along while all of it fits.
std::optional<Fix> blanksFix(const FixGround& ground, const FixedPage& drawn,
                             const std::vector<Covered>& all) {
    const auto& field = std::get<FieldElement>(drawn.page().elements[drawn.element()]);
    Fix fix{"Leave " + countedText(static_cast<std::uint64_t>(shownWidth(field, ground.formats)), "blank"),
            {}};
    const std::int64_t end = drawn.box(drawn.element()).right;
    std::vector<bool> isPlaced(drawn.count());
    MovedPage moved(drawn);
    std::int64_t dots = 0;
    std::int64_t left = end;
    for (const Covered& covered : all) {
        const auto& text = std::get<TextElement>(drawn.page().elements[covered.text]);
        const std::int64_t cell = cellWidth(text.font);
        const std::int64_t blanks = (end - covered.left + cell - 1) / cell;
        fix.edits.push_back(drawn.inserted(text.source.line, text.source.content.column + covered.first,
                                           std::string(static_cast<std::size_t>(blanks), ' ')));
        moved.add(covered.text, 0, covered.first, 0);
        moved.add(covered.text, covered.first, text.text.size(), blanks * cell);
        isPlaced[covered.text] = true;
        dots = std::max(dots, blanks * cell);
        left = std::min(left, covered.left);
    }
    std::vector<std::size_t> following = drawn.after(drawn.element(), left);
    std::erase_if(following, [&](std::size_t i) { return isPlaced[i]; });
    if (!fitMoved(drawn, following, dots, ground.panel))
        following.clear();
    for (std::size_t i = 0; i < drawn.count(); ++i) {
        if (isPlaced[i])
            continue;
        const bool follows = std::ranges::binary_search(following, i);
        moved.add(i, follows ? dots : 0);
        if (follows)
            fix.edits.push_back(drawn.withX(i, drawn.x(i) + dots));
    }
    return moved.wouldMeet() ? std::nullopt : std::optional(std::move(fix));
}

/// Makes a float as narrow as the place that it has.
std::optional<Fix> narrowerFix(const FixGround& ground, const FixedPage& drawn,
                               const std::vector<Covered>& all) {
    const auto& field = std::get<FieldElement>(drawn.page().elements[drawn.element()]);
    if (field.value != LiveValue::Float)
        return std::nullopt;
    const std::int64_t left =
        std::ranges::min(all, {}, &Covered::left).left - drawn.box(drawn.element()).left;
    const int width = static_cast<int>(left / cellWidth(field.font));
    const FloatFormat format = ground.formats.floats[field.index];
    const std::string text = decimalText(width);
    const bool isAllowed =
        left > 0 && std::ranges::find(widthChoices, text) != widthChoices.end() &&
        leadingNumber(precisionForWidth(text, decimalText(format.precision))) == format.precision;
    const bool showsADigit = format.precision == 0 || width >= format.precision + 2;
    if (!isAllowed || !showsADigit)
        return std::nullopt;
    const Item variable{Kind::Float, field.index};
    return Fix{"Make " + nameOf(variable) + " " + text + " wide",
               {{variable, 0, 0, 0, fieldNamed(Kind::Float, "width"), text}}};
}

} // namespace

std::vector<Fix> gapFixes(const FixGround& ground, const Finding& finding) {
    const auto drawn = FixedPage::drawnAt(ground, finding.place);
    const auto covered = drawn ? coveredBy(ground, *drawn) : std::vector<Covered>();
    std::vector<Fix> fixes;
    if (covered.empty())
        return fixes;
    if (auto blanks = blanksFix(ground, *drawn, covered))
        fixes.push_back(std::move(*blanks));
    if (auto narrower = narrowerFix(ground, *drawn, covered))
        fixes.push_back(std::move(*narrower));
    return fixes;
}

std::vector<Fix> overlapFixes(const FixGround& ground, const Finding& finding) {
    std::vector<Fix> fixes;
    const auto drawn = FixedPage::drawnAt(ground, finding.place);
    const auto under = drawn ? Occlusions(drawn->page(), ground.formats).fieldUnder(drawn->element())
                             : std::optional<std::size_t>();
    if (!under)
        return fixes;
    const std::size_t element = drawn->element();
    const std::int64_t start = drawn->box(*under).right;
    const std::int64_t dots = start - drawn->x(element);
    const std::string caption = "Begin it at " + decimalText(start);
    std::vector<std::size_t> moved{element};
    if (!drawn->wouldMeet(moved, dots))
        fixes.push_back({caption, drawn->movedBy(moved, dots)});
    const std::vector<std::size_t> later = drawn->after(element, drawn->box(element).right);
    moved.insert(moved.end(), later.begin(), later.end());
    if (!later.empty() && !drawn->wouldMeet(moved, dots))
        fixes.push_back({caption + " and move what follows", drawn->movedBy(moved, dots)});
    return fixes;
}

} // namespace orvista
