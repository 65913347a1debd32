#pragma once

#include "compare/ContentsComparison.h"

#include <string>
#include <vector>

namespace orvista {

/// What differs and counts, by name: the items first, then device files whose difference no item explains,
/// then bitmaps. UTF-8.
std::vector<std::string> differingNames(const ContentsComparison& comparison);

/// "STDMSG3, RegVar2 and 4 more"; empty where nothing that counts differs.
std::string differingText(const ContentsComparison& comparison);

} // namespace orvista
