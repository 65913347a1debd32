#pragma once

#include <string>
#include <string_view>

/// Names that people give the items, for use in PLC programs.
namespace orvista {

inline constexpr std::size_t longestLabel = 40;

/// Whether IEC 61131-3 keeps the word for itself, in any case.
bool isReservedWord(std::string_view word);

/// Why a text cannot be a label, to follow its quotation: "begins with no letter or _"; empty where it can.
/// An empty text can, and stands for none.
std::string labelFault(std::string_view label);

} // namespace orvista
