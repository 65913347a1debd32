#pragma once

#include "model/Project.h"

#include <QDialog>

#include <cstdint>
#include <string>

class QComboBox;
class QLineEdit;

namespace orvista {

class DeviceLineEdit;

/// Edits the display settings of one Boolean variable. It never writes the project: the caller reads the
/// public values, in the device's encoding, after the dialog has been hidden.
class frmBoolVarEdit : public QDialog {
    Q_OBJECT
public:
    /// `project` must outlive the dialog.
    explicit frmBoolVarEdit(const Project& project, QWidget* parent = nullptr);

    std::int16_t IsCanceled = 0; ///< -1 after Cancel, 0 at load and after OK
    std::string VarDefValue;     ///< "0" or "1"
    std::string VarOnStr;        ///< shown for state 1
    std::string VarOFFStr;       ///< shown for state 0

    /// Fills the form from one record.
    /// \param index 0 to 31
    /// \throws std::out_of_range
    void InitContent(int index);
    void reject() override;

private:
    void btnOK_Click();

    const Project& project_;
    QLineEdit* txtVarAddr;
    QLineEdit* txtVarName;
    QComboBox* cbDefVal;
    DeviceLineEdit* txtVarON;
    DeviceLineEdit* txtVarOFF;
};

} // namespace orvista
