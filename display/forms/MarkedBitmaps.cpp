#include "display/forms/MarkedBitmaps.h"

#include "display/CrossedFrame.h"

namespace orvista {

FoundBitmap MarkedBitmaps::bitmap(std::string_view name) const {
    FoundBitmap found = bitmaps_.bitmap(name);
    if (!found.image)
        found.image = std::make_shared<const LedImage>(crossedFrame(name));
    return found;
}

} // namespace orvista
