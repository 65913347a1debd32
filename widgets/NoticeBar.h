#pragma once

#include <QWidget>

#include <functional>

class QLabel;
class QPushButton;

namespace orvista {

/// One line of text for the user, perhaps with a button that does something about it, and one that takes the
/// line away. It takes the focus only from a user who goes there.
class NoticeBar final : public QWidget {
    Q_OBJECT
public:
    /// \param name of the line without a prefix: "Notice" has `lblNotice`, `btnNotice`, `btnDismissNotice`
    explicit NoticeBar(const QString& name, QWidget* parent = nullptr);

    /// An empty text takes the line away, an empty caption its button.
    /// \param run what the button does once the line is gone; it does not throw
    void setNotice(const QString& text, const QString& button = {}, std::function<void()> run = nullptr);
    bool hasNotice() const;

signals:
    /// The user wants the line away: its button was pressed, or the one that does nothing else.
    void dismissed();

protected:
    bool event(QEvent* event) override;

private:
    void press();

    QLabel* text_;
    QPushButton* button_;
    std::function<void()> run_;
};

} // namespace orvista
