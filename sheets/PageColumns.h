#pragma once

#include "script/MessagePage.h"
#include "sheets/Sheet.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The columns of a sheet of messages, and a page's form in them.
namespace orvista::pageColumns {

inline constexpr std::size_t fieldColumns = 3; ///< source, foreground, background

enum Column : std::size_t {
    Message,
    Page,
    Content,
    Bitmap,
    Font,
    Foreground,
    Background,
    FirstField,
    Entering = FirstField + fieldColumns * fieldSlotCount,
    EnteringSpeed,
    Special,
    Delay,
    Leaving,
    LeavingSpeed,
    Script,
    Count
};

inline constexpr std::array<std::string_view, Count> names{
    "message",         "page",     "content",         "bitmap",          "font",  "foreground",
    "background",      "var1",     "var1_foreground", "var1_background", "var2",  "var2_foreground",
    "var2_background", "var3",     "var3_foreground", "var3_background", "var4",  "var4_foreground",
    "var4_background", "entering", "entering_speed",  "special",         "delay", "leaving",
    "leaving_speed",   "script"};

/// The cells of a row, UTF-8: message, page and script empty. What the page does not have is empty.
std::vector<std::string> cells(const MessageForm& form);

/// The form that the row just read describes; nothing when the row has errors, which are added.
/// \param notes what was taken for a live field whose cell is empty is added
std::optional<MessageForm> form(SheetReader& sheet, SheetErrors& notes);

/// Whether the row has a text in a column that describes a page.
bool describesPage(const SheetReader& sheet);

} // namespace orvista::pageColumns
