#pragma once

#include "display/BitmapProvider.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// The bitmaps of a master itself. For one whose name is a place there is a frame with the name, which takes
/// no room: which bitmap it is depends on the display.
class MasterBitmaps final : public BitmapProvider {
public:
    /// \param bitmaps all others; must outlive the object
    explicit MasterBitmaps(const BitmapProvider& bitmaps) : bitmaps_(bitmaps) {}

    FoundBitmap bitmap(std::string_view name) const override;
    std::vector<std::string> names() const override { return bitmaps_.names(); }

private:
    const BitmapProvider& bitmaps_;
    mutable std::map<std::string, std::shared_ptr<const LedImage>, std::less<>> frames_;
};

} // namespace orvista
