#include "mainwindow/frmRestore.h"

#include "widgets/FormParts.h"
#include "widgets/MessageBox.h"
#include "widgets/RowsTable.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace orvista {

frmRestore::frmRestore(std::vector<Row> rows, Remove remove, QWidget* parent)
    : QDialog(parent),
      shown_(std::move(rows)),
      remove_(std::move(remove)),
      tblRestore(named<RowsTable>(QStringLiteral("tblRestore"),
                                  QStringList{tr("Date"), tr("Project"), tr("What differs")})) {
    setObjectName(QStringLiteral("frmRestore"));
    setWindowTitle(tr("Restore Unsaved Work"));
    buildLayout();
    showRows();
    tblRestore->selectRow(0);
    if (!shown_.empty())
        tblRestore->setFocus();
}

void frmRestore::showRows() {
    lblRestore->setText(shown_.empty() ? tr("There is no unsaved work.")
                                       : tr("Unsaved work recovered from earlier sessions:"));
    std::vector<TableRow> rows;
    rows.reserve(shown_.size());
    for (const Row& row : shown_)
        rows.push_back({{QLocale().toString(row.date, QLocale::ShortFormat), row.date},
                        {row.project},
                        {row.difference}});
    tblRestore->setRows(std::move(rows));
    btnOK->setEnabled(!shown_.empty());
    btnRemove->setEnabled(!shown_.empty());
}

void frmRestore::buildLayout() {
    tblRestore->setSelectionMode(QAbstractItemView::SingleSelection);
    makeRoom(tblRestore, {.characters = 110, .lines = 12});
    lblRestore = labelFor(tblRestore, {});
    lblRestore->setObjectName(QStringLiteral("lblRestore"));
    tblRestore->setAccessibleName(tr("Unsaved work"));
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setText(tr("Open"));
    btnOK->setToolTip(tr("Open the chosen work as a project that is not saved; no file is changed"));
    btnRemove = namedButton(QStringLiteral("btnRemove"), tr("&Remove…"), this);
    btnRemove->setToolTip(tr("Remove the chosen work for good"));
    buttons.layout->insertWidget(0, btnRemove);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblRestore);
    layout->addWidget(tblRestore, 1);
    layout->addLayout(buttons.layout);
    setTabOrder(tblRestore, btnOK);
    setTabOrder(btnOK, buttons.btnCancel);
    setTabOrder(buttons.btnCancel, btnRemove);
    connect(tblRestore, &RowsTable::rowActivated, this, &frmRestore::tblRestore_RowActivated);
    connect(btnOK, &QPushButton::clicked, tblRestore, &RowsTable::activateCurrent);
    connect(btnRemove, &QPushButton::clicked, this, &frmRestore::btnRemove_Click);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmRestore::reject);
}

void frmRestore::btnRemove_Click() {
    const std::vector<int> selected = tblRestore->selectedRows();
    if (selected.empty())
        return;
    const auto row = static_cast<std::size_t>(selected.front());
    MessageBox question(QMessageBox::Warning,
                        tr("Remove the unsaved work of %1? It cannot be brought back.")
                            .arg(shown_[row].project)
                            .toStdString(),
                        QMessageBox::Yes | QMessageBox::No, this);
    question.setObjectName(QStringLiteral("RemoveQuestion"));
    question.setDefaultButton(QMessageBox::No);
    if (question.exec() != QMessageBox::Yes || !remove_(row))
        return;
    shown_.erase(shown_.begin() + selected.front());
    tblRestore->setFocus();
    showRows();
}

void frmRestore::tblRestore_RowActivated(int row) {
    chosen = row;
    IsCanceled = false;
    accept();
}

void frmRestore::reject() {
    IsCanceled = true;
    QDialog::reject();
}

} // namespace orvista
