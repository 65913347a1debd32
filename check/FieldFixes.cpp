#include "check/FixFamilies.h"
#include "check/FixedPage.h"
#include "check/Occlusions.h"
#include "display/LedFont.h"
#include "model/Numbers.h"
#include "model/VariableEditing.h"

#include <algorithm>
#include <optional>
#include <string>
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

/// Puts blanks in front of what is covered, and moves what follows along.
Fix blanksFix(const FixGround& ground, const FixedPage& drawn, const std::vector<Covered>& all) {
    const auto& field = std::get<FieldElement>(drawn.page().elements[drawn.element()]);
    Fix fix{"Leave " + countedText(static_cast<std::uint64_t>(shownWidth(field, ground.formats)), "blank"),
            {}};
    std::int64_t dots = 0;
    std::int64_t left = drawn.box(drawn.element()).right;
    for (const Covered& covered : all) {
        const auto& text = std::get<TextElement>(drawn.page().elements[covered.text]);
        const std::int64_t cell = cellWidth(text.font);
        const std::int64_t blanks = (drawn.box(drawn.element()).right - covered.left + cell - 1) / cell;
        fix.edits.push_back(drawn.inserted(text.source.line, text.source.content.column + covered.first,
                                           std::string(static_cast<std::size_t>(blanks), ' ')));
        dots = std::max(dots, blanks * cell);
        left = std::min(left, covered.left);
    }
    for (const std::size_t later : drawn.after(drawn.element(), left)) {
        const bool isCovered =
            std::ranges::any_of(all, [&](const Covered& covered) { return covered.text == later; });
        if (!isCovered)
            fix.edits.push_back(drawn.withX(later, drawn.x(later) + dots));
    }
    return fix;
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
    fixes.push_back(blanksFix(ground, *drawn, covered));
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
