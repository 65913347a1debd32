#pragma once

#include "model/Item.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace orvista {

/// The item of that name, which must be one.
inline Item named(std::string_view name) {
    const auto item = itemNamed(name);
    if (!item)
        throw std::invalid_argument("no item " + std::string(name));
    return *item;
}

} // namespace orvista
