#include "widgets/NotAppliedLabel.h"

namespace orvista {

namespace {

/// Of the text, that can be read on the narrowest page.
constexpr int leastCharacters = 11;

} // namespace

NotAppliedLabel::NotAppliedLabel(QWidget* parent) : ElidedLabel(parent) {
    setObjectName(QStringLiteral("lblNotApplied"));
    setToolTip(sentence());
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    hide();
}

bool NotAppliedLabel::showState(bool notApplied) {
    if (notApplied == !isHidden())
        return false;
    setText(notApplied ? sentence() : QString());
    setVisible(notApplied);
    return true;
}

QString NotAppliedLabel::sentence() {
    return tr("not applied; Save leaves it out");
}

QSize NotAppliedLabel::sizeHint() const {
    return fontMetrics().size(Qt::TextSingleLine, sentence());
}

QSize NotAppliedLabel::minimumSizeHint() const {
    return {leastCharacters * fontMetrics().averageCharWidth(), fontMetrics().height()};
}

} // namespace orvista
