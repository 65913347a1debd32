#pragma once

#include <QDialog>

#include <string>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace orvista {

/// Asks what an address list is to hold, before its file is chosen. The caller reads the public values after
/// the dialog has been hidden.
class frmAddressList final : public QDialog {
    Q_OBJECT
public:
    explicit frmAddressList(QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless OK was pressed
    std::string Prefix;     ///< without a fault
    bool UsedOnly = false;

    void accept() override;

private:
    void txtAddressPrefix_Change();

    QLineEdit* txtAddressPrefix;
    QCheckBox* chkAddressUsed;
    QLabel* lblAddressPrefix;
    QPushButton* btnOK;
};

} // namespace orvista
