#include "sheets/forms/frmSheetErrors.h"

#include "widgets/FormParts.h"
#include "widgets/RowsTable.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

namespace {

std::vector<TableRow> rowsOf(const SheetErrors& errors) {
    std::vector<TableRow> rows;
    for (const SheetError& error : errors.sorted()) {
        const auto number = static_cast<qulonglong>(error.row);
        rows.push_back({{error.row > 0 ? QString::number(number) : QString(), number},
                        {QString::fromStdString(error.column)},
                        {QString::fromStdString(error.text)}});
    }
    return rows;
}

} // namespace

frmSheetErrors::frmSheetErrors(const QString& file, const SheetErrors& errors, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmSheetErrors"));
    setWindowTitle(tr("Import"));
    QString text = tr("%1 was not imported; the project is unchanged. (Row 1 is the header.)").arg(file);
    if (errors.notListed() > 0)
        text =
            tr("%1 was not imported; the project is unchanged. These are the first of %L2 errors. (Row 1 is "
               "the header.)")
                .arg(file)
                .arg(errors.count());
    auto* const tblErrors = named<RowsTable>(QStringLiteral("tblErrors"),
                                             QStringList{tr("Row"), tr("Column"), tr("What is wrong")});
    makeRoom(tblErrors, {.characters = 100, .lines = 12});
    tblErrors->setRows(rowsOf(errors));
    tblErrors->setAccessibleName(tr("Errors"));
    auto* const lblErrors = labelFor(tblErrors, text);
    lblErrors->setObjectName(QStringLiteral("lblErrors"));
    lblErrors->setTextFormat(Qt::PlainText);
    lblErrors->setWordWrap(true);
    auto* const btnClose = namedButton(QStringLiteral("btnClose"), tr("Close"));
    btnClose->setDefault(true);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnClose);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblErrors);
    layout->addWidget(tblErrors, 1);
    layout->addLayout(buttons);
    connect(btnClose, &QPushButton::clicked, this, &QDialog::accept);
    btnClose->setFocus();
}

} // namespace orvista
