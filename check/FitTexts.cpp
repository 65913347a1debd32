#include "check/FitTexts.h"

#include "model/Numbers.h"

namespace orvista {

std::string unfitText(std::size_t characters) {
    if (characters == 0)
        return {};
    if (characters == 1)
        return "1 character does not fit";
    return decimalText(characters) + " characters do not fit";
}

std::string placeText(std::string_view field, std::int64_t shown, std::int64_t place) {
    if (shown <= place)
        return {};
    const std::string width = decimalText(shown);
    return std::string(field) + " is " + width + " wide, its place " + decimalText(place) + ": write %" +
           width + "v";
}

} // namespace orvista
