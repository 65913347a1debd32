#pragma once

#include "check/Finding.h"
#include "check/PageCheck.h"
#include "display/BitmapProvider.h"
#include "display/DrawnPage.h"
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

/// The page with the images of its bitmaps; asks for those that have not been asked for. Files of other names
/// never come to the display.
DrawnPage drawnPage(ScriptPage page, const BitmapProvider& provider, BitmapsByName& bitmaps);

CheckedMessage checkScript(Item item, std::string_view script, PanelSize panel, const FieldFormats& formats,
                           const BitmapProvider& bitmaps);

} // namespace orvista
