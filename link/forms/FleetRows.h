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

    /// The columns that can be typed into, before all others.
    enum TypedColumn { NameColumn, AddressColumn, typedColumns };
    /// Takes what was typed into a row of table(); the last one is a new display. Without a name it is called
    /// as its address. \param projectFile path, of a new display \returns why it cannot be taken, in a
    /// sentence; empty when it was
    QString type(std::size_t row, TypedColumn column, const std::string& text,
                 const std::string& projectFile);
    /// \param rows of table()
    void remove(const std::vector<int>& rows);

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
    /// A row for each display, and one for a new display where `withNew`.
    std::vector<TableRow> table(bool withNew) const;

private:
    struct Row {
        FleetDisplay display;
        std::optional<FleetProcess::State> state;
        std::optional<FleetResult> result;
        bool isBegun = false;
    };

    void findPlaces();
    QString takeTyped(std::size_t row, const FleetRow& typed, const std::string& projectFile);

    std::vector<Row> rows_;
    FleetRow draft_{};                          ///< of the new display: what was typed so far
    std::map<std::string, std::size_t> places_; ///< of the rows, by name
};

} // namespace orvista
