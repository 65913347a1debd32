#pragma once

#include <QDialog>

namespace orvista {

/// The first question of the program: create a project or load one. The caller reads the public values
/// after the dialog has been hidden.
class frmStartup : public QDialog {
    Q_OBJECT
public:
    explicit frmStartup(bool loadExistingFirst, QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless the OK button closed the dialog
    bool bCreateNew;        ///< true: create a new project; false: load an existing one

    void reject() override;

private:
    void btnStartupOK_Click();
};

} // namespace orvista
