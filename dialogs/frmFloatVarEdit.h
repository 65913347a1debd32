#pragma once

#include "model/Project.h"

#include <QDialog>

#include <cstdint>
#include <string>

class QComboBox;
class QLayout;
class QLineEdit;

namespace orvista {

class DeviceLineEdit;

/// Edits the display settings of one float variable. It never writes the project: the caller reads the
/// public values after the dialog has been hidden.
class frmFloatVarEdit : public QDialog {
    Q_OBJECT
public:
    /// `project` must outlive the dialog.
    explicit frmFloatVarEdit(const Project& project, QWidget* parent = nullptr);

    std::string VarWidth;       ///< "2" to "8"
    std::string VarPrecision;   ///< "0" to "3"
    std::string VarDefValue;    ///< the shortest plain decimal
    std::int16_t IsCancel = -1; ///< -1 at load and after Cancel, 0 after OK

    /// Fills the form from one record.
    /// \param index 0 to 63
    /// \throws std::out_of_range
    void InitContent(int index);
    void reject() override;

private:
    QLayout* fields();
    QLayout* notes();
    void btnOK_Click();

    const Project& project_;
    QLineEdit* txtVarAddr;
    QLineEdit* txtVarName;
    DeviceLineEdit* txtVarDefValue;
    QComboBox* cbWidth;
    QComboBox* cbPrecision;
};

} // namespace orvista
