#pragma once

#include "model/Change.h"

#include <QWidget>

#include <vector>

class QCheckBox;

namespace orvista {

class DeviceTextEdit;
class RowsTable;

/// Changes to choose from: a row each with a tick, which Space sets and takes away, and below them both texts
/// of the current row side by side, the lines that differ marked. All are ticked at first.
class ChangeList final : public QWidget {
    Q_OBJECT
public:
    explicit ChangeList(std::vector<Change> changes, QWidget* parent = nullptr);

    /// Puts the focus on the rows.
    void enter();
    bool hasTick() const;
    /// The changes with a tick, in their order.
    std::vector<Change> ticked() const;

signals:
    void ticksChanged();

private:
    void fillTable();
    QWidget* buildTexts();
    void showTexts(int row);
    void followTicks();

    std::vector<Change> changes_;
    QCheckBox* chkAllChanges;
    RowsTable* tblChanges;
    DeviceTextEdit* txtOld;
    DeviceTextEdit* txtNew;
};

} // namespace orvista
