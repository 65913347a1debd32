#pragma once

#include "model/PathRules.h"

#include <QDialog>

#include <string>

namespace orvista {

class DriveList;
class FolderList;

/// Chooses a folder. The caller reads the public values after the dialog has been hidden.
class frmSelDir : public QDialog {
    Q_OBJECT
public:
    /// \param startFolder the folder to begin in, UTF-8; the user's home where it is none
    frmSelDir(const PathRules& rules, const std::string& startFolder, QWidget* parent = nullptr);

    bool IsCanceled = true; ///< true unless the OK button closed the dialog
    std::string FullPath;   ///< the chosen folder, UTF-8

    void reject() override;

private:
    void Drive1_Change();
    void btnOK_Click();

    DriveList* Drive1;
    FolderList* Dir1;
};

} // namespace orvista
