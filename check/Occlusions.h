#pragma once

#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/PageLayout.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace orvista {

/// Tells what of a page's fields lies on or under something else. To be asked for the elements in order.
class Occlusions {
public:
    /// Both must outlive the object.
    Occlusions(const DrawnPage& page, const FieldFormats& formats);

    /// The first earlier field that a field's cells meet, or that a text or bitmap covers.
    std::optional<std::size_t> fieldUnder(std::size_t element) const;
    /// Whether a field's cells cover a lit dot of a character drawn earlier.
    bool coversText(std::size_t field);
    /// The first character of that text, drawn earlier, of which they do, from 0.
    std::optional<std::size_t> firstCovered(std::size_t field, std::size_t text);

private:
    struct Field {
        std::size_t element = 0;
        DotBox box;
        DotBox reach; ///< of this field and all before it
    };

    std::optional<std::size_t> firstUnder(const TextElement& text, const DotBox& cells);

    const DrawnPage& page_;
    std::vector<DotBox> boxes_; ///< of the elements
    std::vector<Field> fields_;
    std::vector<std::size_t> texts_; ///< those with a character other than blank
    int comparisonsLeft_;
};

} // namespace orvista
