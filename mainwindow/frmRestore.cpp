#include "mainwindow/frmRestore.h"

#include "widgets/FormParts.h"
#include "widgets/RowsTable.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

frmRestore::frmRestore(const std::vector<Row>& rows, QWidget* parent)
    : QDialog(parent),
      tblRestore(named<RowsTable>(QStringLiteral("tblRestore"),
                                  QStringList{tr("Date"), tr("Project"), tr("What differs")})) {
    setObjectName(QStringLiteral("frmRestore"));
    setWindowTitle(tr("Restore Unsaved Work"));
    buildLayout(rows.empty() ? tr("There is no unsaved work.")
                             : tr("Unsaved work recovered from earlier sessions:"));
    std::vector<TableRow> shown;
    shown.reserve(rows.size());
    for (const Row& row : rows)
        shown.push_back({{QLocale().toString(row.date, QLocale::ShortFormat), row.date},
                         {row.project},
                         {row.difference}});
    tblRestore->setRows(std::move(shown));
    tblRestore->selectRow(0);
    btnOK->setEnabled(!rows.empty());
    if (!rows.empty())
        tblRestore->setFocus();
}

void frmRestore::buildLayout(const QString& text) {
    tblRestore->setSelectionMode(QAbstractItemView::SingleSelection);
    makeRoom(tblRestore, {.characters = 110, .lines = 12});
    auto* const lblRestore = labelFor(tblRestore, text);
    lblRestore->setObjectName(QStringLiteral("lblRestore"));
    tblRestore->setAccessibleName(tr("Unsaved work"));
    const OkCancelBar buttons(this);
    btnOK = buttons.btnOK;
    btnOK->setText(tr("Open"));
    btnOK->setToolTip(tr("Open the chosen work as a project that is not saved; no file is changed"));

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblRestore);
    layout->addWidget(tblRestore, 1);
    layout->addLayout(buttons.layout);
    connect(tblRestore, &RowsTable::rowActivated, this, &frmRestore::tblRestore_RowActivated);
    connect(btnOK, &QPushButton::clicked, tblRestore, &RowsTable::activateCurrent);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmRestore::reject);
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
