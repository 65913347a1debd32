#pragma once

#include "display/forms/PreviewSetting.h"
#include "model/Change.h"
#include "model/Project.h"
#include "sheets/SheetImport.h"

#include <QDialog>

namespace orvista {

class ChangeList;

/// Shows what a table would change, old and new, to be taken or left row by row. The caller reads the public
/// values after the dialog has been hidden.
class frmSheetImport final : public QDialog {
    Q_OBJECT
public:
    /// \param file name of the table, for people
    /// \param sheet without errors
    /// \param project to be changed; must outlive the dialog
    frmSheetImport(const QString& file, SheetImport sheet, const Project& project,
                   PreviewSettingSource setting, QWidget* parent = nullptr);

    bool IsCanceled = true;     ///< true unless OK was pressed
    std::vector<Change> chosen; ///< those that were ticked

    void accept() override;

private:
    ChangeList* list_;
};

} // namespace orvista
