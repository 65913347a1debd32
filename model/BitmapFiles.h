#pragma once

#include <string>
#include <vector>

namespace orvista {

/// Names of the folder's bitmaps: regular files (or links to them) only, sorted with ASCII case folded. A
/// folder that cannot be read has none.
/// \param folder UTF-8
std::vector<std::string> bitmapsOfFolder(const std::string& folder);

/// Those of the names that are bitmaps', in the same order.
std::vector<std::string> bitmapsAmong(std::vector<std::string> names);

} // namespace orvista
