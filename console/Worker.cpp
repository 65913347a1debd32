#include "console/Worker.h"

#include "console/Output.h"

#include <array>

namespace orvista::console {

namespace {

std::string_view word(UploadStage stage) {
    switch (stage) {
    case UploadStage::Connecting:
        return "connecting";
    case UploadStage::Comparing:
        return "comparing";
    case UploadStage::Sending:
        return sendingState;
    case UploadStage::Verifying:
        return verifyingState;
    }
    return {};
}

} // namespace

std::vector<ChildProcess::Setting> workerEnvironment(const std::string& scratch) {
#ifdef _WIN32
    return {{"TMP", scratch}, {"TEMP", scratch}};
#else
    return {{"TMPDIR", scratch}};
#endif
}

void StatePrinter::enter(UploadStage stage) {
    state_.state = word(stage);
    state_.file.clear();
    state_.files = 0;
    state_.of = 0;
    printState();
}

void StatePrinter::showFile(const std::string& name, std::size_t number, std::size_t count) {
    if (state_.state == word(UploadStage::Connecting))
        state_.state = "fetching"; // an upload sends or compares first
    state_.file = name;
    state_.files = number - 1;
    state_.of = count;
    printState();
}

void StatePrinter::printState() {
    print(stateLine(state_), Reader::Program);
    finishOutput();
}

ExitStatus StatePrinter::finish(const TransferEnd& end) {
    const std::array results{FleetResult{state_.name, state_.address, end, 0}};
    print(resultsLine(results), Reader::Program);
    FleetTally tally;
    tally.add(end.outcome);
    return tally.isWell() ? ExitStatus::Well : ExitStatus::Found;
}

} // namespace orvista::console
