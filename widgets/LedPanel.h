#pragma once

#include <QWidget>

#include <string>

namespace orvista {

/// A picture of an LED panel that shows a short text, drawn at any size.
class LedPanel : public QWidget {
    Q_OBJECT
public:
    /// \param text of the characters 0, 4, D, L, X and "-"; others stay dark
    explicit LedPanel(std::string text, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isLit(int column, int row) const;

    std::string text_;
};

} // namespace orvista
