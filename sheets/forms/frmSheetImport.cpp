#include "sheets/forms/frmSheetImport.h"

#include "sheets/forms/ChangeList.h"
#include "widgets/FormParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace orvista {

frmSheetImport::frmSheetImport(const QString& file, std::vector<Change> changes, std::size_t fromEmptyCells,
                               QWidget* parent)
    : QDialog(parent), list_(nullptr) {
    const bool isEmpty = changes.empty();
    list_ = new ChangeList(std::move(changes));
    setObjectName(QStringLiteral("frmSheetImport"));
    setWindowTitle(tr("Import"));
    auto* const lblImport = named<QLabel>(QStringLiteral("lblImport"));
    lblImport->setTextFormat(Qt::PlainText);
    lblImport->setWordWrap(true);
    lblImport->setText(
        isEmpty ? tr("%1 contains nothing that is not already in the project.").arg(file)
                : tr("Where %1 differs from the project. Ticked rows will be imported.").arg(file));
    if (fromEmptyCells > 0)
        lblImport->setText(lblImport->text() + u' ' +
                           tr("Of these, %L1 for an empty cell: the default of a number, an empty text.")
                               .arg(fromEmptyCells));
    list_->setHidden(isEmpty);
    const OkCancelBar buttons(this);
    buttons.btnOK->setToolTip(tr("Take the ticked texts into the project, in one step that can be undone"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblImport);
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
