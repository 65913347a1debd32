#pragma once

#include "display/DrawnPage.h"
#include "display/FieldFormats.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// Where a page's elements lie, in dots from the panel's corner.
namespace orvista {

/// A rectangle of dots; right and bottom are the first beyond it.
struct DotBox {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;
    bool operator==(const DotBox&) const = default;
};

/// Whether two rectangles share a dot.
inline bool meet(const DotBox& one, const DotBox& other) {
    return one.left < other.right && other.left < one.right && one.top < other.bottom &&
           other.top < one.bottom && one.left < one.right && other.left < other.right;
}

/// The least rectangle that holds both; an empty one counts with its place.
inline DotBox around(const DotBox& one, const DotBox& other) {
    return {std::min(one.left, other.left), std::min(one.top, other.top), std::max(one.right, other.right),
            std::max(one.bottom, other.bottom)};
}

/// How far a page is moved, in dots.
struct Offset {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// How many characters a live field is wide whatever it shows: a float its format's width, a Boolean the
/// longer of its two texts, time and date as they are written.
std::int64_t shownWidth(const FieldElement& field, const FieldFormats& formats);

/// What drawing an element sets: the cells of a text or field, the dots of a bitmap. A bitmap that is not
/// there has none.
DotBox drawnBox(const DrawnPage& page, std::size_t element, const FieldFormats& formats);

/// How far to the right and down the first `elementCount` elements of a page reach; at least 0.
struct PageExtent {
    std::int64_t width = 0;
    std::int64_t height = 0;
};
PageExtent pageExtent(const DrawnPage& page, std::size_t elementCount, const FieldFormats& formats);

} // namespace orvista
