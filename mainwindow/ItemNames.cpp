#include "mainwindow/ItemNames.h"

#include "model/Numbers.h"

#include <cmath>

namespace orvista {

namespace {

std::int64_t numberFrom(std::string_view text, std::size_t position) {
    if (position >= text.size())
        return 0;
    return toWhole<std::int64_t>(std::floor(leadingNumber(text.substr(position))));
}

} // namespace

NodeKey::NodeKey(std::string_view key)
    : letter(key.empty() ? '\0' : key.front()), number(numberFrom(key, 1)) {}

bool NodeKey::names(char itemLetter, std::size_t count) const {
    return letter == itemLetter && number >= 1 && number <= static_cast<std::int64_t>(count);
}

std::size_t indexOfName(std::string_view name, std::size_t wordLength) {
    return static_cast<std::size_t>(numberFrom(name, wordLength) - 1);
}

std::string itemName(std::string_view word, std::size_t index) {
    return std::string(word) + decimalText(static_cast<std::int64_t>(index) + 1);
}

} // namespace orvista
