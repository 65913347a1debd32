#include "display/PagePainter.h"

#include "display/LedFont.h"
#include "display/PageText.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <variant>

namespace orvista {

namespace {

void paintCell(LedRaster& raster, int x, int y, LedFont font, unsigned char character,
               const Placement& colours) {
    const Glyph& picture = glyph(font, character);
    raster.fill(x, y, cellWidth(font), cellHeight(font), colours.background);
    for (int row = 0; row < cellHeight(font); ++row)
        for (int column = 0; column < cellWidth(font); ++column)
            if ((picture.rows[static_cast<std::size_t>(row)] & 0x80 >> column) != 0)
                raster.set(x + column, y + row, colours.foreground);
}

void paintText(LedRaster& raster, std::string_view text, LedFont font, const Placement& placement,
               Offset offset) {
    const std::int64_t width = cellWidth(font);
    const std::int64_t left = placement.x + offset.x;
    const std::int64_t top = placement.y + offset.y;
    if (top >= raster.rows() || top + cellHeight(font) <= 0 || left >= raster.columns())
        return;
    const std::int64_t first = left < 0 ? -left / width : 0;
    const std::int64_t end =
        std::min((raster.columns() - left + width - 1) / width, static_cast<std::int64_t>(text.size()));
    for (std::int64_t i = first; i < end; ++i)
        paintCell(raster, static_cast<int>(left + i * width), static_cast<int>(top), font,
                  static_cast<unsigned char>(text[static_cast<std::size_t>(i)]), placement);
}

void paintImage(LedRaster& raster, const LedImage& image, const Placement& placement, Offset offset) {
    const std::int64_t left = placement.x + offset.x;
    const std::int64_t top = placement.y + offset.y;
    const std::int64_t right = std::min<std::int64_t>(image.width, raster.columns() - left);
    const std::int64_t bottom = std::min<std::int64_t>(image.height, raster.rows() - top);
    for (std::int64_t y = std::max<std::int64_t>(0, -top); y < bottom; ++y) {
        for (std::int64_t x = std::max<std::int64_t>(0, -left); x < right; ++x) {
            Led led = image.leds[static_cast<std::size_t>(y * image.width + x)];
            if (image.isStencil)
                led = led == Led::Off ? placement.background : placement.foreground;
            raster.set(static_cast<int>(left + x), static_cast<int>(top + y), led);
        }
    }
}

/// One overload for each kind of element: a new kind does not compile until it is painted.
struct ElementPainter {
    LedRaster& raster;
    const LedImage* image; ///< of a bitmap; null draws nothing
    Offset offset;
    const FieldFormats& formats;
    const DisplayValues& values;

    void operator()(const TextElement& text) const {
        paintText(raster, text.text, text.font, text.placement, offset);
    }
    void operator()(const FieldElement& field) const {
        paintText(raster, fieldText(field, formats, values), field.font, field.placement, offset);
    }
    void operator()(const ImageElement& bitmap) const {
        if (image != nullptr)
            paintImage(raster, *image, bitmap.placement, offset);
    }
};

} // namespace

void paintPage(LedRaster& raster, const DrawnPage& page, std::size_t elementCount, Offset offset,
               const FieldFormats& formats, const DisplayValues& values) {
    for (std::size_t i = 0; i < elementCount; ++i)
        std::visit(ElementPainter{raster, page.imageOf(i), offset, formats, values}, page.elements[i]);
}

} // namespace orvista
