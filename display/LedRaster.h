#pragma once

#include "script/Styles.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// Size of a panel in dots.
struct PanelSize {
    static constexpr int panelRows = 16;
    static constexpr int usualColumns = 128;
    static constexpr int maximumColumns = 4096;

    int columns;
    int rows = panelRows;
    bool operator==(const PanelSize&) const = default;
};

/// The state of every dot of a panel, row by row from the top left.
class LedRaster {
public:
    /// All dots off.
    /// \throws std::invalid_argument for a size below 1 x 1 or above PanelSize::maximumColumns in either way
    explicit LedRaster(PanelSize size);

    int columns() const { return size_.columns; }
    int rows() const { return size_.rows; }
    PanelSize size() const { return size_; }
    /// Unchecked; x counts from the left, y from the top.
    Led at(int x, int y) const { return leds_[index(x, y)]; }
    /// Dots outside the panel are ignored.
    void set(int x, int y, Led led);
    /// Sets all dots of a rectangle; the part outside the panel is ignored.
    void fill(int x, int y, int width, int height, Led led);
    const std::vector<Led>& leds() const { return leds_; }

    bool operator==(const LedRaster&) const = default;

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(size_.columns) +
               static_cast<std::size_t>(x);
    }

    PanelSize size_;
    std::vector<Led> leds_;
};

/// The panel that a text shows: one line per row, one character per dot, '.', 'R', 'G' or 'O'. Empty lines at
/// the start and end are skipped. \throws std::invalid_argument for another character, lines of different
/// lengths or an empty text
LedRaster ledRasterFromText(std::string_view text);

} // namespace orvista
