#include "console/FleetOutput.h"

#include "model/FileNames.h"
#include "model/Numbers.h"
#include "sheets/FleetSheet.h"

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

/// A result that the user wants to see.
bool isShown(const FleetResult& result, const FleetOptions& options) {
    return !options.onlyChanges || result.end.outcome != FleetOutcome::Equal;
}

} // namespace

void FleetOutput::show(const DisplayState& state) {
    if (options_.json)
        write(stateLine(state));
    showProgress();
}

void FleetOutput::show(const FleetTask& task, const FleetResult& result, std::size_t of) {
    tally_.add(result.end.outcome);
    progress_.clear();
    if (options_.json) {
        const TransferEnd& end = result.end;
        write(stateLine({result.name,
                         result.address,
                         std::string(outcomeWord(end.outcome)),
                         {},
                         end.files,
                         of,
                         end.reason,
                         result.seconds}));
    } else if (isShown(result, options_)) {
        write(resultText(result));
    }
    journal_.append(task, result);
    showProgress();
}

ExitStatus FleetOutput::finish(std::vector<FleetResult> results) {
    progress_.clear();
    if (!options_.json && count_ > 1)
        write(tally_.text() + "\n");
    writeResults(std::move(results));
    if (failure_)
        throw CommandFailure(*failure_);
    return tally_.isWell() && journal_.fault().empty() ? ExitStatus::Well : ExitStatus::Found;
}

ExitStatus FleetOutput::stop(const std::vector<FleetTask>& tasks, const CommandFailure& why) {
    complain(why.what());
    std::vector<FleetResult> results;
    results.reserve(tasks.size());
    for (const FleetTask& task : tasks) {
        results.push_back(resultWithoutTurn(task));
        journal_.append(task, results.back());
    }
    try {
        writeResults(std::move(results));
    } catch (const CommandFailure& failure) {
        complain(failure.what());
    }
    return why.status();
}

/// What is written of all displays at any end.
void FleetOutput::writeResults(std::vector<FleetResult> results) {
    std::erase_if(results, [this](const FleetResult& result) { return !isShown(result, options_); });
    if (options_.json)
        write(resultsLine(results));
    if (!journal_.fault().empty())
        complain(journal_.fault());
    if (!options_.report.empty())
        writeFile(options_.report, fleetReport(results));
}

void FleetOutput::write(const std::string& text) {
    if (failure_)
        return;
    try {
        printNow(text, options_.json ? Reader::Program : Reader::Person);
    } catch (const CommandFailure& failure) {
        failure_ = failure;
    }
}

void FleetOutput::showProgress() {
    progress_.show(decimalText(tally_.ended()) + " of " + decimalText(count_) + ": " + tally_.text());
}

} // namespace orvista::console
