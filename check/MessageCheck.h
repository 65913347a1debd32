#pragma once

#include "check/Finding.h"
#include "check/PageCheck.h"
#include "display/BitmapProvider.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "script/VariableUse.h"

#include <string>
#include <string_view>

namespace orvista {

/// A message's findings, and all but its script that they depend on.
struct CheckedMessage {
    Findings findings;
    VariableUse variables;
    BitmapsByName bitmaps; ///< that it names
};

CheckedMessage checkScript(Item item, std::string_view script, PanelSize panel, const FieldFormats& formats,
                           const BitmapProvider& bitmaps);

} // namespace orvista
