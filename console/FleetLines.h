#pragma once

#include "link/FleetResult.h"

#include <span>
#include <string>
#include <string_view>

/// What `upload --json` and `download --json` print: one object a line.
namespace orvista::console {

/// Where a display's transfer is.
struct DisplayState {
    std::string name;
    std::string address;
    std::string state; ///< "connecting", "comparing", "sending", "verifying", "fetching" or a result's word
    std::string file;  ///< under way; empty where none is
    std::size_t files = 0; ///< that are over
    std::size_t of = 0;    ///< how many there are; 0 while that is not known
    std::string reason;    ///< of a failure
    double seconds = 0;    ///< since the display's turn came
};

/// The states while files are sent, and when all of them have been.
inline constexpr std::string_view sendingState = "sending";
inline constexpr std::string_view verifyingState = "verifying";

/// As the lines give times.
double inHundredths(double seconds);

std::string stateLine(const DisplayState& state);
/// The last line.
std::string resultsLine(std::span<const FleetResult> results);

} // namespace orvista::console
