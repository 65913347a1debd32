#include "dialogs/frmLoadProject.h"

#include "dialogs/frmSelFile.h"
#include "model/ProjectFile.h"
#include "widgets/FormParts.h"
#include "widgets/PathText.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <limits>

namespace orvista {

namespace {

constexpr int fileColumn = 0;
constexpr int folderColumn = 1;
constexpr int listCharacters = 70;

std::string cell(const QTreeWidgetItem* row, int column) {
    return pathFromShown(row->text(column));
}

} // namespace

frmLoadProject::frmLoadProject(const ConfigModule::History& history,
                               const DocMgrModule::ProgramEnvironment& environment, QWidget* parent)
    : QDialog(parent),
      environment_(environment),
      txtFileName(shownOnlyBox("txtFileName")),
      ListView1(new QTreeWidget) {
    setObjectName("frmLoadProject");
    setWindowTitle("Open Existing Project");
    auto* frame = new QGroupBox("Existing Project:");
    txtFileName->setAccessibleName("Existing Project");
    txtFileName->setMaxLength(std::numeric_limits<int>::max());
    auto* btnBrowse = namedButton("btnBrowse", "Browse", this);
    btnBrowse->setToolTip("Look for a project file in the folders");
    auto* file = new QHBoxLayout(frame);
    file->addWidget(txtFileName);
    file->addWidget(btnBrowse);
    fillList(history);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setEnabled(false);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(frame);
    rows->addWidget(labelFor(ListView1, "Existing Project List:"));
    rows->addWidget(ListView1, 1);
    rows->addLayout(buttons.layout);

    connect(ListView1, &QTreeWidget::itemClicked, this, &frmLoadProject::ListView1_ItemClick);
    // Choosing by keyboard is a click, too.
    connect(ListView1, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (const auto selected = ListView1->selectedItems(); !selected.isEmpty())
            ListView1_ItemClick(selected.front());
    });
    connect(ListView1, &QTreeWidget::itemDoubleClicked, this, &frmLoadProject::btnOK_Click);
    connect(btnBrowse, &QPushButton::clicked, this, &frmLoadProject::btnBrowse_Click);
    connect(btnOK, &QPushButton::clicked, this, &frmLoadProject::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmLoadProject::reject);
    (ListView1->topLevelItemCount() > 0 ? static_cast<QWidget*>(ListView1) : btnBrowse)->setFocus();
}

void frmLoadProject::fillList(const ConfigModule::History& history) {
    ListView1->setObjectName("ListView1");
    ListView1->setHeaderLabels({"File", "Folder"});
    ListView1->setRootIsDecorated(false);
    ListView1->setUniformRowHeights(true);
    ListView1->setAllColumnsShowFocus(true);
    ListView1->setTabKeyNavigation(false);
    widenTo(ListView1, listCharacters);
    for (const std::string& entry : history.rows()) {
        if (entry.empty())
            continue;
        const auto split = environment_.paths.split(entry).value_or(SplitPath{{}, entry});
        auto* row = new QTreeWidgetItem(ListView1, {shownPath(split.name), shownPath(split.folder)});
        for (const int column : {fileColumn, folderColumn})
            row->setToolTip(column, shownPath(entry));
    }
    ListView1->resizeColumnToContents(fileColumn);
    letEndChooseLast(ListView1);
    chooseNone(ListView1);
}

void frmLoadProject::ListView1_ItemClick(const QTreeWidgetItem* row) {
    ProjPath = cell(row, folderColumn);
    ProjName = cell(row, fileColumn);
    txtFileName->setText(shownPath(DocMgrModule::projectFilePath(environment_.paths, ProjPath, ProjName)));
    btnOK->setEnabled(true);
}

void frmLoadProject::btnBrowse_Click() {
    frmSelFile chooser(environment_.paths, ProjPath, this);
    chooser.exec();
    if (chooser.IsCanceled)
        return;
    // The list's choice no longer counts; choosing the same row later makes it count again.
    chooseNone(ListView1);
    ProjPath = chooser.FilePath;
    ProjName = DocMgrModule::projectNameOfFile(chooser.FileName);
    txtFileName->setText(shownPath(environment_.paths.join(chooser.FilePath, chooser.FileName)));
    btnOK->setEnabled(true);
}

void frmLoadProject::btnOK_Click() {
    IsCanceled = false;
    accept();
}

void frmLoadProject::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
