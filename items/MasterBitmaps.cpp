#include "items/MasterBitmaps.h"

#include "display/CrossedFrame.h"
#include "script/Places.h"

namespace orvista {

FoundBitmap MasterBitmaps::bitmap(std::string_view name) const {
    if (!isPlaceOfBitmap(name))
        return bitmaps_.bitmap(name);
    const auto [known, isNew] = frames_.try_emplace(std::string(name));
    if (isNew)
        known->second = std::make_shared<const LedImage>(crossedFrame(name));
    return {known->second, {}};
}

} // namespace orvista
