#include "mainwindow/MonitorTools.h"

#include "display/forms/DisplayPreview.h"
#include "link/forms/MonitorPanel.h"
#include "mainwindow/Navigator.h"
#include "mainwindow/PanelDock.h"
#include "mainwindow/TcpTesterPage.h"

#include <QEvent>
#include <QMainWindow>

namespace orvista {

namespace {

constexpr const char* monitorPanelName = "monitor";

} // namespace

MonitorTools::MonitorTools(const Project& project, TcpTesterPage& tester, DisplayPreview& preview,
                           Navigator& navigator, PanelDock& dock, std::uint16_t port, QMainWindow& window)
    : QObject(&dock),
      project_(project),
      tester_(tester),
      preview_(preview),
      navigator_(navigator),
      dock_(dock),
      port_(port) {
    dock.addPanel({monitorPanelName, tr("Display Monitor"), [this] { return makePanel(); }});
    window.installEventFilter(this);
}

QWidget* MonitorTools::makePanel() {
    panel_ = new MonitorPanel(project_, preview_.columns(), preview_.clock(), port_,
                              [this] { return navigator_.notAppliedItems(); });
    connect(&preview_, &DisplayPreview::columnsChanged, panel_,
            [this] { panel_->setColumns(preview_.columns()); });
    connect(&tester_, &TcpTesterPage::sendingChanged, this, &MonitorTools::followTester);
    connect(panel_, &MonitorPanel::takeAsked, this, &MonitorTools::takeIntoTester);
    connect(panel_, &MonitorPanel::placeChosen, &navigator_, &Navigator::goTo);
    connect(panel_, &MonitorPanel::rowLeft, &navigator_, &Navigator::forget);
    if (tester_.isSending())
        followTester(true);
    return panel_;
}

std::vector<CommandRow> MonitorTools::viewEntries() {
    return {{.name = "miViewMonitor",
             .caption = tr("Display &Monitor"),
             .toolTip = tr("What the display shows and holds now"),
             .enabling = EnablingRules::always,
             .run = [this] { miViewMonitor_Click(); }}};
}

void MonitorTools::miViewMonitor_Click() {
    dock_.open(monitorPanelName);
}

void MonitorTools::projectChanged() {
    if (panel_)
        panel_->projectChanged();
}

void MonitorTools::markNotApplied() {
    if (panel_)
        panel_->markNotApplied();
}

void MonitorTools::stop() {
    if (panel_)
        panel_->monitor().stop();
}

void MonitorTools::takeIntoTester(const std::vector<DisplayItem>& items) {
    for (const DisplayItem& item : items)
        if (item.isMessage() && item.isAddressable)
            tester_.tickMessage(*item.kind, item.index, item.isOn());
}

void MonitorTools::followTester(bool isSending) {
    if (isSending)
        panel_->monitor().hold();
    else
        panel_->monitor().release();
}

bool MonitorTools::eventFilter(QObject* watched, QEvent* event) {
    // The window was closed, or the program ends; a minimized window is hidden by the system.
    if (event->type() == QEvent::Hide && !event->spontaneous())
        stop();
    return QObject::eventFilter(watched, event);
}

} // namespace orvista
