#pragma once

#include "display/BitmapProvider.h"
#include "display/DrawnPage.h"
#include "display/FieldFormats.h"
#include "display/LedRaster.h"
#include "display/PlayList.h"
#include "model/Item.h"
#include "script/ScriptInterpreter.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orvista {

/// A remark about one message.
struct ProgrammeRemark {
    Item message;
    std::size_t line; ///< 0 when it is about no line
    std::string text;
    bool operator==(const ProgrammeRemark&) const = default;
};

/// The messages a panel shows, one after the other and over again, laid out in time.
///
/// Scrolling effects move by the step's dots every `speed` milliseconds, over the whole panel or, where the
/// page is larger than the panel, until all of it has passed. Fading takes 16 levels of `speed` milliseconds
/// each. "BLINK n ms" is n times dark and lit again for ms each. Pages without any duration are skipped;
/// when nothing has a duration the last page stands still.
class Programme {
public:
    static constexpr std::size_t maximumScriptBytes = std::size_t{16} << 20;

    /// \throws std::invalid_argument for a size that no LedRaster can have
    Programme(PanelSize panel, FieldFormats formats);

    /// Appends the pages of a message, which the remarks name. A message that makes the scripts longer than
    /// maximumScriptBytes together is left out, with a remark.
    void add(Item message, std::string_view script, const BitmapProvider& bitmaps);
    /// Appends what was interpreted before, of any length.
    void add(Item message, InterpretedScript script, const BitmapProvider& bitmaps);

    PanelSize panel() const { return panel_; }
    const FieldFormats& formats() const { return formats_; }
    /// Of one round, in milliseconds; 0 when nothing has a duration.
    std::int64_t duration() const { return duration_; }
    std::size_t pageCount() const { return pages_.size(); }
    const std::vector<DrawnPage>& pages() const { return pages_; }
    /// When a page begins, in milliseconds after the start of a round.
    std::int64_t pageStart(std::size_t page) const;
    const std::vector<ProgrammeRemark>& remarks() const { return remarks_; }

    /// A step of a page, and how long it has been going on.
    struct Moment {
        const DrawnPage* page = nullptr;  ///< none: the panel is dark
        const ScriptStep* step = nullptr; ///< none: all of the page stands still
        std::int64_t elapsed = 0;
    };
    /// What is on at `t` milliseconds after the start; times before it count as the start.
    Moment momentAt(std::int64_t t) const;

private:
    /// A step that takes time, and when it ends.
    struct Slot {
        std::int64_t end;
        std::size_t page;
        std::size_t step;
    };

    void remark(Item message, std::size_t line, std::string text);
    void append(DrawnPage page);
    std::shared_ptr<const LedImage> image(Item message, const std::string& name,
                                          const BitmapProvider& bitmaps);

    PanelSize panel_;
    FieldFormats formats_;
    std::vector<DrawnPage> pages_;
    std::vector<Slot> slots_;
    std::vector<ProgrammeRemark> remarks_;
    /// By name in lower case; none for one that cannot be shown.
    std::map<std::string, std::shared_ptr<const LedImage>> images_;
    std::size_t scriptBytes_ = 0;
    std::int64_t duration_ = 0;
};

/// What the device shows: the emergency messages that are on, in order, or when there is none the regular
/// ones, in the order of the play list.
Programme deviceProgramme(const Project& project, const MessageCoils& coils, const PlayList& playList,
                          const BitmapProvider& bitmaps, PanelSize panel);

} // namespace orvista
