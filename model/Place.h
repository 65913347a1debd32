#pragma once

#include "model/Item.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orvista {

/// How the project file is named where items are.
inline constexpr std::string_view projectFileName = "project file";

/// A place in a project: what a finding is about, where people are led to, what is underlined.
struct Place {
    Item item;
    std::size_t line = 0;   ///< of a message's stored script or of the file, from 1; 0 for the whole
    std::size_t column = 0; ///< the byte of the line at which the word or character concerned begins, from 1;
                            ///< after the line's end for a word that is missing; 0 for the line as a whole
    std::size_t length = 0; ///< in bytes from there on; 0 where nothing is there, or the whole line is meant
    /// Where it lies in no item but in a file: projectFileName or a device file's name. Lives as long as the
    /// program.
    std::string_view file = {};
    auto operator<=>(const Place&) const = default;
};

/// The item, or the file that it lies in.
inline std::string nameOf(const Place& place) {
    return place.file.empty() ? nameOf(place.item) : std::string(place.file);
}

} // namespace orvista
