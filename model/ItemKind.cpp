#include "model/ItemKind.h"

#include "model/Numbers.h"
#include "model/Text.h"

#include <algorithm>

namespace orvista {

namespace {

std::string numberText(std::size_t index) {
    return decimalText(index + 1);
}

std::optional<std::size_t> indexOfNumber(std::string_view digits, std::size_t count) {
    if (!GenenalModule::IsAllDigits(digits))
        return std::nullopt;
    std::size_t number = 0;
    for (const char digit : digits)
        number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), count + 1);
    return number >= 1 && number <= count ? std::optional(number - 1) : std::nullopt;
}

std::optional<std::size_t> indexAfterWord(std::string_view name, std::string_view word, std::size_t count) {
    return startsWithIgnoringCase(name, word) ? indexOfNumber(name.substr(word.size()), count) : std::nullopt;
}

} // namespace

std::string ItemKind::name(std::size_t index) const {
    return std::string(word) + numberText(index);
}

std::string ItemKind::key(std::size_t index) const {
    return letter + numberText(index);
}

std::string ItemKind::treeName(std::size_t index) const {
    return std::string(treeWord) + numberText(index);
}

std::optional<std::size_t> ItemKind::indexOfName(std::string_view name) const {
    return indexAfterWord(name, word, count);
}

std::optional<std::size_t> ItemKind::indexOfTreeName(std::string_view name) const {
    return indexAfterWord(name, treeWord, count);
}

std::optional<std::size_t> ItemKind::indexOfKey(std::string_view key) const {
    return key.starts_with(letter) ? indexOfNumber(key.substr(1), count) : std::nullopt;
}

std::int64_t ItemKind::address(const Project& project, std::size_t index) const {
    return std::int64_t{project.*start} + addressesPerItem * static_cast<std::int64_t>(index);
}

} // namespace orvista
