#pragma once

#include "items/ProjectNotes.h"
#include "model/Project.h"
#include "sheets/NameSheet.h"

#include <QDialog>

#include <functional>
#include <vector>

class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace orvista {

class NamesTable;

/// Tools > Names and Display…: what is noted about the items and the display, typed or pasted.
class frmNames final : public QDialog {
    Q_OBJECT
public:
    struct Work {
        const Project& project;
        ProjectNotes notes;              ///< as they are
        QString table;                   ///< file name of one that says otherwise; empty where there is none
        std::vector<NoteChange> changes; ///< what it says, shown at once
        QString hindrance;               ///< why nothing can be written, as a sentence; empty where it can
        /// Writes what differs from the first to the second. \returns what is wrong; empty where all is well
        std::function<QString(const ProjectNotes&, const ProjectNotes&)> write;
    };
    explicit frmNames(Work work, QWidget* parent = nullptr);

private:
    void buildLayout();
    QLayout* buildDisplayRow();
    QLayout* buildMasterRow();
    void filter();
    void judge();
    QString tableText() const;
    ProjectNotes noted() const;
    void btnMasterList_Click();
    void btnOK_Click();

    Work work_;
    QLineEdit* txtNamesFilter;
    QCheckBox* chkNamesUsed;
    NamesTable* tblNames;
    QLineEdit* txtDisplayName;
    QSpinBox* spnDisplayColumns;
    QLineEdit* txtMasterList;
    QPushButton* btnMasterList;
    QLabel* lblNames;
    QPushButton* btnOK = nullptr;
};

} // namespace orvista
