#pragma once

#include "compare/DifferenceRows.h"
#include "model/Item.h"
#include "widgets/ProjectPanel.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace orvista {

class RowsTable;

/// The panel "Comparison": what differs between the project in memory and another one, or what a display
/// holds. While it is on the screen it follows the project's changes.
class ComparisonPanel final : public ProjectPanel {
    Q_OBJECT
public:
    /// What the project is compared with.
    struct Theirs {
        QString name; ///< of the display or the project, as the user knows it
        Project project;
        std::vector<FileDifference> bitmaps; ///< from this project's to theirs
    };
    /// What came of comparing every byte that an upload sends.
    struct Verified {
        QString name; ///< of the display
        std::size_t files = 0;
        std::vector<FileDifference> differences; ///< from what is sent to what the display holds
    };

    /// \param notAppliedItems the items that are shown with an edit that is not applied
    ComparisonPanel(const Project& project, std::function<std::vector<Item>()> notAppliedItems);

    void compareWith(Theirs theirs);
    void showVerified(const Verified& verified);

    /// Compares again, at once or when the panel comes to the screen.
    void follow() override;
    void markNotApplied() override;

signals:
    /// The project is to hold what the other side has.
    void takeWanted(const std::vector<orvista::Change>& changes);

protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void clear();
    void buildLayout();
    void compare();
    void enableTake();
    std::vector<DifferenceRow> selectedRows() const;
    void btnTakeTheirs_Click();
    void leadToRow(int row);
    QString summary() const;

    const Project& project_;
    std::function<std::vector<Item>()> notAppliedItems_;
    std::optional<Theirs> theirs_;
    std::vector<DifferenceRow> rows_;   ///< what can be taken over; the files follow them
    std::vector<FileDifference> files_; ///< bitmaps, or what was verified

    QLabel* lblComparison;
    QPushButton* btnTakeTheirs;
    RowsTable* tblComparison;
};

} // namespace orvista
