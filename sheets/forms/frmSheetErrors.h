#pragma once

#include "sheets/Sheet.h"

#include <QDialog>

namespace orvista {

/// Tells why a table was not imported: all its errors, by row and column.
class frmSheetErrors final : public QDialog {
    Q_OBJECT
public:
    /// \param file name of the table, for people
    frmSheetErrors(const QString& file, const SheetErrors& errors, QWidget* parent = nullptr);
};

} // namespace orvista
