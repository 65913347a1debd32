#pragma once

#include <QTableView>
#include <QVariant>

#include <vector>

namespace orvista {

struct TableCell {
    QString text;
    QVariant sortKey = {};  ///< what the column is sorted by; the text where it is not given
    bool isFaint = false;   ///< written in grey
    bool isMarked = false;  ///< written bold, and on a ground of its own
    QString toolTip = {};   ///< as markup; the text where it is not given
    QString alsoFound = {}; ///< what the filter looks in besides the text
    bool operator==(const TableCell&) const = default;
};

using TableRow = std::vector<TableCell>;

/// A table that is only read, unless it was made editable: sorted by a click on a head, filtered by a word,
/// copied as text. A row leads somewhere by Enter or a double click, never by being selected alone; nowhere
/// where it can be typed into.
class RowsTable final : public QTableView {
    Q_OBJECT
public:
    explicit RowsTable(const QStringList& heads, QWidget* parent = nullptr);
    ~RowsTable() override;

    /// Replaces the rows. As many rows as before stay selected as they were; otherwise the current row stays
    /// where it was, as far as there are rows enough. Nothing happens when they are the same as before.
    void setRows(std::vector<TableRow> rows);
    /// A few rows at a time, where all at once would keep the user waiting: other rows from there on, of
    /// which the last may go beyond those that are there. Columns get wider, never narrower.
    void putRows(std::size_t first, std::vector<TableRow> rows);
    /// Takes away the rows after the first `count`.
    void keepRows(std::size_t count);
    /// Shows only rows with that text in one of their cells, whatever its case.
    void setFilter(const QString& text);
    /// Shows only these of the rows that setRows() got, besides the filter; the next ones are all shown.
    void setShownRows(std::vector<bool> shown);
    /// Gives each row a box in its first cell, which a click or Space ticks and unticks: all selected rows at
    /// once. Rows are ticked when they come. They lead nowhere: Enter presses the dialog's default button.
    void makeTickable();
    /// Lets the first columns be typed into: by F2, Enter, a double click, or by typing at once. What was
    /// typed is told and not kept; setRows() shows what became of it. Del asks for the selected rows to go.
    void makeEditable(int columns);
    /// Whether an editable table takes input now.
    void setTyping(bool allowed);
    /// By the rows that setRows() got.
    const std::vector<bool>& ticks() const;
    /// \param ticks as many as there are rows
    void setTicks(std::vector<bool> ticks);
    /// Gives all rows the same height, instead of that of their last cell.
    void setRowHeight(int pixels);
    /// The selected rows of those that setRows() got, in the order in which they are shown.
    std::vector<int> selectedRows() const;
    /// Selects these of the rows that setRows() got, as far as they are shown, and makes the first of them
    /// the current one. Nothing changes where none is shown.
    void selectRows(const std::vector<int>& rows);
    /// The row of those that setRows() got, and all that are shown below it.
    std::vector<int> rowsFrom(int row) const;
    /// The row of those that setRows() got, for an index of the view.
    int rowOf(const QModelIndex& shown) const;
    /// Heads and selected rows as shown, with tabs between cells and a line feed after each row.
    QString copiedText() const;
    /// Does what Enter does.
    void activateCurrent() { activate(currentIndex()); }
    /// Room for the heads and the first row, as far as that has no more than two lines; where all rows have
    /// one height, for a line and a half. None for a scroll bar.
    QSize minimumSizeHint() const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

signals:
    /// \param row of those that setRows() got, from 0
    void rowActivated(int row);
    void ticksChanged();
    /// \param row as in rowActivated()
    void cellTyped(int row, int column, const QString& text);
    void removalWanted();
    /// The current row changed, or the table lost the focus.
    void rowLeft();

protected:
    void changeEvent(QEvent* event) override;
    void updateGeometries() override;
    void verticalScrollbarValueChanged(int value) override;
    int sizeHintForRow(int row) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    class Model;
    class Shown;

    void activate(const QModelIndex& index);
    void tickSelected();
    void fitColumns();
    void fitColumn(int column);
    void setContentWidth(int column, int width);
    /// Fits the columns to the cells that changed; measuring all of them at each change would take too long.
    /// \param before what these cells needed in each column until now
    void fitColumnsTo(const QModelIndexList& changed, const std::vector<int>& before);
    /// Widens columns for all cells of some source rows.
    void widenFor(int first, int count);
    /// The widest of these source cells that are shown, in each column.
    std::vector<int> widthsOf(const QModelIndexList& cells) const;
    /// Measures rows from `first` on, up or down, until they fill the room (pixels).
    void fitRows(int first, int step, int room);
    void fitRowsInView();

    Model* rows_;
    Shown* shown_;
    bool rowsAreEqual_ = false; ///< in height
    bool isEditable_ = false;
    int leastHeight_ = 0; ///< that the layout knows of, in pixels
    /// What heads and shown cells need in each column; empty while that is not known.
    std::vector<int> contentWidths_;
};

} // namespace orvista
