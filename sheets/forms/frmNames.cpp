#include "sheets/forms/frmNames.h"

#include "items/AddressList.h"
#include "sheets/forms/NamesTable.h"
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
    connect(txtDisplayName, &QLineEdit::textChanged, this, &frmNames::judge);
    judge();
}

void frmNames::buildLayout() {
    txtNamesFilter->setPlaceholderText(tr("Filter"));
    txtNamesFilter->setAccessibleName(tr("Filter the items"));
    txtNamesFilter->setToolTip(tr("Show only items with this text in their row"));
    chkNamesUsed->setToolTip(tr("Only variables that a message shows, and messages that draw"));
    tblNames->setAccessibleName(tr("Names"));
    makeRoom(tblNames, {.characters = 130, .lines = 20});
    txtDisplayName->setMaxLength(static_cast<int>(longestDisplayName));
    txtDisplayName->setToolTip(tr("What people call the display, such as \"Line 3, gate\""));
    spnDisplayColumns->setRange(noColumns, mostNotedColumns);
    spnDisplayColumns->setSpecialValueText(tr("not noted"));
    spnDisplayColumns->setToolTip(
        tr("How many dots the display is wide, 32 to 512; preview and check go by it"));
    lblNames->setTextFormat(Qt::PlainText);
    lblNames->setWordWrap(true);

    auto* const above = new QHBoxLayout;
    above->addWidget(txtNamesFilter, 1);
    above->addWidget(chkNamesUsed);
    auto* const display = new QHBoxLayout;
    auto* const name = new QLabel(tr("&Display:"));
    name->setBuddy(txtDisplayName);
    auto* const columns = new QLabel(tr("&Columns:"));
    columns->setBuddy(spnDisplayColumns);
    display->addWidget(name);
    display->addWidget(txtDisplayName, 1);
    display->addWidget(columns);
    display->addWidget(spnDisplayColumns);
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setToolTip(tr("Write the notes beside the project; the project itself stays as it is"));
    connect(btnOK, &QPushButton::clicked, this, &frmNames::btnOK_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmNames::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(display);
    layout->addLayout(above);
    layout->addWidget(tblNames, 1);
    layout->addWidget(lblNames);
    layout->addLayout(buttons.layout);
    const std::array<QWidget*, 7> order{
        txtDisplayName, spnDisplayColumns, txtNamesFilter, chkNamesUsed, tblNames, btnOK, buttons.btnCancel};
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
    tblNames->setFocus();
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
    tblNames->showFaults(faults);
    QString text = work_.hindrance;
    if (text.isEmpty() && !faults.empty())
        text = tr("%1: %2").arg(QString::fromStdString(nameOf(faults.front().item)),
                                QString::fromStdString(faults.front().text));
    else if (text.isEmpty() && !name.isEmpty())
        text = tr("The display's name %1").arg(name);
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
