#include "console/FleetOutput.h"

#include "model/Numbers.h"

namespace orvista::console {

namespace {

/// "pump1: done, 8 files, 0.41 s"
std::string resultText(const FleetResult& result) {
    const TransferEnd& end = result.end;
    std::string text = result.name + ": " + std::string(outcomeWord(end.outcome));
    if (!end.reason.empty())
        text += ": " + end.reason;
    else if (end.files > 0)
        text += ", " + decimalText(end.files) + " files, " + fleetResultCells(result).back() + " s";
    return text + "\n";
}

} // namespace

void FleetOutput::show(const DisplayState& state) {
    if (json_) {
        print(stateLine(state));
        finishOutput();
    }
    showProgress();
}

void FleetOutput::show(const FleetResult& result, std::size_t of) {
    tally_.add(result.end.outcome);
    progress_.clear();
    if (json_) {
        const TransferEnd& end = result.end;
        print(stateLine({result.name,
                         result.address,
                         std::string(outcomeWord(end.outcome)),
                         {},
                         end.files,
                         of,
                         end.reason,
                         result.seconds}));
    } else {
        print(resultText(result));
    }
    finishOutput();
    showProgress();
}

void FleetOutput::showProgress() {
    progress_.show(decimalText(tally_.ended()) + " of " + decimalText(count_) + ": " + tally_.text());
}

ExitStatus FleetOutput::finish(std::span<const FleetResult> results) {
    progress_.clear();
    if (json_)
        print(resultsLine(results));
    else if (count_ > 1)
        print(tally_.text() + "\n");
    return tally_.isWell() ? ExitStatus::Well : ExitStatus::Found;
}

} // namespace orvista::console
