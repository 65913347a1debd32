#pragma once

#include "model/PathRules.h"

#include <QDialog>

#include <string>

class QListWidget;
class QPushButton;

namespace orvista {

class DriveList;
class FolderList;

/// Chooses a project file. The caller reads the public values after the dialog has been hidden.
class frmSelFile : public QDialog {
    Q_OBJECT
public:
    /// \param startFolder the folder to begin in, UTF-8; the user's home where it is none
    frmSelFile(const PathRules& rules, const std::string& startFolder, QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless the OK button closed the dialog
    std::string FilePath;   ///< the folder of the chosen file, UTF-8
    std::string FileName;   ///< its name with extension, without folder

    void reject() override;

private:
    void Drive1_Change();
    void Dir1_Change();
    void File1_Click();
    void btnOK_Click();

    DriveList* Drive1;
    FolderList* Dir1;
    QListWidget* File1;
    QPushButton* btnOK;
};

} // namespace orvista
