#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace orvista {

/// For each line of the second text the line of the first that it is, from 0; nothing where it is none of
/// them. Lines keep their order, and as many as can be are found again. Where the search for them would take
/// too long, only equal lines at the beginning and the end are.
std::vector<std::optional<std::size_t>> matchLines(std::span<const std::string_view> before,
                                                   std::span<const std::string_view> after);

} // namespace orvista
