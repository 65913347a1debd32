#include "dialogs/frmNewProject.h"

#include "dialogs/FolderContents.h"
#include "dialogs/frmSelDir.h"
#include "model/FolderLookup.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "widgets/FormParts.h"
#include "widgets/PathText.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <filesystem>
#include <limits>

namespace orvista {

namespace {

constexpr int locationCharacters = 48;

enum class ExistingFile { None, Empty, Filled };

ExistingFile existingFile(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(systemPath(path), error);
    if (!fs::exists(status) || fs::is_directory(status))
        return ExistingFile::None;
    const auto size = fs::file_size(systemPath(path), error);
    return !error && size == 0 ? ExistingFile::Empty : ExistingFile::Filled;
}

} // namespace

frmNewProject::frmNewProject(const DocMgrModule::ProgramEnvironment& environment, Messages& messages,
                             QWidget* parent)
    : QDialog(parent),
      ProjPath(environment.programFolder),
      environment_(environment),
      messages_(messages),
      txtProjName(new QLineEdit),
      txtLocation(new QLineEdit) {
    setObjectName("frmNewProject");
    setWindowTitle("Create New Project");
    txtProjName->setObjectName("txtProjName");
    txtProjName->setToolTip(
        "Name of the project file, without its extension.\nA name that the folder has already is not taken.");
    txtLocation->setObjectName("txtLocation");
    txtLocation->setToolTip("Folder of the project file and the device files");
    txtLocation->setMaxLength(std::numeric_limits<int>::max());
    txtLocation->setText(shownPath(ProjPath));
    widenTo(txtLocation, locationCharacters);
    auto* btnBrowse = namedButton("btnBrowse", "Browse", this);
    btnBrowse->setToolTip("Choose the folder");

    auto* grid = new QGridLayout;
    grid->addWidget(labelFor(txtProjName, "Project Name:"), 0, 0);
    grid->addWidget(txtProjName, 0, 1, 1, 2);
    grid->addWidget(labelFor(txtLocation, "Project Location:"), 1, 0);
    grid->addWidget(txtLocation, 1, 1);
    grid->addWidget(btnBrowse, 1, 2);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setEnabled(false);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(grid);
    rows->addStretch();
    rows->addLayout(buttons.layout);

    connect(txtProjName, &QLineEdit::textChanged, this, &frmNewProject::txtProjName_Change);
    connect(btnBrowse, &QPushButton::clicked, this, &frmNewProject::btnBrowse_Click);
    connect(btnOK, &QPushButton::clicked, this, &frmNewProject::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmNewProject::reject);
    txtProjName->setFocus();
}

void frmNewProject::txtProjName_Change() {
    btnOK->setEnabled(!txtProjName->text().isEmpty());
}

void frmNewProject::btnBrowse_Click() {
    frmSelDir chooser(environment_.paths, pathFromShown(txtLocation->text()), this);
    chooser.exec();
    if (!chooser.IsCanceled)
        txtLocation->setText(shownPath(chooser.FullPath));
}

void frmNewProject::btnOK_Click() {
    const PathRules& paths = environment_.paths;
    const std::string folder = plainFolder(paths, pathFromShown(txtLocation->text()));
    const std::string name = pathFromShown(txtProjName->text());
    const std::string candidate = DocMgrModule::projectFilePath(paths, folder, name);
    switch (existingFile(projectFileOnDisk(paths, candidate))) {
    case ExistingFile::None:
        ProjName = name;
        ProjPath = folder;
        IsCanceled = false;
        accept();
        break;
    case ExistingFile::Filled:
        messages_.show(MessageIcon::Exclamation, "project file already exist");
        break;
    case ExistingFile::Empty:
        break;
    }
}

void frmNewProject::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
