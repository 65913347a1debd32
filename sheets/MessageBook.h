#pragma once

#include "check/Finding.h"
#include "display/BitmapProvider.h"
#include "display/LedRaster.h"
#include "items/Acceptance.h"
#include "items/AddressList.h"
#include "items/ProjectNotes.h"
#include "model/Project.h"
#include "model/UtcTime.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What a display shows, message by message, for somebody to sign. All texts are UTF-8.
namespace orvista {

struct BookPage {
    std::size_t number = 0;        ///< within its message, from 1
    std::int64_t milliseconds = 0; ///< that it lasts
    LedRaster shown;               ///< as it looks when its entering effect is over, with default values
    /// The same with the widest values, where it has fields.
    std::optional<LedRaster> widest;
    std::vector<std::string> acts;  ///< as pageActs() has them
    std::vector<std::string> texts; ///< as contentText() has them
    std::string reads;              ///< all that is to be read on it, shortened
};

/// A message that draws something.
struct BookMessage {
    AddressRow place;
    std::int64_t milliseconds = 0; ///< of a round
    std::vector<BookPage> pages;   ///< that draw something or last; at most mostPagesOfBook()
    std::size_t pagesLeftOut = 0;
    std::vector<AddressRow> variables; ///< that it shows
    std::vector<Finding> findings;
};

struct MessageBook {
    int columns = PanelSize::usualColumns;
    std::vector<BookMessage> messages; ///< emergency messages, regular messages, each by number
    std::vector<Finding> otherFindings;
    std::size_t findingsNotListed = 0;
    std::vector<AddressRow> addresses;
    /// What somebody saw of the messages at a display; messageBook() leaves it to its caller.
    std::optional<Acceptance> acceptance;
};

struct BookWishes {
    int columns = PanelSize::usualColumns; ///< 1 to PanelSize::maximumColumns
    AddressRows addresses = AddressRows::All;
    bool widest = false;                ///< pictures with the widest values, too
    UtcMoment moment = presentMoment(); ///< that fields with time and date show
};

/// Of one message. Those of panels wider than usual are fewer: a book stays in memory as a whole, and ends in
/// time.
std::size_t mostPagesOfBook(int columns);

/// Is called before each message. Where it throws, the work ends.
using BookStep = std::function<void()>;

MessageBook messageBook(
    const Project& project, const ProjectNotes& notes, const BitmapProvider& bitmaps,
    const BookWishes& wishes, const BookStep& step = [] {});

} // namespace orvista
