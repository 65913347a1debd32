#include "check/PageFitText.h"

#include "check/FitTexts.h"
#include "display/BitmapFaults.h"
#include "display/PageFit.h"
#include "display/PageLayout.h"
#include "model/Numbers.h"
#include "model/Quotation.h"

#include <algorithm>
#include <variant>
#include <vector>

namespace orvista {

namespace {

std::string charactersText(const DrawnPage& page, PanelSize panel, const FieldFormats& formats) {
    if (const std::size_t unread = unfitCharacters(page, panel, formats, Passing::Counts))
        return unfitText(unread);
    const std::size_t beyond = unfitCharacters(page, panel, formats, Passing::Ignored);
    if (beyond == 0)
        return {};
    return "passes whole, " + countedText(beyond, "character") + " at a time beyond the edge";
}

/// "72 dots too wide", "72 dots too wide and 8 dots too high"
std::string excessText(const DotBox& box, PanelSize panel) {
    const auto beyond = [](std::int64_t first, std::int64_t end, std::int64_t room) {
        return static_cast<std::uint64_t>(std::max<std::int64_t>(0, -first) +
                                          std::max<std::int64_t>(0, end - room));
    };
    const std::uint64_t wide = beyond(box.left, box.right, panel.columns);
    const std::uint64_t high = beyond(box.top, box.bottom, panel.rows);
    std::string text;
    if (wide > 0)
        text = countedText(wide, "dot") + " too wide";
    if (high > 0)
        text += (text.empty() ? "" : " and ") + countedText(high, "dot") + " too high";
    return text;
}

} // namespace

std::string pageFitText(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
                        const BitmapProvider& bitmaps) {
    std::vector<std::string> parts{charactersText(page, panel, formats)};
    const auto isImage = [](const ScriptElement& element) {
        return std::holds_alternative<ImageElement>(element);
    };
    const bool isOnlyOne = std::ranges::count_if(page.elements, isImage) == 1;
    const PageFit fit(page, panel, formats);
    for (std::size_t i = 0; i < page.elements.size(); ++i)
        if (isImage(page.elements[i]) && fit.unseen(i, Passing::Counts).count > 0)
            parts.push_back(
                (isOnlyOne ? "the bitmap" : printable(std::get<ImageElement>(page.elements[i]).name)) +
                " is " + excessText(drawnBox(page, i, formats), panel));
    std::ranges::move(bitmapFaults({&page, 1}, bitmaps), std::back_inserter(parts));

    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() || part.empty() ? "" : "; ") + part;
    return text;
}

} // namespace orvista
