#include "mainwindow/PageParts.h"

#include <QLabel>

namespace orvista {

QString arrayName(const QString& name, int index) {
    return name + u'(' + QString::number(index) + u')';
}

QLabel* labelFor(QWidget* box, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(box);
    box->setAccessibleName(text);
    return label;
}

} // namespace orvista
