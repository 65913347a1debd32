#include "script/PlaceholderScan.h"

#include <algorithm>
#include <optional>

namespace orvista {

namespace {

struct Placeholder {
    std::size_t length; ///< characters from "%" to "v"
    int width;          ///< blanks it reserves, 1 to widestField
};

/// The placeholder that `text` begins with; its first character is a "%". A rejected one costs the digits
/// after the "%" only, and no digit stands after two of them, so all of them together cost one pass.
std::optional<Placeholder> leadingPlaceholder(std::string_view text) {
    std::size_t end = 1;
    int width = 0;
    for (; end < text.size() && text[end] >= '0' && text[end] <= '9'; ++end)
        width = std::min(width * 10 + (text[end] - '0'), widestField + 1);
    if (end == text.size() || text[end] != 'v' || width > widestField)
        return std::nullopt;
    return Placeholder{end + 1, std::max(width, 1)};
}

} // namespace

std::size_t PlaceholderScan::fieldCount() const {
    return static_cast<std::size_t>(std::find(VarPos.begin(), VarPos.end(), emptySlot) - VarPos.begin());
}

PlaceholderScan scanPlaceholders(std::string_view text) {
    PlaceholderScan scan;
    scan.DisplayText.reserve(text.size());
    std::size_t fields = 0;
    std::size_t rest = 0; // what stands before it is in DisplayText, or removed
    std::size_t next = 0;
    for (auto percent = text.find('%'); percent != std::string_view::npos; percent = text.find('%', next)) {
        next = percent + 1;
        const auto placeholder = leadingPlaceholder(text.substr(percent));
        const bool surplus = fields == fieldSlotCount;
        const std::size_t column = scan.DisplayText.size() + percent - rest;
        if (!placeholder || (!surplus && column > lastFieldColumn))
            continue;
        scan.DisplayText.append(text, rest, percent - rest);
        if (surplus) {
            ++scan.surplus;
        } else {
            scan.places[fields] = placeholder->width;
            scan.VarPos[fields++] = static_cast<std::int16_t>(column);
            scan.DisplayText.append(static_cast<std::size_t>(placeholder->width), ' ');
        }
        rest = next = percent + placeholder->length;
    }
    scan.DisplayText.append(text, rest);
    return scan;
}

} // namespace orvista
