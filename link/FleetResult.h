#pragma once

#include "link/DisplayAddress.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What became of the transfers to or from many displays. Texts are UTF-8.
namespace orvista {

enum class FleetOutcome {
    Done,
    Equal,     ///< the display has the project already; nothing was sent
    Different, ///< the display has something else; nothing was to be sent
    Failed,    ///< the display is as it was, or holds what was sent and did not prove right
    Half,      ///< some files arrived, some did not
    Refused    ///< nothing was begun, because the project is not fit to be sent
};

/// "done", "equal", "different", "failed", "half", "refused".
std::string_view outcomeWord(FleetOutcome outcome);
/// Nothing for any other word.
std::optional<FleetOutcome> outcomeOfWord(std::string_view word);

/// The end of one transfer.
struct TransferEnd {
    FleetOutcome outcome = FleetOutcome::Failed;
    std::string reason;    ///< a sentence; empty where there is nothing to say
    std::size_t files = 0; ///< that arrived
};

/// A transfer that failed before any file had arrived.
TransferEnd failedTransfer(std::string reason);
/// Nothing was begun for the display.
TransferEnd notBegun();
/// An upload that stopped on its way: half where a file arrived, else failed.
/// \param arrived names of the files that the display has
/// \param why what happened then
TransferEnd stoppedUpload(std::span<const std::string> arrived, const std::string& why);

struct FleetResult {
    std::string name;
    std::string address; ///< as displayArgument() writes it
    TransferEnd end;
    double seconds = 0;
};

/// A display as a command takes it: with its port only where that is not the transfer's own.
std::string displayArgument(const DisplayAddress& display);

inline constexpr std::array<std::string_view, 6> fleetResultColumns{"name",   "address", "result",
                                                                    "reason", "files",   "seconds"};
using FleetResultCells = std::array<std::string, fleetResultColumns.size()>;
/// In the columns' order; seconds with two decimals.
FleetResultCells fleetResultCells(const FleetResult& result);

/// How many ended how.
struct FleetTally {
    std::size_t done = 0;
    std::size_t equal = 0;
    std::size_t different = 0;
    std::size_t failed = 0;
    std::size_t half = 0;
    std::size_t refused = 0;

    void add(FleetOutcome outcome);
    std::size_t ended() const { return done + equal + different + failed + half + refused; }
    bool isWell() const { return different + failed + half + refused == 0; }
    /// "3 done, 1 equal, 2 failed"; what there is none of is left out.
    std::string text() const;
};

} // namespace orvista
