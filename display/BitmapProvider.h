#pragma once

#include "display/LedImage.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// What became of a bitmap that a script names.
struct FoundBitmap {
    std::shared_ptr<const LedImage> image; ///< none: it cannot be shown
    std::optional<BitmapError> error;      ///< why it cannot; none: there is no such file
};

/// What the bytes of a BMP file show.
FoundBitmap decodedBitmap(std::string_view bytes);

/// Where the bitmaps that scripts name come from.
class BitmapProvider {
public:
    virtual ~BitmapProvider() = default;
    /// \param name of a BMP file: Windows-1252, without a folder, ASCII case folded
    virtual FoundBitmap bitmap(std::string_view name) const = 0;
    /// The names of all that are known, as above, in an order that never varies.
    virtual std::vector<std::string> names() const { return {}; }
};

/// For scripts whose bitmaps are not at hand.
class NoBitmaps final : public BitmapProvider {
public:
    FoundBitmap bitmap(std::string_view /*name*/) const override { return {}; }
};

} // namespace orvista
