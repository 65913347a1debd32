#include "link/FleetResult.h"

#include "model/Numbers.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvista {

namespace {

constexpr std::array<std::string_view, 6> words{"done", "equal", "different", "failed", "half", "refused"};

/// With two decimals, the same in every locale.
std::string secondsText(double seconds) {
    const auto hundredths = static_cast<std::int64_t>(std::llround(seconds * 100));
    const std::string decimals = decimalText(100 + hundredths % 100);
    return decimalText(hundredths / 100) + "." + decimals.substr(1);
}

} // namespace

std::string_view outcomeWord(FleetOutcome outcome) {
    return words.at(static_cast<std::size_t>(outcome));
}

std::optional<FleetOutcome> outcomeOfWord(std::string_view word) {
    const auto found = std::ranges::find(words, word);
    if (found == words.end())
        return std::nullopt;
    return static_cast<FleetOutcome>(found - words.begin());
}

TransferEnd failedTransfer(std::string reason) {
    return {FleetOutcome::Failed, std::move(reason), 0};
}

TransferEnd notBegun() {
    return failedTransfer("not begun");
}

TransferEnd stoppedUpload(std::span<const std::string> arrived, const std::string& why) {
    if (arrived.empty())
        return failedTransfer(why);
    std::string names;
    for (const std::string& name : arrived)
        names.append(names.empty() ? "" : ", ").append(name);
    return {FleetOutcome::Half, why + "; arrived: " + names, arrived.size()};
}

std::string displayArgument(const DisplayAddress& display) {
    const std::string text = display.text();
    return display.port == fileTransfer.port ? text.substr(0, text.rfind(':')) : text;
}

FleetResultCells fleetResultCells(const FleetResult& result) {
    return {result.name,
            result.address,
            std::string(outcomeWord(result.end.outcome)),
            result.end.reason,
            decimalText(result.end.files),
            secondsText(result.seconds)};
}

void FleetTally::add(FleetOutcome outcome) {
    switch (outcome) {
    case FleetOutcome::Done:
        ++done;
        break;
    case FleetOutcome::Equal:
        ++equal;
        break;
    case FleetOutcome::Different:
        ++different;
        break;
    case FleetOutcome::Failed:
        ++failed;
        break;
    case FleetOutcome::Half:
        ++half;
        break;
    case FleetOutcome::Refused:
        ++refused;
        break;
    }
}

std::string FleetTally::text() const {
    std::string text;
    const auto append = [&text](std::size_t count, FleetOutcome outcome) {
        if (count > 0)
            text.append(text.empty() ? "" : ", ")
                .append(decimalText(count))
                .append(" ")
                .append(outcomeWord(outcome));
    };
    append(done, FleetOutcome::Done);
    append(equal, FleetOutcome::Equal);
    append(different, FleetOutcome::Different);
    append(half, FleetOutcome::Half);
    append(failed, FleetOutcome::Failed);
    append(refused, FleetOutcome::Refused);
    return text.empty() ? "nothing to do" : text;
}

} // namespace orvista
