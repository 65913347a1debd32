#pragma once

#include <optional>
#include <string_view>

/// What people write for the value of a variable.
namespace orvista {

/// A number alone, rounded to the nearest single.
/// \throws std::invalid_argument whose what() says what is wrong: "\"12,5\" is not a number"
float enteredFloat(std::string_view text);

/// On and off in words, in any case, or 1 and 0; nothing for another text.
std::optional<bool> enteredSwitch(std::string_view text);

} // namespace orvista
