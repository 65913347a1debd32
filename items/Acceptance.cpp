#include "items/Acceptance.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvista {

std::string_view seenResultText(SeenResult result) {
    static constexpr std::array<std::string_view, 3> texts{"as shown", "wrong", "skipped"};
    return texts.at(static_cast<std::size_t>(result));
}

const SeenMessage* Acceptance::of(Item message) const {
    const auto found = std::ranges::find(messages, message, &SeenMessage::message);
    return found == messages.end() ? nullptr : &*found;
}

void Acceptance::set(SeenMessage message) {
    const auto found = std::ranges::find(messages, message.message, &SeenMessage::message);
    if (found == messages.end())
        messages.push_back(std::move(message));
    else
        *found = std::move(message);
}

} // namespace orvista
