#pragma once

#include <QWidget>

#include <string>
#include <vector>

class QCheckBox;

namespace orvista {

class DeviceTextEdit;
class RowsTable;

/// One text of an item, old and new, in device bytes.
struct ShownChange {
    std::string item;
    QString text; ///< which one it is: "script", "width"
    std::string before;
    std::string after;
};

/// Changes to choose from: a row each with a tick, which Space sets and takes away, and below them both texts
/// of the current row side by side, the lines that differ marked. All are ticked at first.
class ChangeList final : public QWidget {
    Q_OBJECT
public:
    explicit ChangeList(std::vector<ShownChange> changes, QWidget* parent = nullptr);

    /// Puts the focus on the rows.
    void enter();
    /// Of each change, in their order, whether it is chosen.
    std::vector<bool> ticked() const;

signals:
    void ticksChanged();

private:
    void fillTable();
    QWidget* buildTexts();
    void showTexts(int row);
    void followTicks();

    std::vector<ShownChange> changes_;
    QCheckBox* chkAllChanges;
    RowsTable* tblChanges;
    DeviceTextEdit* txtOld;
    DeviceTextEdit* txtNew;
};

} // namespace orvista
