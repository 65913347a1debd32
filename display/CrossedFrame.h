#pragma once

#include "display/LedImage.h"

#include <string_view>

namespace orvista {

/// What is drawn in the place of a bitmap that is not there or cannot be shown: a crossed frame with the
/// bitmap's name (Windows-1252; at most 80 characters of it), as high as the panel.
LedImage crossedFrame(std::string_view name);

} // namespace orvista
