#pragma once

#include "display/DisplayValues.h"

#include <functional>

namespace orvista {

class MasterView;

/// How the preview shows messages at the moment.
struct PreviewSetting {
    int columns; ///< of the display, 1 to PanelSize::maximumColumns
    DisplayValues values;
    const MasterView* master = nullptr; ///< how the project is looked at; null where it is shown as it is
};
using PreviewSettingSource = std::function<PreviewSetting()>;

} // namespace orvista
