#pragma once

#include <cstddef>
#include <string_view>

namespace orvista {

/// How many letters of the one have to be changed, put in, left out or swapped to get the other. Takes time
/// and memory for the product of their lengths.
std::size_t wordDistance(std::string_view one, std::string_view other);

} // namespace orvista
