#include "sheets/forms/frmSheetImport.h"

#include "sheets/forms/ChangeList.h"
#include "widgets/FormParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

constexpr int noteLines = 3;

QString headText(const QString& file, const SheetImport& sheet) {
    if (sheet.changes.empty())
        return frmSheetImport::tr("%1 contains nothing that is not already in the project.").arg(file);
    const QString text =
        frmSheetImport::tr("Where %1 differs from the project. Ticked rows will be imported.").arg(file);
    if (sheet.fromEmptyCells == 0)
        return text;
    return text + u' ' +
           frmSheetImport::tr("Of these, %L1 for an empty cell: the default of a number, an empty text.")
               .arg(sheet.fromEmptyCells);
}

/// A line for each row of which there is something to say; null where there is none.
QPlainTextEdit* shownNotes(const SheetErrors& notes) {
    if (notes.none())
        return nullptr;
    QStringList lines;
    for (const SheetError& note : notes.sorted())
        lines << QString::fromStdString(errorText(note));
    if (notes.notListed() > 0)
        lines << frmSheetImport::tr("and %L1 more").arg(notes.notListed());
    auto* const box = named<QPlainTextEdit>(QStringLiteral("txtImportNotes"), lines.join(u'\n'));
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    box->setAccessibleName(frmSheetImport::tr("Notes"));
    const auto shown = std::min(noteLines, static_cast<int>(lines.size()));
    // Half a line more for the frame and the margins within it.
    box->setFixedHeight((2 * shown + 1) * box->fontMetrics().lineSpacing() / 2 + 2 * box->frameWidth());
    return box;
}

} // namespace

frmSheetImport::frmSheetImport(const QString& file, SheetImport sheet, const Project& project,
                               PreviewSettingSource setting, QWidget* parent)
    : QDialog(parent), list_(nullptr) {
    const bool isEmpty = sheet.changes.empty();
    auto* const lblImport = named<QLabel>(QStringLiteral("lblImport"), headText(file, sheet));
    list_ = new ChangeList(project, std::move(sheet.changes), std::move(setting));
    setObjectName(QStringLiteral("frmSheetImport"));
    setWindowTitle(tr("Import"));
    lblImport->setTextFormat(Qt::PlainText);
    lblImport->setWordWrap(true);
    list_->setHidden(isEmpty);
    const OkCancelBar buttons(this);
    buttons.btnOK->setToolTip(tr("Take the ticked texts into the project, in one step that can be undone"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblImport);
    if (auto* const notes = shownNotes(sheet.notes))
        layout->addWidget(notes);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons.layout);

    const auto enable = [this, btnOK = buttons.btnOK] { btnOK->setEnabled(list_->hasTick()); };
    connect(list_, &ChangeList::ticksChanged, this, enable);
    connect(buttons.btnOK, &QPushButton::clicked, this, &frmSheetImport::accept);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmSheetImport::reject);
    enable();
    if (isEmpty)
        buttons.btnCancel->setFocus();
    else
        list_->enter();
}

void frmSheetImport::accept() {
    chosen = list_->ticked();
    IsCanceled = false;
    QDialog::accept();
}

} // namespace orvista
