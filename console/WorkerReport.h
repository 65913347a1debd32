#pragma once

#include "console/FleetLines.h"

#include <optional>
#include <string>
#include <string_view>

/// What the process that works on displays tells the one that started it: five words each time, each with a
/// NUL after it. It does so at each file, and JSON would cost more than the rest of its work there.
namespace orvista::console {

/// Where the transfer is, or how it ended; neither for what cannot be understood.
struct WorkerReport {
    std::optional<DisplayState> state; ///< without name, address and time
    std::optional<TransferEnd> end;
};

std::string reportBytes(const DisplayState& state);
std::string reportBytes(const TransferEnd& end);

/// Takes the first one off. Nothing where it is not complete yet.
std::optional<WorkerReport> takeReport(std::string_view& bytes);

} // namespace orvista::console
