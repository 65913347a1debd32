#include "check/PageCheck.h"

#include "check/FitTexts.h"
#include "check/Occlusions.h"
#include "display/PageFit.h"
#include "display/StepTiming.h"
#include "model/BitmapName.h"
#include "model/Numbers.h"
#include "model/Quotation.h"
#include "model/Text.h"
#include "script/WizardLists.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <variant>

namespace orvista {

namespace {

const std::string& fieldName(const FieldElement& field) {
    return wizard::fieldSources()[wizard::fieldSourcePosition(field.value, field.index)].shown;
}

FindingList::Where placeOf(std::size_t line, const ScriptSpan& span) {
    return {line, span.column, span.length};
}

std::string panelName(PanelSize panel) {
    return "the panel of " + decimalText(panel.columns) + " x " + decimalText(panel.rows) + " dots";
}

/// "dots 96 to 103"
/// \param end the first beyond them
std::string dotRange(std::int64_t first, std::int64_t end) {
    if (end - first == 1)
        return "dot " + decimalText(first);
    return "dots " + decimalText(first) + " to " + decimalText(end - 1);
}

/// The end of a sentence: what else helps than to change what does not fit.
std::string orLetPass(const PageFit::Unseen& unseen) {
    if (!unseen.wayOut)
        return ".";
    return ", or let the page leave with OUT " + std::string(styleOf(*unseen.wayOut).shown) + ".";
}

/// Finds what is wrong with the elements of one page, in their order.
class PageCheck {
public:
    PageCheck(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
              const BitmapsByName& bitmaps, FindingList& found)
        : page_(page),
          panel_(panel),
          formats_(formats),
          bitmaps_(bitmaps),
          found_(found),
          fit_(page, panel, formats),
          occlusions_(page, formats) {}

    void run() {
        checkDuration();
        for (std::size_t i = 0; i < page_.elements.size(); ++i)
            std::visit([&](const auto& element) { checkElement(i, element); }, page_.elements[i]);
    }

private:
    void checkDuration() {
        if (std::ranges::any_of(page_.steps, lasts))
            return;
        std::size_t first = 0;
        while (first < page_.elements.size() && !isDrawn(first))
            ++first;
        if (first == page_.elements.size())
            return;
        const ScriptSource& source = sourceOf(page_.elements[first]);
        found_.add(Code::NeverSeen, placeOf(source.line, source.command), [] {
            return "Nothing of this page is seen, because it lasts 0 milliseconds: give it a time, such as "
                   "ACT STILL 3000.";
        });
    }

    bool isDrawn(std::size_t element) const {
        const DotBox box = drawnBox(page_, element, formats_);
        return box.left < box.right;
    }

    FindingList::Where contentOf(std::size_t element, std::size_t offset = 0) const {
        const ScriptSource& source = sourceOf(page_.elements[element]);
        return {source.line, source.content.column + offset, source.content.length - offset};
    }

    void checkElement(std::size_t index, const TextElement& text);
    void checkElement(std::size_t index, const ImageElement& image);
    void checkElement(std::size_t index, const FieldElement& field);

    void checkUnshown(std::size_t index, const ImageElement& image);
    void checkColours(std::size_t index, bool needsTwo);
    void checkFieldUnder(std::size_t index, std::string_view drawn);

    const DrawnPage& page_;
    const PanelSize panel_;
    const FieldFormats& formats_;
    const BitmapsByName& bitmaps_;
    FindingList& found_;
    const PageFit fit_;
    Occlusions occlusions_;
};

void PageCheck::checkColours(std::size_t index, bool needsTwo) {
    const Placement& placement = placementOf(page_.elements[index]);
    if (!needsTwo || placement.foreground != placement.background)
        return;
    const ScriptSource& source = sourceOf(page_.elements[index]);
    found_.add(Code::Invisible, placeOf(source.line, source.background), [] {
        return "This cannot be seen: foreground and background are the same colour. Choose two colours.";
    });
}

void PageCheck::checkFieldUnder(std::size_t index, std::string_view drawn) {
    const auto under = occlusions_.fieldUnder(index);
    if (!under)
        return;
    found_.add(Code::FieldOverlap, contentOf(index), [&] {
        const auto& field = std::get<FieldElement>(page_.elements[*under]);
        const DotBox below = drawnBox(page_, *under, formats_);
        const DotBox above = drawnBox(page_, index, formats_);
        const std::string text =
            std::string(drawn) + " covers " + fieldName(field) + " (" +
            dotRange(std::max(above.left, below.left), std::min(above.right, below.right));
        const bool hasRoomBeside =
            above.left >= below.left && below.right + above.right - above.left <= panel_.columns;
        return text + (hasRoomBeside ? "): begin it at " + decimalText(below.right) + "." : "): move it.");
    });
}

void PageCheck::checkElement(std::size_t index, const TextElement& text) {
    const PageFit::Unseen unseen = fit_.unseen(index, Passing::Counts);
    if (unseen.count > 0)
        found_.add(Code::TextCut, contentOf(index, unseen.first), [&] {
            return unfitText(unseen.count) + " on " + panelName(panel_) +
                   " and cannot be read: shorten or move the text" + orLetPass(unseen);
        });
    checkColours(index, text.text.find_first_not_of(' ') != std::string::npos);
    checkFieldUnder(index, "This text");
}

void PageCheck::checkUnshown(std::size_t index, const ImageElement& image) {
    const auto error = bitmaps_.at(lowerAscii(image.name)).error;
    if (!error) {
        found_.add(Code::MissingBitmap, contentOf(index), [&] {
            return "The display draws nothing here, because the project's folder has no bitmap " +
                   deviceQuotation(image.name) + ": put it there or correct the name.";
        });
        return;
    }
    found_.add(Code::UnreadableBitmap, contentOf(index), [&] {
        return "The display draws nothing here, because the bitmap " + deviceQuotation(image.name) + " " +
               std::string(description(*error)) + ": save it again, uncompressed and at most " +
               decimalText(maximumBitmapWidth) + " x " + decimalText(maximumBitmapHeight) + " dots.";
    });
}

void PageCheck::checkElement(std::size_t index, const ImageElement& image) {
    if (!isBitmapName(image.name)) {
        found_.add(Code::MissingBitmap, contentOf(index), [&] {
            return "The display draws nothing here, because only files whose names end in .bmp are sent to "
                   "it and " +
                   deviceQuotation(image.name) + " does not: save the picture as a bitmap and name that.";
        });
        return;
    }
    const LedImage* const shown = page_.imageOf(index);
    if (shown == nullptr) {
        checkUnshown(index, image);
        return;
    }
    if (const PageFit::Unseen unseen = fit_.unseen(index, Passing::Counts); unseen.count > 0)
        found_.add(Code::BitmapCut, contentOf(index), [&] {
            return "The bitmap of " + decimalText(shown->width) + " x " + decimalText(shown->height) +
                   " dots does not fit on " + panelName(panel_) +
                   " and is not seen whole: move it or make it smaller" + orLetPass(unseen);
        });
    checkColours(index, shown->isStencil);
    checkFieldUnder(index, "This bitmap");
}

void PageCheck::checkElement(std::size_t index, const FieldElement& field) {
    const PageFit::Unseen unseen = fit_.unseen(index, Passing::Counts);
    const auto width = [&] { return decimalText(shownWidth(field, formats_)); };
    if (unseen.count > 0)
        found_.add(Code::FieldCut, contentOf(index), [&] {
            return decimalText(unseen.count) + " of the " + width() + " characters of " + fieldName(field) +
                   (unseen.count == 1 ? " does" : " do") + " not fit on " + panelName(panel_) +
                   " and cannot be read: move the field or make it narrower" + orLetPass(unseen);
        });
    checkColours(index, true);
    if (occlusions_.coversText(index))
        found_.add(Code::FieldGap, contentOf(index), [&] {
            return fieldName(field) + " is " + width() + " wide and covers characters of this page: leave " +
                   width() + " blanks for it.";
        });
    checkFieldUnder(index, fieldName(field));
}

} // namespace

void checkPage(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
               const BitmapsByName& bitmaps, FindingList& found) {
    PageCheck(page, panel, formats, bitmaps, found).run();
}

} // namespace orvista
