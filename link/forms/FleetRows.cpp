#include "link/forms/FleetRows.h"

#include "model/Text.h"
#include "widgets/PathText.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
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

/// As a list has it.
FleetRow rowOf(std::size_t row, const FleetDisplay& display) {
    return {row + 1,         display.name,  displayArgument(display.address), {}, display.project,
            display.columns, display.values};
}

/// As far as it can be told apart from a port; the name of a display that has none.
std::string hostOf(const std::string& address) {
    try {
        return displayAddress(trimBlanks(address), fileTransfer).host;
    } catch (const BadDisplayAddress&) {
        return address;
    }
}

/// What a display was last told to have come to, where the results of the whole never came.
TransferEnd endOf(const std::optional<FleetProcess::State>& state, const std::string& complaint) {
    if (!state)
        return failedTransfer(complaint);
    const auto files = static_cast<std::size_t>(state->files);
    if (const auto outcome = outcomeOfWord(state->word.toStdString()))
        return {*outcome, state->reason.toStdString(), files};
    return {files > 0 ? FleetOutcome::Half : FleetOutcome::Failed, complaint, files};
}

/// Nothing where nothing was to be sent.
QString filesText(const FleetProcess::State& state, const std::optional<FleetResult>& result) {
    const bool sentNone = result && (result->end.outcome == FleetOutcome::Equal ||
                                     result->end.outcome == FleetOutcome::Different);
    return state.of > 0 && !sentNone ? tr("%1 of %2").arg(state.files).arg(state.of) : QString();
}

} // namespace

FleetRows::FleetRows(std::vector<FleetDisplay> displays) {
    rows_.reserve(displays.size());
    for (FleetDisplay& display : displays)
        rows_.push_back({std::move(display), {}, {}, false});
    findPlaces();
}

void FleetRows::findPlaces() {
    places_.clear();
    for (std::size_t row = 0; row < rows_.size(); ++row)
        places_.emplace(rows_[row].display.name, row);
}

QString FleetRows::type(std::size_t row, TypedColumn column, const std::string& text,
                        const std::string& projectFile) {
    const bool isNew = row >= rows_.size();
    FleetRow typed = isNew ? draft_ : rowOf(row, rows_[row].display);
    (column == NameColumn ? typed.name : typed.address) = text;
    if (isNew)
        draft_ = typed;
    if (isNew && trimBlanks(typed.address).empty())
        return {}; // its address comes next
    if (trimBlanks(typed.name).empty())
        typed.name = hostOf(typed.address);
    return takeTyped(std::min(row, rows_.size()), typed, projectFile);
}

QString FleetRows::takeTyped(std::size_t row, const FleetRow& typed, const std::string& projectFile) {
    std::vector<FleetRow> all;
    for (std::size_t other = 0; other < rows_.size(); ++other)
        all.push_back(rowOf(other, rows_[other].display));
    if (row == all.size())
        all.emplace_back();
    all[row] = typed;
    all[row].row = row + 1;
    Fleet fleet = fleetOf(all, {.folder = {}, .project = projectFile});
    if (!fleet.refusals.empty())
        return QString::fromStdString(fleet.refusals.front().text);
    if (row == rows_.size()) {
        rows_.emplace_back();
        draft_ = {};
    }
    rows_[row] = {std::move(fleet.displays[row]), {}, {}, false};
    findPlaces();
    return {};
}

void FleetRows::remove(const std::vector<int>& rows) {
    std::vector<Row> left;
    for (std::size_t row = 0; row < rows_.size(); ++row)
        if (std::ranges::find(rows, static_cast<int>(row)) == rows.end())
            left.push_back(std::move(rows_[row]));
    if (std::ranges::find(rows, static_cast<int>(rows_.size())) != rows.end())
        draft_ = {};
    rows_ = std::move(left);
    findPlaces();
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
                          endOf(row.state, complaint.toStdString()), 0};
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

std::vector<TableRow> FleetRows::table(bool withNew) const {
    std::vector<TableRow> table;
    table.reserve(rows_.size());
    for (const Row& row : rows_) {
        const auto& end = row.result;
        const QString word =
            end ? QString::fromUtf8(outcomeWord(end->end.outcome)) : stateText(row.state, row.isBegun);
        const QString reason = end ? QString::fromStdString(end->end.reason) : QString();
        const QString project = shownPath(row.display.project);
        table.push_back({{QString::fromStdString(row.display.name)},
                         {QString::fromStdString(displayArgument(row.display.address))},
                         {.text = QFileInfo(project).fileName(), .toolTip = project.toHtmlEscaped()},
                         {word},
                         {row.state ? filesText(*row.state, end) : QString()},
                         {reason}});
    }
    if (withNew)
        table.push_back({{QString::fromStdString(draft_.name)},
                         {QString::fromStdString(draft_.address)},
                         {},
                         {},
                         {},
                         {.text = tr("Type a name and an address for another display"), .isFaint = true}});
    return table;
}

} // namespace orvista
