#include "widgets/NotAppliedLabel.h"

namespace orvista {

NotAppliedLabel::NotAppliedLabel(QWidget* parent) : QLabel(parent) {
    setObjectName(QStringLiteral("lblNotApplied"));
    setTextFormat(Qt::PlainText);
    hide();
}

bool NotAppliedLabel::showState(bool notApplied) {
    if (notApplied == !text().isEmpty())
        return false;
    setText(notApplied ? tr("not applied; Save leaves it out") : QString());
    setVisible(notApplied);
    return true;
}

} // namespace orvista
