#include "link/forms/FleetRows.h"

#include "widgets/PathText.h"

#include <QCoreApplication>

#include <utility>

namespace orvista {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("FleetRows", text);
}

bool isFailure(FleetOutcome outcome) {
    return outcome == FleetOutcome::Failed || outcome == FleetOutcome::Half ||
           outcome == FleetOutcome::Refused;
}

QString stateText(const std::optional<FleetProcess::State>& state, bool isBegun) {
    if (!state)
        return isBegun ? tr("waiting") : QString();
    return state->file.isEmpty() ? state->word : state->word + u' ' + state->file;
}

QString filesText(const FleetProcess::State& state) {
    return state.of > 0 ? tr("%1 of %2").arg(state.files).arg(state.of) : QString();
}

} // namespace

FleetRows::FleetRows(std::vector<FleetDisplay> displays) {
    rows_.reserve(displays.size());
    for (FleetDisplay& display : displays) {
        places_.emplace(display.name, rows_.size());
        rows_.push_back({std::move(display), {}, {}, false});
    }
}

std::vector<FleetDisplay> FleetRows::displays() const {
    std::vector<FleetDisplay> all;
    for (const Row& row : rows_)
        all.push_back(row.display);
    return all;
}

std::vector<FleetDisplay> FleetRows::failed() const {
    std::vector<FleetDisplay> failed;
    for (const Row& row : rows_) {
        if (row.result && isFailure(row.result->end.outcome))
            failed.push_back(row.display);
    }
    return failed;
}

void FleetRows::begin(const std::vector<FleetDisplay>& displays) {
    for (const FleetDisplay& display : displays) {
        Row& row = rows_[places_.at(display.name)];
        row.state.reset();
        row.result.reset();
        row.isBegun = true;
    }
}

void FleetRows::note(const FleetProcess::State& state) {
    const auto place = places_.find(state.name);
    if (place != places_.end())
        rows_[place->second].state = state;
}

void FleetRows::finish(const std::vector<FleetResult>& results, const QString& complaint) {
    for (const FleetResult& result : results) {
        const auto place = places_.find(result.name);
        if (place != places_.end())
            rows_[place->second].result = result;
    }
    for (Row& row : rows_) {
        if (std::exchange(row.isBegun, false) && !row.result)
            row.result = {row.display.name, displayArgument(row.display.address),
                          failedTransfer(complaint.toStdString()), 0};
    }
}

std::vector<FleetResult> FleetRows::results() const {
    std::vector<FleetResult> results;
    for (const Row& row : rows_) {
        if (row.result)
            results.push_back(*row.result);
    }
    return results;
}

QString FleetRows::summary() const {
    FleetTally tally;
    for (const Row& row : rows_) {
        // The results themselves come when all are over.
        const auto outcome = row.result  ? std::optional(row.result->end.outcome)
                             : row.state ? outcomeOfWord(row.state->word.toStdString())
                                         : std::nullopt;
        if (outcome)
            tally.add(*outcome);
    }
    if (tally.ended() == 0)
        return rows_.size() == 1 ? tr("1 display") : tr("%1 displays").arg(rows_.size());
    return tr("%1 of %2 displays: %3")
        .arg(tally.ended())
        .arg(rows_.size())
        .arg(QString::fromStdString(tally.text()));
}

QStringList FleetRows::heads() {
    return {tr("Name"), tr("Address"), tr("Project"), tr("State"), tr("Files"), tr("Reason")};
}

std::vector<TableRow> FleetRows::table() const {
    std::vector<TableRow> table;
    table.reserve(rows_.size());
    for (const Row& row : rows_) {
        const auto& end = row.result;
        const QString word =
            end ? QString::fromUtf8(outcomeWord(end->end.outcome)) : stateText(row.state, row.isBegun);
        const QString reason = end ? QString::fromStdString(end->end.reason) : QString();
        table.push_back({{QString::fromStdString(row.display.name)},
                         {QString::fromStdString(displayArgument(row.display.address))},
                         {shownPath(row.display.project)},
                         {word},
                         {row.state ? filesText(*row.state) : QString()},
                         {reason}});
    }
    return table;
}

} // namespace orvista
