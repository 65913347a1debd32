#include "mainwindow/PanelDock.h"

#include "widgets/EnterButton.h"
#include "widgets/FormParts.h"
#include "widgets/NoticeBar.h"
#include "widgets/ProjectPanel.h"

#include <QApplication>
#include <QMainWindow>
#include <QShortcut>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <stdexcept>

namespace orvista {

namespace {

/// Of the window's height, for the dock when it is opened for the first time: the pages keep the height they
/// need in the smallest window, too.
constexpr int openingShare = 4;
constexpr const char* noticeLine = "Notice";

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
    tabs_->hide();
    setTitleBarWidget(new QWidget); // the tab says what is shown
    auto* const content = new QWidget;
    layout_ = new QVBoxLayout(content);
    layout_->setContentsMargins(layout_->spacing(), 0, layout_->spacing(), layout_->spacing());
    layout_->addWidget(tabs_, 1);
    addLine(QString::fromLatin1(noticeLine));
    setWidget(content);

    auto* const escape = new QShortcut(Qt::Key_Escape, this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, &PanelDock::returnFocus);
    connect(qApp, &QApplication::focusChanged, this, &PanelDock::followFocus);
    connect(tabs_, &QTabWidget::currentChanged, this,
            [this](int tab) { setWindowTitle(tabs_->tabText(tab)); });
    connect(tabs_, &QTabWidget::tabBarClicked, this, &PanelDock::keepOpen);
}

QWidget* PanelDock::closeButton() {
    auto* const button = named<EnterButton>(QStringLiteral("btnClosePanels"));
    button->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    button->setAutoRaise(true);
    button->setToolTip(tr("Hide the panels"));
    button->setAccessibleName(tr("Hide the panels"));
    connect(button, &QToolButton::clicked, this, &PanelDock::closeForUser);
    return button;
}

ProjectPanel& PanelDock::open(const QMetaObject& type) {
    const auto panel = std::ranges::find(panels_, &type, &Panel::type);
    if (panel == panels_.end())
        throw std::out_of_range(std::string("no panel ") + type.className());
    if (!tabs_)
        build();
    if (!panel->widget)
        insertTab(*panel);
    tabs_->setCurrentWidget(panel->widget);
    keepOpen();
    show();
    return *panel->widget;
}

void PanelDock::closeForUser() {
    hide();
    for (const Panel& panel : panels_)
        if (panel.widget)
            panel.widget->closeForUser();
}

void PanelDock::openAsItWas() {
    if (tabs_ && tabs_->count() > 0)
        show();
    else
        open(*panels_.front().type);
    keepOpen();
}

ProjectPanel* PanelDock::shownPanel() const {
    return tabs_ && tabs_->isVisible() ? qobject_cast<ProjectPanel*>(tabs_->currentWidget()) : nullptr;
}

void PanelDock::followProject() {
    for (const Panel& panel : panels_)
        if (panel.widget)
            panel.widget->follow();
}

void PanelDock::markNotApplied() {
    for (const Panel& panel : panels_)
        if (panel.widget)
            panel.widget->markNotApplied();
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
    connect(panel.widget, &ProjectPanel::placeChosen, this, &PanelDock::placeChosen);
    connect(panel.widget, &ProjectPanel::rowLeft, this, &PanelDock::rowLeft);
    emit made(*panel.widget);
    tabs_->insertTab(place, panel.widget, panel.title);
    tabs_->show();
    if (first)
        takeOpeningHeight();
}

void PanelDock::takeOpeningHeight() {
    // A dock on no screen takes no size; the window gives it one when it is shown.
    show();
    window_.resizeDocks({this}, {window_.height() / openingShare}, Qt::Vertical);
}

void PanelDock::showNotice(const QString& text) {
    const QString name = QString::fromLatin1(noticeLine);
    if (text.isEmpty())
        withdraw(name);
    else
        offer({name, text, {}, nullptr});
}

void PanelDock::offer(const Offer& offer) {
    if (!tabs_)
        build();
    NoticeBar* const found = line(offer.name);
    NoticeBar* const shown = found ? found : addLine(offer.name);
    shown->setNotice(offer.text, offer.button, offer.run);
    if (isVisible())
        return;
    openedForLine_ = true;
    show();
}

bool PanelDock::offers(const QString& name) const {
    const NoticeBar* const shown = line(name);
    return shown && shown->hasNotice();
}

void PanelDock::withdraw(const QString& name) {
    if (NoticeBar* const shown = line(name))
        takeAway(*shown);
}

NoticeBar* PanelDock::line(const QString& name) const {
    return findChild<NoticeBar*>(name);
}

NoticeBar* PanelDock::addLine(const QString& name) {
    auto* const added = new NoticeBar(name);
    added->setObjectName(name);
    layout_->addWidget(added);
    connect(added, &NoticeBar::dismissed, this, [this, added] { takeAway(*added); });
    return added;
}

void PanelDock::takeAway(NoticeBar& line) {
    const QWidget* const focused = QApplication::focusWidget();
    if (focused && line.isAncestorOf(focused))
        returnFocus();
    line.setNotice({});
    const auto lines = findChildren<NoticeBar*>();
    const bool last =
        std::none_of(lines.begin(), lines.end(), [](const NoticeBar* other) { return other->hasNotice(); });
    if (last && openedForLine_)
        hide();
}

void PanelDock::followFocus(QWidget* before, QWidget* now) {
    if (now && isAncestorOf(now) && before && !isAncestorOf(before))
        focusOfPage_ = before;
    // A line that opened the dock may not take away what the user works in.
    if (now && tabs_->isAncestorOf(now))
        keepOpen();
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
