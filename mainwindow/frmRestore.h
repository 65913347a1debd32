#pragma once

#include <QDateTime>
#include <QDialog>
#include <QString>

#include <vector>

class QLabel;
class QPushButton;

namespace orvista {

class RowsTable;

/// Offers the unsaved work that was kept aside. The caller reads the public values after the dialog has been
/// hidden.
class frmRestore final : public QDialog {
    Q_OBJECT
public:
    /// A piece of work.
    struct Row {
        QDateTime date;
        QString project;
        QString difference;
    };
    explicit frmRestore(const std::vector<Row>& rows, QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless a row was chosen
    int chosen = -1;        ///< of the rows, from 0

    void reject() override;

private:
    void buildLayout(const QString& text);
    void tblRestore_RowActivated(int row);

    RowsTable* tblRestore;
    QPushButton* btnOK = nullptr;
};

} // namespace orvista
