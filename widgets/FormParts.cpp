#include "widgets/FormParts.h"

#include "widgets/ShownBox.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

namespace orvista {

namespace {

class EndKey final : public QObject {
public:
    explicit EndKey(QAbstractItemView* list) : QObject(list), list_(list) {}

    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        const bool isEnd =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_End;
        if (!isEnd || list_->currentIndex().isValid())
            return false;
        list_->setCurrentIndex(list_->model()->index(list_->model()->rowCount() - 1, 0));
        return true;
    }

private:
    QAbstractItemView* list_;
};

} // namespace

QString arrayName(const QString& name, std::size_t index) {
    return name + u'(' + QString::number(index) + u')';
}

QLabel* labelFor(QWidget* box, const QString& text) {
    auto* label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(box);
    QString name = text.trimmed();
    while (name.endsWith(u':') || name.endsWith(u' '))
        name.chop(1);
    box->setAccessibleName(name);
    return label;
}

QPushButton* namedButton(const QString& name, const QString& caption, QWidget* parent) {
    auto* button = named<QPushButton>(name, caption, parent);
    button->setAutoDefault(true);
    return button;
}

void disableUsed(QPushButton* used, QWidget* next) {
    // Asked first: a disabled button passes the focus on to whatever comes next.
    const bool hadFocus = used->window()->focusWidget() == used;
    used->setEnabled(false);
    if (hadFocus)
        next->setFocus();
}

OkCancelBar::OkCancelBar(QWidget* form)
    : btnOK(namedButton(QStringLiteral("btnOK"), QStringLiteral("OK"), form)),
      btnCancel(namedButton(QStringLiteral("btnCancel"), QStringLiteral("Cancel"), form)),
      layout(new QHBoxLayout) {
    btnOK->setDefault(true);
    layout->addStretch();
    layout->addWidget(btnOK);
    layout->addWidget(btnCancel);
}

QLineEdit* shownOnlyBox(const QString& name) {
    return named<ShownBox>(name);
}

void chooseNone(QAbstractItemView* list) {
    list->clearSelection();
    // Also tells the list that this is its current row: it would otherwise take the first one on focus.
    list->setCurrentIndex({});
}

void letEndChooseLast(QAbstractItemView* list) {
    list->installEventFilter(new EndKey(list));
}

void keepTabKeyFromScrollButtons(QTabWidget& tabs) {
    for (QToolButton* const button : tabs.tabBar()->findChildren<QToolButton*>(Qt::FindDirectChildrenOnly))
        button->setFocusPolicy(Qt::NoFocus);
}

void keepMarginsSmall(QLayout& layout) {
    const int margin = layout.spacing() / 2;
    layout.setContentsMargins(margin, margin, margin, margin);
}

void resizeWithinScreen(QWidget& window, QSize wanted) {
    // The frame's size is known only once the window is shown.
    const int border = window.style()->pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    const QSize frame(2 * border, title + border);
    window.resize(wanted.boundedTo(window.screen()->availableSize() - frame));
}

void widenTo(QWidget* box, int characters) {
    box->setMinimumWidth(box->fontMetrics().averageCharWidth() * characters);
}

void makeRoom(QAbstractItemView* list, ListRoom room) {
    // Around the list the dialog needs some, too.
    const QSize screen = list->screen()->availableSize();
    const QSize most(screen.width() * 9 / 10, screen.height() / 2);
    const QFontMetrics letters = list->fontMetrics();
    const QSize wanted(room.characters * letters.averageCharWidth(), room.lines * letters.lineSpacing());
    list->setMinimumSize(wanted.boundedTo(most));
}

} // namespace orvista
