#include "tests/fuzz/ReaderRun.h"

#include "display/LedImage.h"

/// A picture that is read has the size it says and only dots that its kind can have.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvista;
    const auto result = readBitmap(testing::inputBytes(data, size));
    const auto* image = std::get_if<LedImage>(&result);
    if (image == nullptr)
        return 0;
    testing::require(image->width >= 1 && image->width <= maximumBitmapWidth);
    testing::require(image->height >= 1 && image->height <= maximumBitmapHeight);
    testing::require(image->leds.size() ==
                     static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height));
    for (const Led led : image->leds)
        testing::require(!image->isStencil || led == Led::Off || led == Led::Orange);
    return 0;
}
