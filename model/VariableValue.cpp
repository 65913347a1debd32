#include "model/VariableValue.h"

#include "model/Numbers.h"
#include "model/Text.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace orvista {

float enteredFloat(std::string_view text) {
    if (!isNumber(text))
        throw std::invalid_argument("\"" + std::string(text) + "\" is not a number");
    try {
        return nearestSingle(leadingNumber(text));
    } catch (const Overflow&) {
        throw std::invalid_argument("the number is larger than a float variable can hold");
    }
}

std::optional<bool> enteredSwitch(std::string_view text) {
    for (const auto& [word, value] : {std::pair{"on", true}, {"1", true}, {"off", false}, {"0", false}})
        if (equalsIgnoringCase(text, word))
            return value;
    return std::nullopt;
}

} // namespace orvista
