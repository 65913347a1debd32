#include "dialogs/frmSelFile.h"

#include "dialogs/DriveList.h"
#include "dialogs/FolderContents.h"
#include "dialogs/FolderList.h"
#include "widgets/FormParts.h"
#include "widgets/PathText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

frmSelFile::frmSelFile(const PathRules& rules, const std::string& startFolder, QWidget* parent)
    : QDialog(parent),
      Drive1(new DriveList(rules)),
      Dir1(new FolderList(rules)),
      File1(new QListWidget),
      btnOK(nullptr) {
    setObjectName("frmSelFile");
    setWindowTitle("Load Project");
    Drive1->setObjectName("Drive1");
    Drive1->setAccessibleName("Drive");
    Dir1->setObjectName("Dir1");
    Dir1->setAccessibleName("Folder");
    File1->setObjectName("File1");
    File1->setAccessibleName("Project file");
    letEndChooseLast(File1);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setEnabled(false);

    auto* lists = new QHBoxLayout;
    lists->addWidget(Dir1, 1);
    lists->addWidget(File1, 1);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(Drive1);
    rows->addLayout(lists, 1);
    rows->addLayout(buttons.layout);

    connect(Drive1, &DriveList::driveChosen, this, &frmSelFile::Drive1_Change);
    connect(Dir1, &FolderList::pathChanged, this, &frmSelFile::Dir1_Change);
    connect(File1, &QListWidget::itemSelectionChanged, this, &frmSelFile::File1_Click);
    connect(File1, &QListWidget::itemDoubleClicked, this, &frmSelFile::btnOK_Click);
    connect(btnOK, &QPushButton::clicked, this, &frmSelFile::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmSelFile::reject);

    const std::string start = orvista::startFolder(rules, startFolder);
    Drive1->showDriveOf(start);
    Dir1->setPath(start);
    FilePath = Dir1->path();
    (File1->count() > 0 ? static_cast<QWidget*>(File1) : Dir1)->setFocus();
}

void frmSelFile::Drive1_Change() {
    Dir1->setPath(Drive1->drive());
}

void frmSelFile::Dir1_Change() {
    File1->clear();
    for (const std::string& name : projectFiles(Dir1->path()))
        File1->addItem(shownPath(name));
    chooseNone(File1);
    btnOK->setEnabled(false);
}

void frmSelFile::File1_Click() {
    btnOK->setEnabled(!File1->selectedItems().isEmpty());
}

void frmSelFile::btnOK_Click() {
    IsCanceled = false;
    FilePath = Dir1->path();
    FileName = pathFromShown(File1->currentItem()->text());
    accept();
}

void frmSelFile::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
