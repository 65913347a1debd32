#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace orvista {

/// Asks for the device's address and transfer port. Shown modally and hidden by its buttons; the caller then
/// reads its boxes and deletes it.
class frmConnection final : public QDialog {
    Q_OBJECT
public:
    /// \param deviceAddress what txtIP starts with
    explicit frmConnection(const QString& deviceAddress, QWidget* parent = nullptr);

    /// True unless the dialog was left with btnOK.
    bool IsCanceled = true;
    QLineEdit* const txtIP;
    QLineEdit* const txtPort;

private:
    void buildLayout();
    void takeFont();
    void enableConnect();
    void btnOK_Click();
    void btnCancel_Click();

    QPushButton* const btnOK;
    QPushButton* const btnCancel;
};

} // namespace orvista
