#pragma once

#include "display/BitmapProvider.h"
#include "simulator/DeviceFolder.h"

namespace orvista {

/// The bitmaps that lie in the device's folder.
class FolderBitmaps final : public BitmapProvider {
public:
    explicit FolderBitmaps(const DeviceFolder& folder) : folder_(folder) {}
    std::optional<std::string> bitmap(std::string_view name) const override;

private:
    const DeviceFolder& folder_;
};

} // namespace orvista
