#include "display/FirstSight.h"

#include "display/RasterAt.h"
#include "display/SettledPage.h"
#include "display/StepTiming.h"
#include "script/ScriptInterpreter.h"

#include <algorithm>

namespace orvista {

LedRaster firstSight(const Programme& programme, const DisplayValues& values) {
    const Programme::Moment start = programme.momentAt(0);
    if (start.step == nullptr) // nothing lasts
        return rasterAt(programme, values, 0);
    return settledPage(programme, static_cast<std::size_t>(start.page - programme.pages().data()), values);
}

LedRaster firstSight(std::string_view script, PanelSize panel, const FieldFormats& formats,
                     const DisplayValues& values, const BitmapProvider& bitmaps) {
    Programme programme(panel, formats);
    const auto isSeen = [](const ScriptPage& page) { return std::ranges::any_of(page.steps, lasts); };
    programme.add({}, interpretUntil(script, isSeen), bitmaps);
    return firstSight(programme, values);
}

} // namespace orvista
