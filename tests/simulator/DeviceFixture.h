#pragma once

#include "display/RasterAt.h"
#include "tests/support/TemporaryFolder.h"

#include <string>
#include <vector>

/// Files of a device as tests write them by hand.
namespace orvista::testing {

/// Blocks "DEFMSG <kind><n>" for the given scripts, whose lines are separated by LF.
inline std::string messageFile(const std::string& kind, const std::vector<std::string>& scripts) {
    std::string file;
    for (std::size_t index = 0; index < scripts.size(); ++index) {
        file += "DEFMSG " + kind + std::to_string(index + 1) + "\r\n";
        for (const char character : scripts[index])
            file += character == '\n' ? std::string("\r\n") : std::string(1, character);
        file += "\r\nENDMSG\r\n";
    }
    return file;
}

/// One page that stands still for a second.
inline std::string page(const std::string& content) {
    return "CLEAR\n" + content + "\nACT STILL 1000";
}

/// All dots off but a rectangle at the top left.
inline LedRaster block(int width, int height, Led led, int columns = 128) {
    LedRaster raster({columns});
    raster.fill(0, 0, width, height, led);
    return raster;
}

/// What the panel shows of one script that uses no variable, with nothing in the way.
inline LedRaster rasterOf(const std::string& script, int columns = 128) {
    Programme programme({columns}, fieldFormats(Project()));
    programme.add({}, script, NoBitmaps());
    return rasterAt(programme, {}, 0);
}

/// A 24-bit bitmap of one row: each pixel blue, green, red, the rows padded to four bytes.
inline std::string oneRowBitmap(const std::vector<std::string>& pixels) {
    const auto number = [](std::size_t value, int bytes) {
        std::string text;
        for (; bytes > 0; --bytes, value /= 256)
            text += static_cast<char>(value % 256);
        return text;
    };
    std::string row;
    for (const std::string& pixel : pixels)
        row += pixel;
    row.resize((row.size() + 3) / 4 * 4);
    return "BM" + number(54 + row.size(), 4) + number(0, 4) + number(54, 4) + number(40, 4) +
           number(pixels.size(), 4) + number(1, 4) + number(1, 2) + number(24, 2) + number(0, 4) +
           number(row.size(), 4) + number(0, 16) + row;
}

} // namespace orvista::testing
