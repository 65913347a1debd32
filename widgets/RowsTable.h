#pragma once

#include <QTableView>
#include <QVariant>

#include <vector>

class QSortFilterProxyModel;

namespace orvista {

struct TableCell {
    QString text;
    QVariant sortKey = {}; ///< what the column is sorted by; the text where it is not given
    bool operator==(const TableCell&) const = default;
};

using TableRow = std::vector<TableCell>;

/// A table that is only read: sorted by a click on a head, filtered by a word, copied as text. A row leads
/// somewhere by Enter or a double click, never by being selected alone.
class RowsTable final : public QTableView {
    Q_OBJECT
public:
    explicit RowsTable(const QStringList& heads, QWidget* parent = nullptr);
    ~RowsTable() override;

    /// Replaces the rows. The current row stays where it was, as far as there are rows enough; nothing
    /// happens when they are the same as before.
    void setRows(std::vector<TableRow> rows);
    /// Shows only rows with that text in one of their cells, whatever its case.
    void setFilter(const QString& text);
    /// Heads and selected rows as shown, with tabs between cells and a line feed after each row.
    QString copiedText() const;

signals:
    /// \param row of those that setRows() got, from 0
    void rowActivated(int row);
    /// The current row changed, or the table lost the focus.
    void rowLeft();

protected:
    int sizeHintForRow(int row) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Model;

    void activate(const QModelIndex& index);
    void fitColumns();

    Model* rows_;
    QSortFilterProxyModel* shown_;
};

} // namespace orvista
