#pragma once

#include "display/DisplayValues.h"
#include "display/LedRaster.h"
#include "display/Programme.h"

#include <cstdint>

namespace orvista {

/// The panel `t` milliseconds after the programme started. The cost is that of drawing one page.
LedRaster rasterAt(const Programme& programme, const DisplayValues& values, std::int64_t t);

} // namespace orvista
