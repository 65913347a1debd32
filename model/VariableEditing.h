#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

/// The rules by which one variable's display settings are edited, without a window.
namespace orvista {

/// The lists of the variable editors in their order: the value that forbids the others stands last.
inline constexpr std::array<const char*, 7> widthChoices = {"3", "4", "5", "6", "7", "8", "2"};
inline constexpr std::array<const char*, 4> precisionChoices = {"1", "2", "3", "0"};
inline constexpr std::array<const char*, 2> booleanDefaultChoices = {"0", "1"};

/// Positions before a variable is loaded: "5", "3" and "0".
inline constexpr std::size_t initialWidthPosition = 2;
inline constexpr std::size_t initialPrecisionPosition = 2;
inline constexpr std::size_t initialBooleanDefaultPosition = 0;

/// The position of a stored text in its list; a text not listed there shows "7", "3" or "0".
std::size_t widthPosition(std::string_view width);
std::size_t precisionPosition(std::string_view precision);
std::size_t booleanDefaultPosition(std::string_view defaultValue);

/// The precision that the device can show with a width: none beside width 2, at least one digit beside 8.
/// Other combinations stay as chosen.
std::string precisionForWidth(std::string_view width, std::string_view precision);

/// The leading number of a typed default value as the shortest plain decimal: "12abc" gives "12".
/// \throws Overflow when it is beyond the range of a double.
std::string normalisedDefault(std::string_view typed);

} // namespace orvista
