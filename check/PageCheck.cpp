#include "check/PageCheck.h"

#include "check/Coverings.h"
#include "check/FitTexts.h"
#include "check/Quoted.h"
#include "display/PageFit.h"
#include "display/StepTiming.h"
#include "model/BitmapName.h"
#include "model/Item.h"
#include "model/Numbers.h"
#include "model/Text.h"
#include "script/ScriptCommands.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <variant>

namespace orvista {

namespace {

std::string fieldName(const FieldElement& field) {
    switch (field.value) {
    case LiveValue::Float:
        return nameOf({Kind::Float, field.index});
    case LiveValue::Boolean:
        return nameOf({Kind::Boolean, field.index});
    case LiveValue::Time:
        return "TIME";
    case LiveValue::Date:
        return "DATE";
    }
    return {};
}

std::string panelName(PanelSize panel) {
    return "the panel of " + decimalText(panel.columns) + " x " + decimalText(panel.rows) + " dots";
}

/// The end of a sentence: what else helps than to change what does not fit.
std::string orLetPass(const PageFit::Unseen& unseen) {
    if (!unseen.wayOut)
        return ".";
    return ", or let the page leave with OUT " + std::string(effectName(*unseen.wayOut)) + ".";
}

/// Finds what is wrong with the elements of one page, in their order.
class PageCheck {
public:
    PageCheck(const ScriptPage& page, PanelSize panel, const FieldFormats& formats,
              const BitmapsByName& bitmaps, FindingList& found)
        : page_(page),
          panel_(panel),
          formats_(formats),
          bitmaps_(bitmaps),
          found_(found),
          fit_(page, panel, formats),
          coverings_(page, formats) {}

    void run() {
        checkDuration();
        for (std::size_t i = 0; i < page_.elements.size(); ++i)
            std::visit([&](const auto& element) { checkElement(i, element); }, page_.elements[i]);
    }

private:
    void checkDuration() {
        const auto first = std::ranges::find_if(page_.elements, [this](const ScriptElement& element) {
            const DotBox box = drawnBox(element, formats_);
            return box.left < box.right;
        });
        if (first == page_.elements.end() || !lastsNoTime())
            return;
        found_.add(codes::neverSeen, {sourceOf(*first).line, sourceOf(*first).command}, [] {
            return "Nothing of this page is seen, because it lasts 0 milliseconds: give it a time, such as "
                   "ACT STILL 3000.";
        });
    }

    bool lastsNoTime() const {
        return std::ranges::all_of(page_.steps, [this](const ScriptStep& step) {
            return stepDuration(page_, step, panel_, formats_) == 0;
        });
    }

    FindingList::Where contentOf(std::size_t element, std::size_t offset = 0) const {
        const ScriptSource& source = sourceOf(page_.elements[element]);
        return {source.line, source.content + offset};
    }

    void checkElement(std::size_t index, const TextElement& text);
    void checkElement(std::size_t index, const ImageElement& image);
    void checkElement(std::size_t index, const FieldElement& field);

    void checkUnshown(std::size_t index, const ImageElement& image);
    void checkColours(std::size_t index, bool needsTwo);
    void checkFieldUnder(std::size_t index, std::string_view drawn);

    const ScriptPage& page_;
    const PanelSize panel_;
    const FieldFormats& formats_;
    const BitmapsByName& bitmaps_;
    FindingList& found_;
    const PageFit fit_;
    Coverings coverings_;
};

void PageCheck::checkColours(std::size_t index, bool needsTwo) {
    const Placement& placement = placementOf(page_.elements[index]);
    if (!needsTwo || placement.foreground != placement.background)
        return;
    const ScriptSource& source = sourceOf(page_.elements[index]);
    found_.add(codes::invisible, {source.line, source.background}, [] {
        return "Nothing can be made out here, because foreground and background have the same colour: choose "
               "two colours.";
    });
}

void PageCheck::checkFieldUnder(std::size_t index, std::string_view drawn) {
    const auto under = coverings_.fieldUnder(index);
    if (!under)
        return;
    found_.add(codes::fieldOverlap, contentOf(index), [&] {
        const std::string name = fieldName(std::get<FieldElement>(page_.elements[*under]));
        return std::string(drawn) + " and the field " + name +
               " of this page lie one on the other, so that one of them cannot be read: move it.";
    });
}

void PageCheck::checkElement(std::size_t index, const TextElement& text) {
    const PageFit::Unseen unseen = fit_.unseen(index, Passing::Counts);
    if (unseen.count > 0)
        found_.add(codes::textCut, contentOf(index, unseen.first), [&] {
            return unfitText(unseen.count) + " on " + panelName(panel_) +
                   " and cannot be read: shorten or move the text" + orLetPass(unseen);
        });
    checkColours(index, text.text.find_first_not_of(' ') != std::string::npos);
    checkFieldUnder(index, "This text");
}

void PageCheck::checkUnshown(std::size_t index, const ImageElement& image) {
    const auto error = bitmaps_.at(lowerAscii(image.name)).error;
    if (!error) {
        found_.add(codes::missingBitmap, contentOf(index), [&] {
            return "The display draws nothing here, because the project's folder has no bitmap " +
                   quoted(image.name) + ": put it there or correct the name.";
        });
        return;
    }
    found_.add(codes::unreadableBitmap, contentOf(index), [&] {
        return "The display draws nothing here, because the bitmap " + quoted(image.name) + " " +
               std::string(description(*error)) + ": save it anew, uncompressed and at most " +
               decimalText(maximumBitmapWidth) + " x " + decimalText(maximumBitmapHeight) + " dots.";
    });
}

void PageCheck::checkElement(std::size_t index, const ImageElement& image) {
    if (!isBitmapName(image.name)) {
        found_.add(codes::missingBitmap, contentOf(index), [&] {
            return "The display draws nothing here, because only files whose names end in .bmp are sent to "
                   "it and " +
                   quoted(image.name) + " does not: save the picture as a bitmap and name that.";
        });
        return;
    }
    if (!image.image) {
        checkUnshown(index, image);
        return;
    }
    if (const PageFit::Unseen unseen = fit_.unseen(index, Passing::Counts); unseen.count > 0)
        found_.add(codes::bitmapCut, contentOf(index), [&] {
            return "The bitmap of " + decimalText(image.image->width) + " x " +
                   decimalText(image.image->height) + " dots does not fit on " + panelName(panel_) +
                   " and is not seen whole: move it or make it smaller" + orLetPass(unseen);
        });
    checkColours(index, image.image->isStencil);
    checkFieldUnder(index, "This bitmap");
}

void PageCheck::checkElement(std::size_t index, const FieldElement& field) {
    const PageFit::Unseen unseen = fit_.unseen(index, Passing::Counts);
    const auto width = [&] { return decimalText(shownWidth(field, formats_)); };
    if (unseen.count > 0)
        found_.add(codes::fieldCut, contentOf(index), [&] {
            return decimalText(unseen.count) + " of the " + width() + " characters of " + fieldName(field) +
                   (unseen.count == 1 ? " does" : " do") + " not fit on " + panelName(panel_) +
                   " and cannot be read: move the field or make it narrower" + orLetPass(unseen);
        });
    checkColours(index, true);
    if (coverings_.coversText(index))
        found_.add(codes::fieldGap, contentOf(index), [&] {
            return fieldName(field) + " is " + width() + " wide and covers characters of this page: leave " +
                   width() + " blanks for it.";
        });
    checkFieldUnder(index, fieldName(field));
}

} // namespace

void checkPage(const ScriptPage& page, PanelSize panel, const FieldFormats& formats,
               const BitmapsByName& bitmaps, FindingList& found) {
    PageCheck(page, panel, formats, bitmaps, found).run();
}

} // namespace orvista
