#include "console/Picture.h"

#include "console/NotesBeside.h"
#include "console/OptionChecks.h"
#include "console/Output.h"
#include "display/BitmapFaults.h"
#include "display/PanelDrawing.h"
#include "display/PngFile.h"
#include "model/Numbers.h"
#include "model/Text.h"

#include <CLI/App.hpp>

#include <ctime>

namespace orvista::console {

namespace {

constexpr int largestScale = 64;
/// Of a picture that is drawn and written in a second or two.
constexpr std::int64_t maximumPixels = 64'000'000;

} // namespace

void addPictureSize(CLI::App& command, PictureOptions& options) {
    addPanelColumns(command, options.columns);
    command.add_option("--scale", options.scale, "Pixels of the picture for each dot, 1 to 64")
        ->type_name("N")
        ->check(wholeNumbers(1, largestScale))
        ->capture_default_str();
}

void expectPicture(const PictureOptions& options) {
    if (!endsWithIgnoringCase(options.file, ".png"))
        throw CommandFailure(ExitStatus::Unusable, options.file + " does not end in .png");
    const PixelSize size = drawnSize({options.width()}, options.scale);
    if (std::int64_t{size.width} * size.height > maximumPixels)
        throw CommandFailure(ExitStatus::Unusable, "the picture would be " + decimalText(size.width) + " x " +
                                                       decimalText(size.height) +
                                                       " pixels, and 64 million are the most: give a "
                                                       "smaller --scale or fewer --columns");
}

ExitStatus writePicture(const PictureOptions& options, const LedRaster& raster, const Programme& programme,
                        const BitmapProvider& bitmaps) {
    writeFile(options.file, pngFile(drawPanel(raster, options.scale)));
    const auto faults = bitmapFaults(programme.pages(), bitmaps);
    for (const std::string& fault : faults)
        complain(fault);
    return faults.empty() ? ExitStatus::Well : ExitStatus::Found;
}

LocalTime localTimeNow() {
    const std::time_t seconds = std::time(nullptr);
    const std::tm* const parts = std::localtime(&seconds);
    return {parts->tm_year + 1900, parts->tm_mon + 1, parts->tm_mday,
            parts->tm_hour,        parts->tm_min,     parts->tm_sec};
}

} // namespace orvista::console
