#pragma once

#include "display/Programme.h"

#include <cstddef>
#include <string>
#include <vector>

/// What a page does while it is on, in words.
namespace orvista {

/// A sentence's part for each step that takes time: "enters to the left, 2 dots every 20 ms: 1.28 s",
/// "stands still: 3 s". A page that takes none is never seen, or stands still for good.
std::vector<std::string> pageActs(const Programme& programme, std::size_t page);

} // namespace orvista
