#pragma once

#include "display/BitmapProvider.h"
#include "display/DrawnPage.h"

#include <span>
#include <string>
#include <vector>

namespace orvista {

/// Of the bitmaps that pages name those that a display cannot show, in words (UTF-8): "later.bmp is missing",
/// "scan.bmp is compressed", "plan.png does not end in .bmp", which is never sent. Each once.
std::vector<std::string> bitmapFaults(std::span<const DrawnPage> pages, const BitmapProvider& bitmaps);

} // namespace orvista
