#include "console/OptionChecks.h"

#include <CLI/App.hpp>
#include <CLI/TypeTools.hpp>

#include <limits>
#include <sstream>
#include <string>

namespace orvista::console {

namespace {

/// \param wanted what a text is not that is refused
template <typename Number>
CLI::Validator numbersBetween(Number lowest, Number highest, const std::string& wanted) {
    return {[lowest, highest, wanted](std::string& text) {
                Number number{};
                // No other comparison refuses what is not a number, which lies on neither side of any.
                const bool isTaken =
                    CLI::detail::lexical_cast(text, number) && number >= lowest && number <= highest;
                return isTaken ? std::string() : '"' + text + "\" is not " + wanted;
            },
            {}};
}

template <typename Number>
std::string range(Number lowest, Number highest) {
    std::ostringstream text;
    text << lowest << " to " << highest;
    return text.str();
}

} // namespace

CLI::Validator wholeNumbers(std::int64_t lowest, std::int64_t highest) {
    return numbersBetween(lowest, highest, "a whole number from " + range(lowest, highest));
}

CLI::Validator wholeNumbersFrom(std::int64_t lowest) {
    return numbersBetween(lowest, std::numeric_limits<std::int64_t>::max(),
                          "a whole number, " + std::to_string(lowest) + " or more");
}

CLI::Validator numbers(double lowest, double highest) {
    return numbersBetween(lowest, highest, "a number from " + range(lowest, highest));
}

} // namespace orvista::console
