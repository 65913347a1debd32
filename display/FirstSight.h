#pragma once

#include "display/DisplayValues.h"
#include "display/LedRaster.h"
#include "display/Programme.h"

#include <string_view>

namespace orvista {

/// What is seen of a programme first: the first page that lasts, when its entering effect is over. The last
/// page where none does.
LedRaster firstSight(const Programme& programme, const DisplayValues& values);

/// The same of one message. Its script is read only as far as that page.
LedRaster firstSight(std::string_view script, PanelSize panel, const FieldFormats& formats,
                     const DisplayValues& values, const BitmapProvider& bitmaps);

} // namespace orvista
