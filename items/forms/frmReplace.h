#pragma once

#include "items/MessageReplace.h"
#include "model/Item.h"

#include <QDialog>

#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QPushButton;

namespace orvista {

class DeviceLineEdit;
class RowsTable;

/// Looks for a text in the scripts of all messages and shows each place, old and new, to be ticked off. It
/// never writes the project: the caller reads the public values after the dialog has been hidden.
class frmReplace final : public QDialog {
    Q_OBJECT
public:
    /// \param notApplied the messages that are shown with an edit that is not applied; their places are not
    ///     ticked
    frmReplace(const Project& project, std::vector<Item> notApplied, QWidget* parent = nullptr);

    bool IsCanceled = true;       ///< true unless something is to be replaced
    std::vector<Change> Replaced; ///< what replaces the ticked places

    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildLayout();
    void find();
    std::vector<bool> texts() const;
    std::vector<bool> tickable() const;
    std::vector<ReplaceHit> tickedHits() const;
    void showCount();
    void btnOK_Click();

    const Project& project_;
    std::vector<Item> notApplied_;
    ReplaceHits hits_;

    DeviceLineEdit* txtReplaceFind;
    DeviceLineEdit* txtReplaceWith;
    QCheckBox* chkReplaceCase;
    RowsTable* tblReplace;
    QLabel* lblReplace;
    QPushButton* btnReplaceTickAll;
    QPushButton* btnReplaceTickNone;
    QPushButton* btnOK = nullptr;
};

} // namespace orvista
