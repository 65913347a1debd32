#pragma once

#include "model/Item.h"

#include <cstddef>

namespace orvista {

/// A place in a project: what a finding is about, where people are led to, what is underlined.
struct Place {
    Item item;
    std::size_t line = 0;   ///< of a message's stored script, from 1; 0 for the item as a whole
    std::size_t column = 0; ///< the byte of the line at which the word or character concerned begins, from 1;
                            ///< after the line's end for a word that is missing; 0 for the line as a whole
    std::size_t length = 0; ///< in bytes from there on; 0 where nothing is there, or the whole line is meant
    auto operator<=>(const Place&) const = default;
};

} // namespace orvista
