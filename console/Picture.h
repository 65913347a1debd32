#pragma once

#include "console/CommandFailure.h"
#include "display/BitmapProvider.h"
#include "display/DisplayValues.h"
#include "display/Programme.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

/// Pictures of the panel.
namespace orvista::console {

struct PictureOptions {
    std::string file;
    std::optional<int> columns; ///< as the option says, or what is taken in its place
    int scale = 8;              ///< pixels for each dot

    int width() const { return columns.value_or(PanelSize::usualColumns); }
};

/// --columns and --scale.
void addPictureSize(CLI::App& command, PictureOptions& options);

/// \throws CommandFailure for another ending than .png, and for too large a picture
void expectPicture(const PictureOptions& options);

/// Writes it, and names the bitmaps that the programme's pages name and the display cannot show.
/// \returns Found where there are any
ExitStatus writePicture(const PictureOptions& options, const LedRaster& raster, const Programme& programme,
                        const BitmapProvider& bitmaps);

/// Of this computer.
LocalTime localTimeNow();

} // namespace orvista::console
