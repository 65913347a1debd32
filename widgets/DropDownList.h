#pragma once

#include <QComboBox>

namespace orvista {

/// A drop-down list that keeps its choice when the mouse wheel passes over it unfocused.
class DropDownList : public QComboBox {
    Q_OBJECT
public:
    explicit DropDownList(QWidget* parent = nullptr);

    /// As wide as so many characters from now on, however long the entries are.
    void keepWidth(int characters);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// F4 opens the list, whatever else it does in the window.
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    QSize keptSize() const;

    int characters_ = 0; ///< 0: as wide as the longest entry
};

} // namespace orvista
