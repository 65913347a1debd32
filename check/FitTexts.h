#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What is said where a page is composed. How many characters do not fit, and how wide a field is, tells
/// display/PageFit.h.
namespace orvista {

/// "10 characters do not fit", "1 character does not fit"; empty when all fit.
std::string unfitText(std::size_t characters);

/// "RegVar12 is 7 wide, its place 5: write %7v"; empty when the place is wide enough.
/// \param field "RegVar12", "CoilVar3", "TIME" or "DATE"
/// \param shown, place in characters
std::string placeText(std::string_view field, std::int64_t shown, std::int64_t place);

} // namespace orvista
