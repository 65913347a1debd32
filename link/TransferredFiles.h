#pragma once

#include "model/BitmapFiles.h"
#include "model/DeviceFiles.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace orvista {

/// The device files in the order in which they are sent.
inline constexpr auto transferredDeviceFiles = [] {
    std::array<std::string_view, deviceFiles.size()> names;
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = deviceFiles[i]->name;
    return names;
}();

} // namespace orvista
