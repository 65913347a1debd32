#pragma once

#include <QLabel>

namespace orvista {

/// A line of plain text that never makes the widgets around it move: where there is no room for all of it,
/// its end is cut and marked.
class ElidedLabel : public QLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvista
