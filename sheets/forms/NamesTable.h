#pragma once

#include "items/AddressList.h"
#include "items/ProjectNotes.h"
#include "sheets/NameSheet.h"

#include <QTableWidget>

#include <vector>

namespace orvista {

/// A row for each item, with label, unit and comment to be typed, or pasted as a spreadsheet copies them.
class NamesTable final : public QTableWidget {
    Q_OBJECT
public:
    enum Column { ItemName, Address, Label, Unit, Comment, FirstText, Fault, columnCount };

    /// \param rows of all items
    NamesTable(std::vector<AddressRow> rows, const ProjectNotes& notes);

    /// Puts new texts into cells, in bold, and goes to the first.
    void propose(const std::vector<NoteChange>& changes);
    /// Label, unit and comment of each item, into these notes.
    void readInto(ProjectNotes& notes) const;
    /// Shows only rows with the text in one of their cells, whatever its case, and on demand only items that
    /// are used.
    void setFilter(const QString& text, bool onlyUsed);
    /// Marks what is wrong, and says it in the last column of its row.
    void showFaults(const std::vector<NoteFault>& faults);

signals:
    /// A text was typed, pasted or taken away.
    void edited();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void fill(const ProjectNotes& notes);
    void paste();
    void copy() const;
    void clearSelected();
    QString textAt(int row, int column) const;
    void put(int row, int column, const QString& text);

    std::vector<AddressRow> rows_;
};

} // namespace orvista
