#pragma once

#include "model/History.h"
#include "model/ProjectLifecycle.h"

#include <QDialog>

#include <string>

class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace orvista {

/// Offers the recent projects and a way to browse for others. The caller reads the public values, in UTF-8,
/// after the dialog has been hidden. Whether the project still exists shows when it is read.
class frmLoadProject : public QDialog {
    Q_OBJECT
public:
    /// `environment` must outlive the dialog.
    frmLoadProject(const ConfigModule::History& history, const DocMgrModule::ProgramEnvironment& environment,
                   QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless the OK button closed the dialog
    std::string ProjPath;   ///< folder of the chosen project
    std::string ProjName;   ///< its name without extension

    void reject() override;

private:
    void fillList(const ConfigModule::History& history);
    void ListView1_ItemClick(const QTreeWidgetItem* row);
    void btnBrowse_Click();
    void btnOK_Click();

    const DocMgrModule::ProgramEnvironment& environment_;
    QLineEdit* txtFileName;
    QTreeWidget* ListView1;
    QPushButton* btnOK;
};

} // namespace orvista
