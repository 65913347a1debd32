#pragma once

#include "model/Change.h"

#include <QDialog>

namespace orvista {

class ChangeList;

/// Shows what a table would change, old and new, to be taken or left row by row. The caller reads the public
/// values after the dialog has been hidden.
class frmSheetImport final : public QDialog {
    Q_OBJECT
public:
    /// \param file name of the table, for people
    /// \param fromEmptyCells how many of the changes come from an empty cell
    frmSheetImport(const QString& file, std::vector<Change> changes, std::size_t fromEmptyCells = 0,
                   QWidget* parent = nullptr);

    bool IsCanceled = true;     ///< true unless OK was pressed
    std::vector<Change> chosen; ///< those that were ticked

    void accept() override;

private:
    ChangeList* list_;
};

} // namespace orvista
