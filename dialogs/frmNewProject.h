#pragma once

#include "model/People.h"
#include "model/ProjectLifecycle.h"

#include <QDialog>

#include <string>

class QLineEdit;
class QPushButton;

namespace orvista {

/// Asks for the name and the folder of a new project. The caller reads the public values, in UTF-8, after
/// the dialog has been hidden.
class frmNewProject : public QDialog {
    Q_OBJECT
public:
    /// `environment` and `messages` must outlive the dialog.
    frmNewProject(const DocMgrModule::ProgramEnvironment& environment, Messages& messages,
                  QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless the OK button closed the dialog
    std::string ProjPath;   ///< folder of the new project, without a trailing separator
    std::string ProjName;   ///< without extension

    void reject() override;

private:
    void txtProjName_Change();
    void btnBrowse_Click();
    void btnOK_Click();

    const DocMgrModule::ProgramEnvironment& environment_;
    Messages& messages_;
    QLineEdit* txtProjName;
    QLineEdit* txtLocation;
    QPushButton* btnOK;
};

} // namespace orvista
