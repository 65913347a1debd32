#pragma once

#include <cstdint>

namespace CLI {
class Validator;
}

/// What options take, refused in one manner: --columns: "x" is not a whole number from 1 to 4096.
namespace orvista::console {

CLI::Validator wholeNumbers(std::int64_t lowest, std::int64_t highest);
CLI::Validator wholeNumbersFrom(std::int64_t lowest);
CLI::Validator numbers(double lowest, double highest);

} // namespace orvista::console
