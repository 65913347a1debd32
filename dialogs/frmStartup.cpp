#include "dialogs/frmStartup.h"

#include "widgets/FormParts.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace orvista {

namespace {

/// Room for the window title, in characters.
constexpr int captionWidth = 44;

} // namespace

frmStartup::frmStartup(bool loadExistingFirst, QWidget* parent)
    : QDialog(parent), bCreateNew(!loadExistingFirst) {
    setObjectName("frmStartup");
    setWindowTitle("Create/Load Orvista Project");

    auto* frame = new QGroupBox("Create/Load Project");
    auto* optLoadExist = new QRadioButton("Load Existing Orvista Project");
    optLoadExist->setObjectName("optLoadExist");
    optLoadExist->setToolTip("Continue with a project of the recent list or of a folder");
    auto* optCreateNew = new QRadioButton("Create New Orvista Project");
    optCreateNew->setObjectName("optCreateNew");
    optCreateNew->setToolTip("Start with an empty project");
    auto* const preselected = loadExistingFirst ? optLoadExist : optCreateNew;
    preselected->setChecked(true);
    auto* options = new QVBoxLayout(frame);
    options->addWidget(optLoadExist);
    options->addWidget(optCreateNew);
    connect(optCreateNew, &QRadioButton::toggled, this, [this](bool chosen) { bCreateNew = chosen; });

    auto* btnStartupOK = namedButton("btnStartupOK", "OK", this);
    btnStartupOK->setDefault(true);
    connect(btnStartupOK, &QPushButton::clicked, this, &frmStartup::btnStartupOK_Click);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnStartupOK);

    auto* rows = new QVBoxLayout(this);
    rows->addWidget(frame);
    rows->addStretch();
    rows->addLayout(buttons);
    widenTo(frame, captionWidth);
    preselected->setFocus();
}

void frmStartup::btnStartupOK_Click() {
    IsCanceled = false;
    accept();
}

void frmStartup::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
