#pragma once

#include "tools/help-pictures/HelpScripts.h"

#include "display/BitmapProvider.h"

#include <QImage>

namespace orvista::help {

/// The simulated display at each of the script's moments, one below the other. Its variables and its clock
/// are those that the help's page about the message language names.
QImage scriptPicture(const HelpScript& script, const BitmapProvider& bitmaps);

} // namespace orvista::help
