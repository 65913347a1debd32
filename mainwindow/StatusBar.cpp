#include "mainwindow/StatusBar.h"

#include "widgets/FormParts.h"

#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QTimer>

#include <chrono>

namespace orvista {

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent), clock_(new QTimer(this)) {
    setObjectName(QStringLiteral("StatusBarMain"));
    auto* model = named<QLabel>(QStringLiteral("panelModel"), QStringLiteral("LX-400D"));
    model->setContentsMargins(fontMetrics().averageCharWidth(), 0, 0, 0);
    addWidget(model, 1);
    date_ = addPanel(QStringLiteral("panelDate"));
    time_ = addPanel(QStringLiteral("panelTime"));
    time_->setToolTip(QStringLiteral("Current Date/Time"));
    showClock();
    clock_->callOnTimeout(this, &StatusBar::showClock);
    clock_->start(std::chrono::seconds(1));
}

QLabel* StatusBar::addPanel(const QString& name) {
    auto* panel = named<QLabel>(name);
    const int margin = fontMetrics().averageCharWidth();
    panel->setContentsMargins(margin, 0, margin, 0);
    addPermanentWidget(panel);
    return panel;
}

void StatusBar::showClock() {
    const QDateTime now = QDateTime::currentDateTime();
    date_->setText(locale().toString(now.date(), QLocale::ShortFormat));
    time_->setText(locale().toString(now.time(), QLocale::ShortFormat));
}

} // namespace orvista
