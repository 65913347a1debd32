#pragma once

#include "display/BitmapProvider.h"
#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"

#include <string>

namespace orvista {

/// What of a page is not to be seen, in the place of a composer's eye (UTF-8): "2 characters do not fit",
/// "passes whole, 2 characters at a time beyond the edge" where they are read as the page enters or leaves,
/// "the bitmap is 72 dots too wide", "later.bmp is missing", with "; " between. Empty where all is to be
/// seen. It counts as the check does.
std::string pageFitText(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
                        const BitmapProvider& bitmaps);

} // namespace orvista
