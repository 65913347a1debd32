#include "sheets/forms/frmSheetImport.h"

#include "sheets/forms/ChangeList.h"
#include "widgets/FormParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace orvista {

frmSheetImport::frmSheetImport(const QString& file, std::vector<Change> changes, std::size_t fromEmptyCells,
                               QWidget* parent)
    : QDialog(parent), changes_(std::move(changes)), list_(new ChangeList(changes_)) {
    setObjectName(QStringLiteral("frmSheetImport"));
    setWindowTitle(tr("Import"));
    auto* const lblImport = named<QLabel>(QStringLiteral("lblImport"));
    lblImport->setTextFormat(Qt::PlainText);
    lblImport->setWordWrap(true);
    lblImport->setText(
        changes_.empty() ? tr("%1 contains nothing that is not already in the project.").arg(file)
                         : tr("Where %1 differs from the project. Ticked rows will be imported.").arg(file));
    if (fromEmptyCells > 0)
        lblImport->setText(lblImport->text() + u' ' +
                           tr("Of these, %L1 for an empty cell: the default of a number, an empty text.")
                               .arg(fromEmptyCells));
    list_->setHidden(changes_.empty());
    const OkCancelBar buttons(this);
    buttons.btnOK->setToolTip(tr("Take the ticked texts into the project, in one step that can be undone"));
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblImport);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons.layout);

    const auto enable = [this, btnOK = buttons.btnOK] {
        const std::vector<bool> ticked = list_->ticked();
        btnOK->setEnabled(std::find(ticked.begin(), ticked.end(), true) != ticked.end());
    };
    connect(list_, &ChangeList::ticksChanged, this, enable);
    connect(buttons.btnOK, &QPushButton::clicked, this, &frmSheetImport::accept);
    connect(buttons.btnCancel, &QPushButton::clicked, this, &frmSheetImport::reject);
    enable();
    if (changes_.empty())
        buttons.btnCancel->setFocus();
    else
        list_->enter();
}

void frmSheetImport::accept() {
    const std::vector<bool> ticked = list_->ticked();
    for (std::size_t row = 0; row < changes_.size(); ++row) {
        if (ticked[row])
            chosen.push_back(changes_[row]);
    }
    IsCanceled = false;
    QDialog::accept();
}

} // namespace orvista
