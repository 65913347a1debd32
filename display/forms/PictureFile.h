#pragma once

#include "display/LedRaster.h"
#include "model/People.h"
#include "model/Project.h"

class QWidget;

namespace orvista {

/// Asks where to, and saves a picture of the panel (PNG). A failure is told in a message box.
/// \param project in whose folder the choice begins
void saveAsPicture(const LedRaster& raster, const Project& project, Messages& messages, QWidget* parent);

/// Puts the same picture onto the clipboard.
void copyAsPicture(const LedRaster& raster);

} // namespace orvista
