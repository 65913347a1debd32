#include "display/PageLayout.h"

#include "display/LedFont.h"

#include <algorithm>
#include <variant>

namespace orvista {

namespace {

DotBox boxAt(const Placement& placement, std::int64_t width, std::int64_t height) {
    return {placement.x, placement.y, placement.x + width, placement.y + height};
}

DotBox cellsAt(const Placement& placement, LedFont font, std::int64_t count) {
    return boxAt(placement, count * cellWidth(font), cellHeight(font));
}

} // namespace

std::int64_t shownWidth(const FieldElement& field, const FieldFormats& formats) {
    switch (field.value) {
    case LiveValue::Float:
        return formats.floats[field.index].width;
    case LiveValue::Boolean: {
        const BooleanTexts& texts = formats.booleans[field.index];
        return static_cast<std::int64_t>(std::max(texts.on.size(), texts.off.size()));
    }
    case LiveValue::Time:
        return timeFieldLength;
    case LiveValue::Date:
        return dateFieldLength;
    }
    return 0;
}

DotBox drawnBox(const DrawnPage& page, std::size_t element, const FieldFormats& formats) {
    const ScriptElement& drawn = page.elements[element];
    if (const auto* const text = std::get_if<TextElement>(&drawn))
        return cellsAt(text->placement, text->font, static_cast<std::int64_t>(text->text.size()));
    if (const auto* const field = std::get_if<FieldElement>(&drawn))
        return cellsAt(field->placement, field->font, shownWidth(*field, formats));
    const LedImage* const image = page.imageOf(element);
    const bool takesRoom = image != nullptr && !image->isStandIn;
    return takesRoom ? boxAt(placementOf(drawn), image->width, image->height)
                     : boxAt(placementOf(drawn), 0, 0);
}

PageExtent pageExtent(const DrawnPage& page, std::size_t elementCount, const FieldFormats& formats) {
    PageExtent extent;
    for (std::size_t i = 0; i < elementCount; ++i) {
        const DotBox box = drawnBox(page, i, formats);
        extent.width = std::max(extent.width, box.right);
        extent.height = std::max(extent.height, box.bottom);
    }
    return extent;
}

} // namespace orvista
