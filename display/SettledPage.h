#pragma once

#include "display/DisplayValues.h"
#include "display/LedRaster.h"
#include "display/Programme.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orvista {

/// How a page looks when its entering effect is over, whatever it does then: all that is drawn by that time,
/// in its place. A page that lasts no time has a look, too.
LedRaster settledPage(const Programme& programme, std::size_t page, const DisplayValues& values);

/// When that is, in milliseconds after the start of a round.
std::int64_t settledTime(const Programme& programme, std::size_t page);

/// The page that a line of the script (from 1) belongs to: lines after a leaving effect and before the first
/// page go with the page nearest to them. 0 without pages.
std::size_t pageOfLine(const Programme& programme, std::size_t line);

/// The page of a line of the script as above, alone: a long script costs no more than reading it, and the
/// bitmaps of its other pages are not looked for. Without pages the programme has none either.
Programme programmeOfLine(std::string_view script, std::size_t line, PanelSize panel, FieldFormats formats,
                          const BitmapProvider& bitmaps);

} // namespace orvista
