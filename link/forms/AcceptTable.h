#pragma once

#include "items/Acceptance.h"
#include "items/ProjectNotes.h"
#include "model/Project.h"
#include "widgets/RowsTable.h"

#include <functional>
#include <optional>
#include <vector>

namespace orvista {

class FolderCheck;
struct LocalTime;

/// How the messages of a project look, and where they come from.
struct AcceptedProject {
    const Project& project;
    const ProjectNotes& notes;
    FolderCheck& folder; ///< of the bitmaps
    int columns;         ///< of the display
    std::function<LocalTime()> localTime;
};

/// The table `tblAccept`: all messages with what was said of them, those to be seen ticked.
class AcceptTable final {
public:
    explicit AcceptTable(const AcceptedProject& from);

    RowsTable* widget() { return table_; }
    /// Shows what was said so far. \param current whose row is selected
    void show(const Acceptance& acceptance, std::optional<Item> current);
    /// The ticked ones that a request reaches, in the order of the rows.
    std::vector<Item> ticked() const;

private:
    TableRow cells(Item message, const Acceptance& acceptance) const;

    AcceptedProject from_;
    std::vector<bool> draws_;     ///< by row
    std::vector<bool> reachable_; ///< by row
    RowsTable* table_;
};

} // namespace orvista
