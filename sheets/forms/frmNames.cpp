#include "sheets/forms/frmNames.h"

#include "items/AddressList.h"
#include "model/PathRules.h"
#include "model/ProjectFile.h"
#include "sheets/MasterList.h"
#include "sheets/forms/NamesTable.h"
#include "widgets/FileChoice.h"
#include "widgets/FormParts.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <array>

namespace orvista {

namespace {

/// Below what a display can have: nothing is noted.
constexpr int noColumns = fewestNotedColumns - 1;

} // namespace

frmNames::frmNames(Work work, QWidget* parent)
    : QDialog(parent),
      work_(std::move(work)),
      txtNamesFilter(named<QLineEdit>(QStringLiteral("txtNamesFilter"))),
      chkNamesUsed(named<QCheckBox>(QStringLiteral("chkNamesUsed"), tr("Only &used"))),
      tblNames(named<NamesTable>(QStringLiteral("tblNames"), addressList(work_.project), work_.notes)),
      txtDisplayName(named<QLineEdit>(QStringLiteral("txtDisplayName"))),
      spnDisplayColumns(named<QSpinBox>(QStringLiteral("spnDisplayColumns"))),
      txtMasterList(named<QLineEdit>(QStringLiteral("txtMasterList"))),
      btnMasterList(namedButton(QStringLiteral("btnMasterList"), tr("C&hoose\u2026"))),
      lblNames(named<QLabel>(QStringLiteral("lblNames"))) {
    setObjectName(QStringLiteral("frmNames"));
    setWindowTitle(tr("Names and Display"));
    buildLayout();
    tblNames->propose(work_.changes);
    txtDisplayName->setText(QString::fromStdString(work_.notes.displayName));
    spnDisplayColumns->setValue(work_.notes.columns.value_or(noColumns));
    connect(txtNamesFilter, &QLineEdit::textChanged, this, &frmNames::filter);
    connect(chkNamesUsed, &QCheckBox::toggled, this, &frmNames::filter);
    connect(tblNames, &NamesTable::edited, this, &frmNames::judge);
    txtMasterList->setText(QString::fromStdString(work_.notes.masterList.value_or(std::string())));
    connect(txtDisplayName, &QLineEdit::textChanged, this, &frmNames::judge);
    connect(txtMasterList, &QLineEdit::textChanged, this, &frmNames::judge);
    connect(btnMasterList, &QPushButton::clicked, this, &frmNames::btnMasterList_Click);
    judge();
    // From here on the table gives way to a fault of several lines.
    resize(sizeHint());
    tblNames->setMinimumHeight(tblNames->minimumHeight() / 2);
}

void frmNames::buildLayout() {
    txtNamesFilter->setPlaceholderText(tr("Filter"));
    txtNamesFilter->setAccessibleName(tr("Filter the items"));
    txtNamesFilter->setToolTip(tr("Show only items with this text in their row"));
    chkNamesUsed->setToolTip(tr("Only variables that a message shows, and messages that draw"));
    tblNames->setAccessibleName(tr("Names"));
    makeRoom(tblNames, {.characters = 130, .lines = 20});
    lblNames->setTextFormat(Qt::PlainText);
    lblNames->setWordWrap(true);

    auto* const above = new QHBoxLayout;
    above->addWidget(txtNamesFilter, 1);
    above->addWidget(chkNamesUsed);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setToolTip(tr("Write the notes beside the project; the project itself stays as it is"));
    connect(btnOK, &QPushButton::clicked, this, &frmNames::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmNames::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(buildDisplayRow());
    layout->addLayout(buildMasterRow());
    layout->addLayout(above);
    layout->addWidget(tblNames, 1);
    layout->addWidget(lblNames);
    layout->addLayout(buttons.layout);
    const std::array<QWidget*, 9> order{txtDisplayName,   spnDisplayColumns, txtMasterList, btnMasterList,
                                        txtNamesFilter,   chkNamesUsed,      tblNames,      btnOK,
                                        buttons.btnCancel};
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    tblNames->setFocus();
}

QLayout* frmNames::buildDisplayRow() {
    txtDisplayName->setMaxLength(static_cast<int>(longestDisplayName));
    txtDisplayName->setToolTip(tr("What people call the display, such as \"Line 3, gate\""));
    spnDisplayColumns->setRange(noColumns, mostNotedColumns);
    spnDisplayColumns->setSpecialValueText(tr("not noted"));
    spnDisplayColumns->setToolTip(
        tr("How many dots the display is wide, 32 to 512; preview and check go by it"));
    auto* const display = new QHBoxLayout;
    auto* const name = new QLabel(tr("&Display:"));
    name->setBuddy(txtDisplayName);
    auto* const columns = new QLabel(tr("&Columns:"));
    columns->setBuddy(spnDisplayColumns);
    display->addWidget(name);
    display->addWidget(txtDisplayName, 1);
    display->addWidget(columns);
    display->addWidget(spnDisplayColumns);
    return display;
}

QLayout* frmNames::buildMasterRow() {
    txtMasterList->setPlaceholderText(tr("none: the project is for one display"));
    txtMasterList->setClearButtonEnabled(true);
    txtMasterList->setToolTip(tr("The table with a row of values for each display that this project is for, "
                                 "relative to the project"));
    btnMasterList->setToolTip(tr("Make the project a master: choose the list of its displays"));
    auto* const list = new QLabel(tr("&Master, for the displays of:"));
    list->setBuddy(txtMasterList);
    auto* const row = new QHBoxLayout;
    row->addWidget(list);
    row->addWidget(txtMasterList, 1);
    row->addWidget(btnMasterList);
    return row;
}

void frmNames::btnMasterList_Click() {
    const auto file = chooseFileToRead(
        {tr("List of Displays"), {tr("Table (*.csv)"), tr("All files (*)")}, work_.project.ProjPath}, this);
    if (!file)
        return;
    const std::string project =
        DocMgrModule::projectFilePath(PathRules::native(), work_.project.ProjPath, work_.project.ProjName);
    txtMasterList->setText(QString::fromStdString(notedListPath(project, file->path)));
    txtMasterList->setFocus();
}

void frmNames::filter() {
    tblNames->setFilter(txtNamesFilter->text(), chkNamesUsed->isChecked());
}

ProjectNotes frmNames::noted() const {
    ProjectNotes notes = work_.notes;
    tblNames->readInto(notes);
    notes.displayName = txtDisplayName->text().trimmed().toStdString();
    notes.columns.reset();
    if (spnDisplayColumns->value() > noColumns)
        notes.columns = spnDisplayColumns->value();
    notes.masterList.reset();
    if (const QString list = txtMasterList->text().trimmed(); !list.isEmpty())
        notes.masterList = list.toStdString();
    return notes;
}

QString frmNames::tableText() const {
    if (work_.table.isEmpty())
        return {};
    if (work_.changes.empty())
        return tr("%1 contains nothing that is not already noted.").arg(work_.table);
    return tr("Bold: where %1 says something else than the notes. OK writes it.").arg(work_.table);
}

void frmNames::judge() {
    const ProjectNotes notes = noted();
    const auto faults = noteFaults(notes);
    const QString name = QString::fromStdString(displayNameFault(notes.displayName));
    const QString list =
        QString::fromStdString(notes.masterList ? listPathFault(*notes.masterList) : std::string());
    tblNames->showFaults(faults);
    QString text = work_.hindrance;
    if (text.isEmpty() && !faults.empty())
        text = tr("%1: %2").arg(QString::fromStdString(nameOf(faults.front().item)),
                                QString::fromStdString(faults.front().text));
    else if (text.isEmpty() && !name.isEmpty())
        text = tr("The display's name %1").arg(name);
    else if (text.isEmpty() && !list.isEmpty())
        text = tr("The path of the list %1").arg(list);
    btnOK->setEnabled(text.isEmpty());
    lblNames->setText(text.isEmpty() ? tableText() : text);
}

void frmNames::btnOK_Click() {
    const QString fault = work_.write(work_.notes, noted());
    lblNames->setText(fault);
    if (fault.isEmpty())
        accept();
}

} // namespace orvista
