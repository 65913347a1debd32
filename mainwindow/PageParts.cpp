#include "mainwindow/PageParts.h"

namespace orvista {

QString arrayName(const QString& name, int index) {
    return name + u'(' + QString::number(index) + u')';
}

} // namespace orvista
