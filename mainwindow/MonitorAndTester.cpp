#include "mainwindow/MonitorAndTester.h"

#include "link/forms/MonitorPanel.h"
#include "mainwindow/TcpTesterPage.h"

namespace orvista {

namespace {

void followTester(DisplayMonitor& monitor, bool isSending) {
    if (isSending)
        monitor.hold();
    else
        monitor.release();
}

void takeIntoTester(TcpTesterPage& tester, const std::vector<DisplayItem>& items) {
    for (const DisplayItem& item : items)
        if (item.isMessage() && item.isAddressable)
            tester.tickMessage(item.item, item.isOn());
}

} // namespace

void shareDisplay(MonitorPanel& monitor, TcpTesterPage& tester) {
    QObject::connect(&tester, &TcpTesterPage::sendingChanged, &monitor,
                     [&monitor](bool isSending) { followTester(monitor.monitor(), isSending); });
    QObject::connect(&monitor, &MonitorPanel::takeAsked, &tester,
                     [&tester](const std::vector<DisplayItem>& items) { takeIntoTester(tester, items); });
    if (tester.isSending())
        monitor.monitor().hold();
}

} // namespace orvista
