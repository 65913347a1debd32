#include "items/forms/ShownTexts.h"

#include "model/Text.h"
#include "widgets/DeviceText.h"

#include <algorithm>

namespace orvista {

namespace {

/// What is shown of a text; two that differ only further on are shown from shortly before that place.
constexpr std::size_t mostShown = 120;
constexpr std::size_t shownBefore = 20;

} // namespace

QString shortened(const std::string& text, std::size_t from) {
    if (text.empty())
        return {};
    const std::string part = text.substr(std::min(from, text.size()), mostShown);
    const bool goesOn = from + part.size() < text.size();
    return (from > 0 ? QStringLiteral("…") : QString()) + shownLine(part) +
           (goesOn ? QStringLiteral("…") : QString());
}

std::size_t shownFrom(const std::string& one, const std::string& other) {
    const std::size_t differs = sameAtStart(one, other);
    const bool isSeen = differs + shownBefore < mostShown || std::max(one.size(), other.size()) <= mostShown;
    return isSeen ? 0 : differs - shownBefore;
}

} // namespace orvista
