#pragma once

#include "display/DisplayValues.h"

#include <functional>

namespace orvista {

/// How the preview shows messages at the moment.
struct PreviewSetting {
    int columns; ///< of the display, 1 to PanelSize::maximumColumns
    DisplayValues values;
};
using PreviewSettingSource = std::function<PreviewSetting()>;

} // namespace orvista
