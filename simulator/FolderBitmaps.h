#pragma once

#include "display/BitmapProvider.h"
#include "simulator/DeviceFolder.h"

#include <map>
#include <optional>
#include <string>

namespace orvista {

/// The bitmaps that lie in the device's folder. The folder is listed once, when a name is first missed:
/// scripts may name thousands of files that are not there.
class FolderBitmaps final : public BitmapProvider {
public:
    explicit FolderBitmaps(const DeviceFolder& folder) : folder_(folder) {}
    std::optional<std::string> bitmap(std::string_view name) const override;

private:
    std::optional<ListedFile> findInAnyCase(std::string_view name) const;

    const DeviceFolder& folder_;
    mutable std::optional<std::map<std::string, ListedFile>> byLowerCaseName_;
};

} // namespace orvista
