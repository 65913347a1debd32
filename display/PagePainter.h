#pragma once

#include "display/DisplayValues.h"
#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "display/PageLayout.h"

#include <cstddef>
#include <cstdint>

namespace orvista {

/// Draws the first `elementCount` elements of a page. The cost depends on the panel's size, not on the
/// length of the texts.
void paintPage(LedRaster& raster, const DrawnPage& page, std::size_t elementCount, Offset offset,
               const FieldFormats& formats, const DisplayValues& values);

} // namespace orvista
