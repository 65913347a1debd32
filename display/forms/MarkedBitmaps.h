#pragma once

#include "display/BitmapProvider.h"

namespace orvista {

/// The bitmaps of another provider, with a crossed frame for each that is missing or cannot be shown.
class MarkedBitmaps final : public BitmapProvider {
public:
    explicit MarkedBitmaps(const BitmapProvider& bitmaps) : bitmaps_(bitmaps) {}
    FoundBitmap bitmap(std::string_view name) const override;

private:
    const BitmapProvider& bitmaps_;
};

} // namespace orvista
