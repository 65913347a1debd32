#pragma once

#include "check/Finding.h"
#include "display/BitmapProvider.h"
#include "items/MasterView.h"

#include <string_view>

namespace orvista {

/// What is found in one script, as if it were that message of the project that is looked at. In a master the
/// places are filled as they are shown; findings are at their places in the script as it is given.
/// \param columns of the panel, 1 to PanelSize::maximumColumns
Findings checkShownMessage(Item item, std::string_view script, const MasterView& view,
                           const BitmapProvider& bitmaps, int columns);

} // namespace orvista
