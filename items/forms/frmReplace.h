#pragma once

#include "display/forms/PreviewSetting.h"
#include "items/MessageReplace.h"
#include "model/Item.h"

#include <QDialog>
#include <QTimer>

#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QPushButton;

namespace orvista {

class BeforeAfterPictures;
class DeviceLineEdit;
class RowsTable;

/// Looks for a text in the scripts of all messages and shows each place, old and new and how its page looks,
/// to be ticked off. It never writes the project: the caller reads the public values after the dialog has been
/// hidden.
class frmReplace final : public QDialog {
    Q_OBJECT
public:
    /// \param notApplied the messages that are shown with an edit that is not applied; their places are not
    ///     ticked
    frmReplace(const Project& project, std::vector<Item> notApplied, PreviewSettingSource setting,
               QWidget* parent = nullptr);

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
    void showPictures();
    void btnOK_Click();

    const Project& project_;
    std::vector<Item> notApplied_;
    ReplaceHits hits_;
    QTimer quiet_;

    DeviceLineEdit* txtReplaceFind;
    DeviceLineEdit* txtReplaceWith;
    QCheckBox* chkReplaceCase;
    RowsTable* tblReplace;
    BeforeAfterPictures* pictures_;
    QLabel* lblReplace;
    QPushButton* btnReplaceTickAll;
    QPushButton* btnReplaceTickNone;
    QPushButton* btnOK = nullptr;
};

} // namespace orvista
