#pragma once

#include <QComboBox>

namespace orvista {

/// A drop-down list that keeps its choice when the mouse wheel passes over it unfocused.
class DropDownList : public QComboBox {
    Q_OBJECT
public:
    explicit DropDownList(QWidget* parent = nullptr);

protected:
    /// F4 opens the list, whatever else it does in the window.
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace orvista
