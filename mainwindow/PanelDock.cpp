#include "mainwindow/PanelDock.h"

#include "widgets/EnterButton.h"
#include "widgets/FormParts.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QShortcut>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orvista {

namespace {

/// Of the window's height, for the dock when it is opened for the first time: the pages keep the height they
/// need in the smallest window, too.
constexpr int openingShare = 4;

} // namespace

PanelDock::PanelDock(QMainWindow& window) : QDockWidget(tr("Panels")), window_(window) {
    setObjectName(QStringLiteral("dockPanels"));
    setAllowedAreas(Qt::BottomDockWidgetArea);
    setFeatures(DockWidgetClosable);
    setContextMenuPolicy(Qt::PreventContextMenu);
    hide();
    window.addDockWidget(Qt::BottomDockWidgetArea, this);
}

void PanelDock::build() {
    tabs_ = named<QTabWidget>(QStringLiteral("tabPanels"));
    tabs_->setDocumentMode(true);
    tabs_->setEnabled(panelsEnabled_);
    tabs_->setCornerWidget(closeButton());
    setTitleBarWidget(new QWidget); // the tab says what is shown
    notice_ = named<QLabel>(QStringLiteral("lblNotice"));
    notice_->setTextFormat(Qt::PlainText);
    notice_->setWordWrap(true);
    notice_->hide();
    auto* const content = new QWidget;
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(layout->spacing(), 0, layout->spacing(), layout->spacing());
    layout->addWidget(tabs_, 1);
    layout->addWidget(notice_);
    setWidget(content);

    auto* const escape = new QShortcut(Qt::Key_Escape, this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &PanelDock::returnFocus);
    connect(qApp, &QApplication::focusChanged, this, &PanelDock::rememberFocus);
    connect(tabs_, &QTabWidget::currentChanged, this,
            [this](int tab) { setWindowTitle(tabs_->tabText(tab)); });
}

QWidget* PanelDock::closeButton() {
    auto* const button = named<EnterButton>(QStringLiteral("btnClosePanels"));
    button->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    button->setAutoRaise(true);
    button->setToolTip(tr("Hide the panels"));
    button->setAccessibleName(tr("Hide the panels"));
    connect(button, &QToolButton::clicked, this, &PanelDock::hide);
    return button;
}

void PanelDock::open(const char* name) {
    if (!tabs_)
        build();
    for (Panel& panel : panels_) {
        if (qstrcmp(panel.name, name) != 0)
            continue;
        if (!panel.widget)
            insertTab(panel);
        tabs_->setCurrentWidget(panel.widget);
    }
    show();
}

void PanelDock::open() {
    if (tabs_)
        show();
    else
        open(panels_.front().name);
}

void PanelDock::setPanelsEnabled(bool enabled) {
    panelsEnabled_ = enabled;
    if (tabs_)
        tabs_->setEnabled(enabled);
}

void PanelDock::insertTab(Panel& panel) {
    // In the order of the panels, whichever is opened first.
    int place = 0;
    for (const Panel& other : panels_) {
        if (&other == &panel)
            break;
        place += other.widget ? 1 : 0;
    }
    const bool first = tabs_->count() == 0;
    panel.widget = panel.make();
    tabs_->insertTab(place, panel.widget, panel.title);
    if (first)
        takeOpeningHeight();
}

void PanelDock::takeOpeningHeight() {
    // A dock on no screen takes no size; the window gives it one when it is shown.
    show();
    window_.resizeDocks({this}, {window_.height() / openingShare}, Qt::Vertical);
}

void PanelDock::showNotice(const QString& text) {
    if (!notice_)
        return;
    notice_->setText(text);
    notice_->setVisible(!text.isEmpty());
}

void PanelDock::rememberFocus(QWidget* before, QWidget* now) {
    if (now && isAncestorOf(now) && before && !isAncestorOf(before))
        focusOfPage_ = before;
}

void PanelDock::returnFocus() {
    if (focusOfPage_ && focusOfPage_->isVisible() && focusOfPage_->isEnabled())
        focusOfPage_->setFocus(Qt::OtherFocusReason);
    else if (auto* const pages = window_.centralWidget()->findChild<QTabWidget*>();
             pages && pages->isEnabled())
        pages->setFocus(Qt::OtherFocusReason); // another page has come to the front since
    else if (QWidget* const focused = QApplication::focusWidget())
        focused->clearFocus();
}

void PanelDock::showEvent(QShowEvent* event) {
    QDockWidget::showEvent(event);
    emit shownChanged(true);
}

void PanelDock::hideEvent(QHideEvent* event) {
    // Qt would give the keyboard to whatever comes next.
    const QWidget* const focused = QApplication::focusWidget();
    if (focused && isAncestorOf(focused))
        returnFocus();
    QDockWidget::hideEvent(event);
    emit shownChanged(false);
}

} // namespace orvista
