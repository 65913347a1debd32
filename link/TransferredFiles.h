#pragma once

#include "model/BitmapName.h"
#include "model/DeviceFiles.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// The device files in the order in which they are sent.
inline constexpr auto transferredDeviceFiles = [] {
    std::array<std::string_view, deviceFiles.size()> names;
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = deviceFiles[i]->name;
    return names;
}();

/// Names of the folder's bitmaps: regular files (or links to them) only, sorted with ASCII case folded. A
/// folder that cannot be read has none.
/// \param folder UTF-8
std::vector<std::string> bitmapsOfFolder(const std::string& folder);

} // namespace orvista
