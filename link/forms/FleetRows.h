#pragma once

#include "link/FleetList.h"
#include "link/forms/FleetProcess.h"
#include "widgets/RowsTable.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvista {

/// The displays of a list, where each of them is and how it ended.
class FleetRows {
public:
    FleetRows() = default;
    explicit FleetRows(std::vector<FleetDisplay> displays);

    bool isEmpty() const { return rows_.empty(); }
    /// All, or those whose last transfer failed or stopped half-way.
    std::vector<FleetDisplay> displays() const;
    std::vector<FleetDisplay> failed() const;

    /// These are to be worked on now: what they were before is forgotten.
    void begin(const std::vector<FleetDisplay>& displays);
    void note(const FleetProcess::State& state);
    /// The results of those that were begun. Those without one have failed for that reason.
    void finish(const std::vector<FleetResult>& results, const QString& complaint);

    /// Of all that have ended, in the list's order.
    std::vector<FleetResult> results() const;
    /// "3 of 20 displays: 2 done, 1 failed"
    QString summary() const;
    static QStringList heads();
    std::vector<TableRow> table() const;

private:
    struct Row {
        FleetDisplay display;
        std::optional<FleetProcess::State> state;
        std::optional<FleetResult> result;
        bool isBegun = false;
    };

    std::vector<Row> rows_;
    std::map<std::string, std::size_t> places_; ///< of the rows, by name
};

} // namespace orvista
