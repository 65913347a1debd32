#include "display/LedRaster.h"

#include <algorithm>
#include <stdexcept>

namespace orvista {

namespace {

constexpr std::string_view ledLetters = ".RGO";

std::size_t checkedDotCount(PanelSize size) {
    const auto isPossible = [](int length) { return length >= 1 && length <= PanelSize::maximumColumns; };
    if (!isPossible(size.columns) || !isPossible(size.rows))
        throw std::invalid_argument("no panel has this size");
    return static_cast<std::size_t>(size.columns) * static_cast<std::size_t>(size.rows);
}

std::vector<std::string_view> filledLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        lines.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const auto isEmpty = [](std::string_view line) { return line.empty(); };
    lines.erase(lines.begin(), std::find_if_not(lines.begin(), lines.end(), isEmpty));
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

} // namespace

LedRaster::LedRaster(PanelSize size) : size_(size), leds_(checkedDotCount(size), Led::Off) {}

void LedRaster::set(int x, int y, Led led) {
    if (x >= 0 && x < size_.columns && y >= 0 && y < size_.rows)
        leds_[index(x, y)] = led;
}

void LedRaster::fill(int x, int y, int width, int height, Led led) {
    const int left = std::max(x, 0);
    const auto right = std::min<std::int64_t>(std::int64_t{x} + width, size_.columns);
    const auto bottom = std::min<std::int64_t>(std::int64_t{y} + height, size_.rows);
    for (int row = std::max(y, 0); row < bottom && left < right; ++row)
        std::fill_n(leds_.begin() + static_cast<std::ptrdiff_t>(index(left, row)), right - left, led);
}

LedRaster ledRasterFromText(std::string_view text) {
    const auto lines = filledLines(text);
    if (lines.empty())
        throw std::invalid_argument("an empty text shows no panel");
    LedRaster raster({static_cast<int>(lines.front().size()), static_cast<int>(lines.size())});
    for (int y = 0; y < raster.rows(); ++y) {
        const std::string_view line = lines[static_cast<std::size_t>(y)];
        if (line.size() != lines.front().size())
            throw std::invalid_argument("lines of different lengths");
        for (int x = 0; x < raster.columns(); ++x) {
            const auto led = ledLetters.find(line[static_cast<std::size_t>(x)]);
            if (led == std::string_view::npos)
                throw std::invalid_argument("a character that is no LED");
            raster.set(x, y, static_cast<Led>(led));
        }
    }
    return raster;
}

} // namespace orvista
