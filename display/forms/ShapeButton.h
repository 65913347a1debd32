#pragma once

#include "widgets/EnterButton.h"

namespace orvista {

/// A button that bears a sign of tape players, drawn in the colours of the palette at any size.
class ShapeButton final : public EnterButton {
    Q_OBJECT
public:
    enum class Shape { Play, Pause, Back, Forward };

    explicit ShapeButton(Shape shape, QWidget* parent = nullptr);
    Shape shape() const { return shape_; }
    void setShape(Shape shape);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Shape shape_;
};

} // namespace orvista
