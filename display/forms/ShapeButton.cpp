#include "display/forms/ShapeButton.h"

#include <QPainter>
#include <QPainterPath>

namespace orvista {

namespace {

QPainterPath triangle(double left, double right) {
    QPainterPath path(QPointF(left, 0));
    path.lineTo(right, 0.5);
    path.lineTo(left, 1);
    path.closeSubpath();
    return path;
}

/// In a square of side 1.
QPainterPath outline(ShapeButton::Shape shape) {
    QPainterPath path;
    switch (shape) {
    case ShapeButton::Shape::Play:
        return triangle(0.1, 0.95);
    case ShapeButton::Shape::Pause:
        path.addRect(0.1, 0, 0.28, 1);
        path.addRect(0.62, 0, 0.28, 1);
        return path;
    case ShapeButton::Shape::Back:
        path.addRect(0.1, 0, 0.16, 1);
        path.addPath(triangle(0.95, 0.3));
        return path;
    case ShapeButton::Shape::Forward:
        path.addPath(triangle(0.05, 0.7));
        path.addRect(0.74, 0, 0.16, 1);
        return path;
    }
    return path;
}

} // namespace

ShapeButton::ShapeButton(Shape shape, QWidget* parent) : EnterButton(parent), shape_(shape) {
    const int side = fontMetrics().height();
    setIconSize({side, side});
    // By mouse it works without taking the keyboard from the box above.
    setFocusPolicy(Qt::TabFocus);
}

void ShapeButton::setShape(Shape shape) {
    if (shape == shape_)
        return;
    shape_ = shape;
    update();
}

void ShapeButton::paintEvent(QPaintEvent* event) {
    QToolButton::paintEvent(event);
    const double side = 0.6 * iconSize().height();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate((width() - side) / 2, (height() - side) / 2);
    painter.scale(side, side);
    painter.fillPath(outline(shape_), palette().color(QPalette::ButtonText));
}

} // namespace orvista
