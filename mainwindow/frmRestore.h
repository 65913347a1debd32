#pragma once

#include <QDateTime>
#include <QDialog>
#include <QString>

#include <cstddef>
#include <functional>
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
    /// Removes the work of that row, from 0, for good. False when it stays; the user knows why then.
    using Remove = std::function<bool(std::size_t row)>;
    frmRestore(std::vector<Row> rows, Remove remove, QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless a row was chosen
    int chosen = -1;        ///< of the rows that are left, from 0

    void reject() override;

private:
    void buildLayout();
    void showRows();
    void tblRestore_RowActivated(int row);
    void btnRemove_Click();

    std::vector<Row> shown_;
    Remove remove_;
    RowsTable* tblRestore;
    QLabel* lblRestore = nullptr;
    QPushButton* btnOK = nullptr;
    QPushButton* btnRemove = nullptr;
};

} // namespace orvista
