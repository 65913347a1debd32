#pragma once

#include "model/DeviceFiles.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// The device files in the order in which they are sent.
inline constexpr std::array<std::string_view, 5> transferredDeviceFiles = {
    modbusAdrName, ilmVarName, stdMsgName, altMsgName, defaultPlsName};

/// True for "*.bmp" in any case.
bool isBitmapName(std::string_view name);

/// Names of the folder's bitmaps: regular files (or links to them) only, sorted with ASCII case folded. A
/// folder that cannot be read has none.
/// \param folder UTF-8
std::vector<std::string> bitmapsOfFolder(const std::string& folder);

} // namespace orvista
