#include "widgets/NoticeBar.h"

#include "widgets/EnterButton.h"
#include "widgets/FormParts.h"
#include "widgets/ModalDialogs.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace orvista {

namespace {

/// A longer word, such as a path, is broken where the line ends: it would widen the window.
constexpr qsizetype longestUnbroken = 40;
constexpr QChar breakingPlace{0x200B}; // takes no room

QString breakable(const QString& text) {
    QString broken;
    qsizetype ofWord = 0;
    for (const QChar character : text) {
        ofWord = character.isSpace() ? 0 : ofWord + 1;
        if (ofWord > longestUnbroken && !character.isLowSurrogate()) {
            broken += breakingPlace;
            ofWord = 1;
        }
        broken += character;
    }
    return broken;
}

} // namespace

NoticeBar::NoticeBar(const QString& name, QWidget* parent)
    : QWidget(parent),
      text_(named<QLabel>(QStringLiteral("lbl") + name)),
      button_(namedButton(QStringLiteral("btn") + name, {})) {
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    auto* const dismiss = named<EnterButton>(QStringLiteral("btnDismiss") + name);
    dismiss->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    dismiss->setAutoRaise(true);
    dismiss->setToolTip(tr("Take this line away"));
    dismiss->setAccessibleName(tr("Take this line away"));
    dismiss->setFocusPolicy(Qt::TabFocus);
    button_->setFocusPolicy(Qt::TabFocus);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(text_, 1);
    layout->addWidget(button_);
    layout->addWidget(dismiss);
    connect(button_, &QPushButton::clicked, this, &NoticeBar::press);
    connect(dismiss, &QToolButton::clicked, this, &NoticeBar::dismissed);
    hide();
}

bool NoticeBar::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    // In a dock that is short of room a text of several lines would lose the first and the last.
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        setMinimumHeight(std::max(0, layout()->heightForWidth(width()))); // none while all of it is hidden
    return isHandled;
}

void NoticeBar::press() {
    if (isModalDialogOpen())
        return;
    const auto run = run_; // it may put another text here
    emit dismissed();
    run();
}

void NoticeBar::setNotice(const QString& text, const QString& button, std::function<void()> run) {
    text_->setText(breakable(text));
    button_->setText(button);
    run_ = std::move(run);
    button_->setVisible(!button.isEmpty());
    setVisible(!text.isEmpty());
    if (text.isEmpty())
        return;
    QAccessibleEvent alert(text_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

bool NoticeBar::hasNotice() const {
    return !text_->text().isEmpty();
}

} // namespace orvista
