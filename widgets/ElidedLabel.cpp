#include "widgets/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace orvista {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {0, fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()),
                          foregroundRole());
}

} // namespace orvista
