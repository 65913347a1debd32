#include "console/FleetOutput.h"

#include "model/FileNames.h"
#include "model/Numbers.h"

#include <utility>

namespace orvista::console {

namespace {

/// "pump1: done, 8 files, 0.41 s", "pump1: done, 8 files, 0.41 s; kept: old.bmp", "pump1: failed: hung up"
std::string resultText(const FleetResult& result) {
    const TransferEnd& end = result.end;
    std::string text = result.name + ": " + std::string(outcomeWord(end.outcome));
    const bool tellsFiles = end.files > 0 && (end.reason.empty() || end.outcome == FleetOutcome::Done);
    if (tellsFiles)
        text += ", " + decimalText(end.files) + " files, " + fleetResultCells(result).back() + " s";
    if (!end.reason.empty())
        text += (tellsFiles ? "; " : ": ") + end.reason;
    return withoutControlCharacters(std::move(text)) + "\n";
}

} // namespace

void FleetOutput::show(const DisplayState& state) {
    if (json_)
        write(stateLine(state));
    showProgress();
}

void FleetOutput::show(const FleetResult& result, std::size_t of) {
    tally_.add(result.end.outcome);
    progress_.clear();
    if (json_) {
        const TransferEnd& end = result.end;
        write(stateLine({result.name,
                         result.address,
                         std::string(outcomeWord(end.outcome)),
                         {},
                         end.files,
                         of,
                         end.reason,
                         result.seconds}));
    } else {
        write(resultText(result));
    }
    showProgress();
}

void FleetOutput::expectWritten() const {
    if (failure_)
        throw CommandFailure(*failure_);
}

void FleetOutput::write(const std::string& text) {
    if (failure_)
        return;
    try {
        printNow(text, json_ ? Reader::Program : Reader::Person);
    } catch (const CommandFailure& failure) {
        failure_ = failure;
    }
}

void FleetOutput::showProgress() {
    progress_.show(decimalText(tally_.ended()) + " of " + decimalText(count_) + ": " + tally_.text());
}

ExitStatus FleetOutput::finish(std::span<const FleetResult> results) {
    progress_.clear();
    if (json_)
        write(resultsLine(results));
    else if (count_ > 1)
        write(tally_.text() + "\n");
    return tally_.isWell() ? ExitStatus::Well : ExitStatus::Found;
}

} // namespace orvista::console
