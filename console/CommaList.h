#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvista::console {

/// What an option's text joins by commas, without the blanks around it; one part more than there are commas.
std::vector<std::string> betweenCommas(std::string_view text);

} // namespace orvista::console
