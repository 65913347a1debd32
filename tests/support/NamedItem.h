#pragma once

#include "model/Change.h"
#include "model/Item.h"

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Items by the names that people know them by.
namespace orvista {

/// The item of that name, which must be one.
inline Item named(std::string_view name) {
    const auto item = itemNamed(name);
    if (!item)
        throw std::invalid_argument("no item " + std::string(name));
    return *item;
}

inline std::vector<Item> itemsNamed(std::initializer_list<std::string_view> names) {
    std::vector<Item> items;
    for (const std::string_view name : names)
        items.push_back(named(name));
    return items;
}

/// The item's field of that name, which must be one.
inline const Field* fieldOf(std::string_view item, std::string_view field) {
    const Field* const found = fieldNamed(named(item).kind, field);
    if (!found)
        throw std::invalid_argument("no field " + std::string(field));
    return found;
}

inline Change changed(std::string_view item, std::string_view field, std::string before, std::string after) {
    return {named(item), fieldOf(item, field), std::move(before), std::move(after)};
}

/// What lets the message hold that script.
inline Change scriptChange(const Project& project, std::string_view message, std::string script) {
    return changed(message, "script", scriptOf(project, named(message)), std::move(script));
}

} // namespace orvista
