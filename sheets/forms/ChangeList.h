#pragma once

#include "display/forms/PreviewSetting.h"
#include "model/Change.h"
#include "model/Project.h"

#include <QWidget>

#include <vector>

class QCheckBox;

namespace orvista {

class BeforeAfterPictures;
class DeviceTextEdit;
class RowsTable;

/// Changes to choose from: a row each with a tick, which Space sets and takes away, and below them both texts
/// of the current row side by side, the lines that differ marked; of a message's script how it looks, too.
/// All are ticked at first.
class ChangeList final : public QWidget {
    Q_OBJECT
public:
    /// \param project to be changed; must outlive the list
    ChangeList(const Project& project, std::vector<Change> changes, PreviewSettingSource setting,
               QWidget* parent = nullptr);

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

    const Project& project_;
    std::vector<Change> changes_;
    QCheckBox* chkAllChanges;
    RowsTable* tblChanges;
    DeviceTextEdit* txtOld;
    DeviceTextEdit* txtNew;
    BeforeAfterPictures* pictures_;
};

} // namespace orvista
