#pragma once

#include "display/DisplayValues.h"
#include "display/Programme.h"
#include "display/ScriptPage.h"

#include <cstddef>
#include <cstdint>

namespace orvista {

/// How far to the right and down the first `elementCount` elements of a page reach, in dots from the
/// panel's corner; at least 0.
struct PageExtent {
    std::int64_t width = 0;
    std::int64_t height = 0;
};
PageExtent pageExtent(const ScriptPage& page, std::size_t elementCount, const FieldFormats& formats);

/// How far a page is moved, in dots.
struct Offset {
    std::int64_t x = 0;
    std::int64_t y = 0;
};

/// Draws the first `elementCount` elements of a page. The cost depends on the panel's size, not on the
/// length of the texts.
void paintPage(LedRaster& raster, const ScriptPage& page, std::size_t elementCount, Offset offset,
               const FieldFormats& formats, const DisplayValues& values);

} // namespace orvista
