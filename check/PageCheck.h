#pragma once

#include "check/FindingList.h"
#include "display/BitmapProvider.h"
#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"

#include <map>
#include <string>

namespace orvista {

/// By name in lower case.
using BitmapsByName = std::map<std::string, FoundBitmap>;

/// Adds what is wrong with what a page draws, by its elements: missing, cut, covered, unseen. All of its
/// bitmaps must have been looked up, as far as their names are those of bitmaps.
void checkPage(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
               const BitmapsByName& bitmaps, FindingList& found);

} // namespace orvista
