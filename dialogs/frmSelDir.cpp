#include "dialogs/frmSelDir.h"

#include "dialogs/DriveList.h"
#include "dialogs/FolderContents.h"
#include "dialogs/FolderList.h"
#include "widgets/FormParts.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

frmSelDir::frmSelDir(const PathRules& rules, const std::string& startFolder, QWidget* parent)
    : QDialog(parent), Drive1(new DriveList(rules)), Dir1(new FolderList(rules)) {
    setObjectName("frmSelDir");
    setWindowTitle("Choose directory");
    Drive1->setObjectName("Drive1");
    Dir1->setObjectName("Dir1");
    const std::string start = orvista::startFolder(rules, startFolder);
    Drive1->showDriveOf(start);
    Dir1->setPath(start);
    const OkCancelBar buttons(this);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(labelFor(Drive1, "Drive :"));
    rows->addWidget(Drive1);
    rows->addWidget(labelFor(Dir1, "Directory name :"));
    rows->addWidget(Dir1, 1);
    rows->addLayout(buttons.layout);

    connect(Drive1, &DriveList::driveChosen, this, &frmSelDir::Drive1_Change);
    connect(buttons.btnOK, &QPushButton::clicked, this, &frmSelDir::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmSelDir::reject);
    Dir1->setFocus();
}

void frmSelDir::Drive1_Change() {
    Dir1->setPath(Drive1->drive());
}

void frmSelDir::btnOK_Click() {
    IsCanceled = false;
    FullPath = Dir1->path();
    accept();
}

void frmSelDir::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
