#pragma once

#include "check/Fix.h"
#include "check/FixFamilies.h"
#include "display/DrawnPage.h"
#include "display/PageLayout.h"
#include "model/Place.h"
#include "script/ScriptText.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

/// The page of a message on which a finding lies, and the edits of its lines.
class FixedPage {
public:
    /// Nothing where no element of a page stands on the place's line.
    static std::optional<FixedPage> drawnAt(const FixGround& ground, const Place& place);

    const DrawnPage& page() const { return page_; }
    const ScriptText& text() const { return text_; }
    std::size_t element() const { return element_; } ///< that stands on the line
    std::size_t count() const { return page_.elements.size(); }
    const DotBox& box(std::size_t element) const { return boxes_[element]; }
    int x(std::size_t element) const { return placementOf(page_.elements[element]).x; }

    FixEdit inserted(std::size_t line, std::size_t column, std::string text) const;
    /// Writes other positions.
    FixEdit withX(std::size_t element, std::int64_t x) const;
    FixEdit withY(std::size_t element, std::int64_t y) const;
    std::vector<FixEdit> movedBy(const std::vector<std::size_t>& elements, std::int64_t dots) const;

    /// The element and all that shares dots with it, or with one of these.
    std::vector<std::size_t> meeting(std::size_t element) const;
    /// Whether elements that are moved to the right, or to the left by a negative number, share dots with
    /// others that they did not before.
    bool wouldMeet(const std::vector<std::size_t>& elements, std::int64_t dots) const;
    /// The others on the same rows that begin at a column or after it.
    std::vector<std::size_t> after(std::size_t element, std::int64_t column) const;

private:
    FixedPage(const FixGround& ground, Item message, DrawnPage page, std::size_t element);
    FixEdit withPosition(std::size_t element, std::size_t which, std::int64_t position) const;

    Item message_;
    ScriptText text_;
    DrawnPage page_;
    std::size_t element_;
    std::vector<DotBox> boxes_;
};

} // namespace orvista
