#pragma once

#include <QLineEdit>

namespace orvista {

class RowsTable;

/// The box above a table for a word that rows must have. Enter and Down lead to the rows that have it; Esc
/// empties the box first, and means what it usually does once it is empty.
class FilterBox final : public QLineEdit {
    Q_OBJECT
public:
    explicit FilterBox(QWidget* parent = nullptr);

    void passFocusTo(RowsTable& table);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    RowsTable* table_ = nullptr;
};

} // namespace orvista
