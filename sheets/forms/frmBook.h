#pragma once

#include <QDialog>

class QCheckBox;
class QPushButton;

namespace orvista {

/// Asks what a message book is to hold, before its file is chosen. The caller reads the public values after
/// the dialog has been hidden.
class frmBook final : public QDialog {
    Q_OBJECT
public:
    explicit frmBook(QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless OK was pressed
    bool Widest = false;
    bool UsedOnly = false;

    void accept() override;

private:
    QCheckBox* chkBookWidest;
    QCheckBox* chkBookUsed;
    QPushButton* btnOK;
};

} // namespace orvista
