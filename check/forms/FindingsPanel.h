#pragma once

#include "check/FolderCheck.h"
#include "model/FileRemarks.h"
#include "widgets/ProjectPanel.h"

#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;

namespace orvista {

class FilterBox;
class RowsTable;
class SeenDelay;

/// The panel "Findings": what the check finds in the project in memory. While it is on the screen it follows
/// the project's changes.
class FindingsPanel final : public ProjectPanel {
    Q_OBJECT
public:
    /// \param check may be shared with others
    /// \param columns of the display, 1 to PanelSize::maximumColumns
    /// \param fileRemarks what was met in the files that the project was read from
    /// \param notAppliedItems the items that are shown with an edit that is not applied
    FindingsPanel(const Project& project, const FileRemarks& fileRemarks, FolderCheck& check, int columns,
                  std::function<std::vector<Item>()> notAppliedItems);

    /// Checks again for a display of another width, in the range above.
    void setColumns(int columns);
    /// Checks at once.
    void check();
    /// Checks a moment after the last call, while the panel is on the screen and no modal dialog is open.
    void follow() override;
    void markNotApplied() override;

private:
    void buildLayout();
    /// Those of the selected rows, that of the current row first.
    std::vector<Finding> selectedFindings() const;
    void select(const std::vector<Finding>& earlier);
    void showSummary();
    void leadToFinding(int row);

    const Project& project_;
    const FileRemarks& fileRemarks_;
    FolderCheck& check_;
    std::function<std::vector<Item>()> notAppliedItems_;
    int columns_;
    Findings findings_;
    std::vector<QString> explanations_; ///< as markup, by code
    SeenDelay* delay_;

    FilterBox* txtFindingsFilter;
    QCheckBox* chkFindingsNotes;
    QLabel* lblFindings;
    QLabel* lblFindingsColumns;
    RowsTable* tblFindings;
};

} // namespace orvista
