#pragma once

#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "display/PageLayout.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// What of a page is to be seen on the panel. A character is seen when all its lit dots lie on the panel at
/// once; blanks always are. A field's character has the dots of all that it can show.
namespace orvista {

/// Whether it counts, too, what is seen while the page enters or leaves.
enum class Passing { Ignored, Counts };

/// How many characters of the page's texts and fields are not seen.
std::size_t unfitCharacters(const DrawnPage& page, PanelSize panel, const FieldFormats& formats,
                            Passing passing);

/// Tells what of a page is cut off.
class PageFit {
public:
    /// All must outlive the object.
    PageFit(const DrawnPage& page, PanelSize panel, const FieldFormats& formats);

    /// What of an element is not seen: characters of a text or field; a bitmap counts as one.
    struct Unseen {
        std::size_t count = 0;
        std::size_t first = 0; ///< from 0; without meaning when the count is 0
        /// Where a page that leaves one dot at a time shows all of it; nothing where no way does.
        std::optional<Effect> wayOut;
    };
    Unseen unseen(std::size_t element, Passing passing) const;

private:
    /// A step that carries the page over the panel, and how far; 0 is where it stands still.
    struct Pass {
        StepKind kind = StepKind::Enter;
        Effect effect = Effect::Left;
        int pixels = 0;
        std::int64_t lowest = 0;
        std::int64_t highest = 0;
        std::size_t elementCount = 0;
    };

    void takePass(const ScriptStep& step);
    static bool goesAsFar(const Pass& later, const Pass& earlier);
    /// \param atOnce whether all dots must be on the panel at the same time
    bool isSeen(const DotBox& lit, std::size_t element, Passing passing, bool atOnce) const;
    std::optional<Effect> wayOut(const DotBox& unseen) const;

    const DrawnPage& page_;
    PanelSize panel_;
    const FieldFormats& formats_;
    std::vector<Pass> passes_;
};

} // namespace orvista
