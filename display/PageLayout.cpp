#include "display/PageLayout.h"

#include "display/LedFont.h"
#include "display/LedImage.h"

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

DotBox drawnBox(const TextElement& text, const FieldFormats&) {
    return cellsAt(text.placement, text.font, static_cast<std::int64_t>(text.text.size()));
}

DotBox drawnBox(const ImageElement& image, const FieldFormats&) {
    const bool takesRoom = image.image && !image.image->isStandIn;
    return takesRoom ? boxAt(image.placement, image.image->width, image.image->height)
                     : boxAt(image.placement, 0, 0);
}

DotBox drawnBox(const FieldElement& field, const FieldFormats& formats) {
    return cellsAt(field.placement, field.font, shownWidth(field, formats));
}

DotBox drawnBox(const ScriptElement& element, const FieldFormats& formats) {
    return std::visit([&](const auto& drawn) { return drawnBox(drawn, formats); }, element);
}

PageExtent pageExtent(const ScriptPage& page, std::size_t elementCount, const FieldFormats& formats) {
    PageExtent extent;
    for (std::size_t i = 0; i < elementCount; ++i) {
        const DotBox box = drawnBox(page.elements[i], formats);
        extent.width = std::max(extent.width, box.right);
        extent.height = std::max(extent.height, box.bottom);
    }
    return extent;
}

} // namespace orvista
