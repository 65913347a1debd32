#include "link/forms/frmPutBack.h"

#include "link/forms/AcceptSentences.h"
#include "link/forms/DisplayAcceptance.h"
#include "widgets/FormParts.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvista {

frmPutBack::frmPutBack(const CutOffAcceptance& cutOff, std::uint16_t port, QWidget* parent)
    : QDialog(parent),
      display_(QString::fromStdString(cutOff.address)),
      run_(new DisplayAcceptance(cutOff.address, port, AcceptanceRun(cutOff.before, cutOff.written), this)),
      lblPutBack(named<QLabel>(QStringLiteral("lblPutBack"))),
      txtPutBack(named<QPlainTextEdit>(QStringLiteral("txtPutBack"))),
      btnPutBack(namedButton(QStringLiteral("btnPutBack"), tr("&Put Back"), this)),
      btnCancel(namedButton(QStringLiteral("btnCancel"), tr("Close"), this)) {
    setObjectName(QStringLiteral("frmPutBack"));
    setWindowTitle(tr("Put Back at the Display"));
    buildLayout();
    connect(btnPutBack, &QPushButton::clicked, this, &frmPutBack::btnPutBack_Click);
    connect(btnCancel, &QPushButton::clicked, this, &frmPutBack::reject);
    connect(run_, &DisplayAcceptance::changed, this, &frmPutBack::follow);
    run_->start();
}

frmPutBack::~frmPutBack() {
    run_->disconnect(this);
}

void frmPutBack::buildLayout() {
    lblPutBack->setTextFormat(Qt::PlainText);
    lblPutBack->setWordWrap(true);
    txtPutBack->setReadOnly(true);
    txtPutBack->setTabChangesFocus(true);
    txtPutBack->setAccessibleName(tr("What would change"));
    btnPutBack->setToolTip(tr("Give these items the values that they had before the acceptance"));
    btnCancel->setToolTip(tr("Leave the display as it is"));
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(btnPutBack);
    buttons->addWidget(btnCancel);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(lblPutBack);
    layout->addWidget(txtPutBack, 1);
    layout->addLayout(buttons);
    resizeWithinScreen(*this, {60 * fontMetrics().averageCharWidth(), 16 * fontMetrics().lineSpacing()});
}

void frmPutBack::btnPutBack_Click() {
    run_->end();
}

void frmPutBack::follow() {
    const AcceptanceRun& run = run_->run();
    const bool isAsking = run.state() == AcceptanceRun::State::Waiting && !run.written().empty();
    const bool isRead = run.state() == AcceptanceRun::State::Waiting || run.isOver();
    IsDone = isRead && run.reason().empty() && run.written().empty();
    if (isRead)
        txtPutBack->setPlainText(putBackText(run));
    if (isAsking)
        lblPutBack->setText(QStringList{tr("The acceptance at %1 was cut off.").arg(display_),
                                        emergencyCaution(run), tr("What it has switched is to be as before:")}
                                .join(u' ')
                                .simplified());
    else if (IsDone)
        lblPutBack->setText(tr("Nothing is left to be put back at %1.").arg(display_));
    else
        lblPutBack->setText(acceptanceState(run, display_));
    const bool wasAtButton = btnPutBack->hasFocus();
    btnPutBack->setEnabled(isAsking);
    if (isAsking && !wasAtButton && !btnCancel->hasFocus())
        btnPutBack->setFocus();
    if (!isAsking && wasAtButton)
        btnCancel->setFocus();
    if (run.isOver() && wantsClose_)
        QDialog::reject();
}

void frmPutBack::reject() {
    if (run_->run().state() == AcceptanceRun::State::PuttingBack) {
        wantsClose_ = true;
        return;
    }
    QDialog::reject();
}

} // namespace orvista
