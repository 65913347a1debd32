#include "link/DisplayWrites.h"
#include "link/TransferControls.h"
#include "link/forms/DeviceTransfer.h"
#include "link/forms/MonitorPanel.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/SimulatorProcess.h"
#include "widgets/PanelView.h"

#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTcpServer>

#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

const QString first = QStringLiteral("127.0.0.1");
const QString second = QStringLiteral("127.0.0.2");
const QString nothing = QStringLiteral("nothing");

void switchOn(const QString& address, quint16 port, const char* message) {
    writeToDisplay({address.toStdString(), port}, switchWrites(Project(), {message}, {}));
}

/// Two displays at two addresses. One has STDMSG3 on, the other STDMSG7 and ALTMSG2; the project Plant, which
/// is monitored, is for the first, the saved project Other for the second.
struct TwoDisplays : EditorFixture {
    TwoDisplays() {
        modbusPort = displays.emplace_back(std::make_unique<SimulatorProcess>())->modbusPort();
        displays.push_back(std::make_unique<SimulatorProcess>(
            QStringList{"--listen", second, "--modbus-port", QString::number(modbusPort)}));
        switchOn(first, modbusPort, "STDMSG3");
        switchOn(second, modbusPort, "STDMSG7");
        switchOn(second, modbusPort, "ALTMSG2");
        startWithNewProject("Other");
        type("txtSystemIP", second);
        trigger("miFileSave");
        newProject("Plant");
        showPage("C1");
        type("txtSystemIP", first);
        trigger("miFileSave");
        monitor();
        QTRY_COMPARE(take(), QStringLiteral("STDMSG3"));
    }
    void monitor() const {
        trigger("miViewMonitor");
        find<QDoubleSpinBox>("spnMonitorSeconds")->setValue(0.5);
        click("btnMonitorStart");
    }
    /// What "Take into Tester" ticks now: the messages that are on, or "nothing" where it cannot be pressed.
    QString take() const {
        if (!find<QPushButton>("btnMonitorTake")->isEnabled())
            return nothing;
        QStringList on;
        const auto taken = QObject::connect(&panel(), &MonitorPanel::takeAsked, &panel(),
                                            [&on](const std::vector<DisplayItem>& items) {
                                                for (const DisplayItem& item : items)
                                                    if (item.isMessage() && item.isOn())
                                                        on << QString::fromStdString(item.name());
                                            });
        find<QPushButton>("btnMonitorTake")->click();
        QObject::disconnect(taken);
        return on.join(u' ');
    }
    /// Rows and picture are empty, and nothing can be taken.
    bool isEmpty() const {
        return take() == nothing && find<QTableView>("tblMonitor")->model()->rowCount() == 0 &&
               find<PanelView>("monitorPanel")->accessibleDescription() ==
                   QStringLiteral("Dark: no message is on");
    }
    QString state() const { return find<QLabel>("lblMonitorState")->text(); }
    MonitorPanel& panel() const { return *window->findChild<MonitorPanel*>(); }

    std::vector<std::unique_ptr<SimulatorProcess>> displays;
};

} // namespace

class TakeIntoTesterTest : public QObject {
    Q_OBJECT
private slots:
    void newEmptiesTheMonitor();
    void openingAnotherProjectEmptiesTheMonitor();
    void aDownloadEmptiesTheMonitor();
    void anotherAddressEmptiesTheMonitorWhichReadsThatDisplay();
    void aStoppedMonitorGivesNothing();
    void aDisplayThatRefusesGivesNothing();
    void aDisplayThatFallsSilentGivesNothing();
    void closingTheDockStopsTheMonitor();
    void hidingThePanelsStopsTheMonitor();
    void anotherPanelInFrontDoesNot();
};

void TakeIntoTesterTest::newEmptiesTheMonitor() {
    TwoDisplays editor;
    editor.newProject("Third");
    QVERIFY(editor.isEmpty());
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
}

void TakeIntoTesterTest::openingAnotherProjectEmptiesTheMonitor() {
    TwoDisplays editor;
    editor.openProject("Other");
    QVERIFY(editor.isEmpty());
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.take(), QStringLiteral("STDMSG7 ALTMSG2"));
}

void TakeIntoTesterTest::aDownloadEmptiesTheMonitor() {
    TwoDisplays editor;
    DeviceTransfer transfer(editor.project, editor.window->lifecycle(), editor.chooser, editor.messages,
                            *editor.window, &makeTransferControl);
    editor.window->useTransfer(transfer);
    editor.chooser.newProjects.push_back(editor.projectNamed("Fetched"));
    onModal(QStringLiteral("frmConnection"), [](QWidget* dialog) { dialog->close(); });
    editor.trigger("miLinkDownload");
    QVERIFY(allModalsServed());
    QVERIFY(editor.isEmpty());
    editor.window.reset();
}

void TakeIntoTesterTest::anotherAddressEmptiesTheMonitorWhichReadsThatDisplay() {
    TwoDisplays editor;
    editor.showPage("C1");
    editor.type("txtSystemIP", second);
    QCOMPARE(editor.take(), nothing);
    QCOMPARE(editor.state(), QStringLiteral("Connecting to 127.0.0.2 \u2026"));
    QTRY_COMPARE(editor.take(), QStringLiteral("STDMSG7 ALTMSG2"));
}

void TakeIntoTesterTest::aStoppedMonitorGivesNothing() {
    TwoDisplays editor;
    editor.click("btnMonitorStop");
    QCOMPARE(editor.take(), nothing);
    QVERIFY2(editor.state().startsWith(QStringLiteral("Stopped (as of ")), qPrintable(editor.state()));
    QCOMPARE(editor.find<QTableView>("tblMonitor")->model()->rowCount(), 156);
    editor.click("btnMonitorStart");
    QCOMPARE(editor.take(), nothing);
    QTRY_COMPARE(editor.take(), QStringLiteral("STDMSG3"));
}

void TakeIntoTesterTest::aDisplayThatRefusesGivesNothing() {
    TwoDisplays editor;
    editor.displays.front().reset();
    QTRY_COMPARE(editor.take(), nothing);
    QVERIFY2(editor.state().contains(QStringLiteral("refused")), qPrintable(editor.state()));
    QVERIFY2(editor.state().contains(QStringLiteral("(as of ")), qPrintable(editor.state()));
    editor.displays.front() =
        std::make_unique<SimulatorProcess>(QStringList{"--modbus-port", QString::number(editor.modbusPort)});
    QTRY_COMPARE(editor.take(), QString());
}

void TakeIntoTesterTest::aDisplayThatFallsSilentGivesNothing() {
    TwoDisplays editor;
    editor.displays.front().reset();
    QTRY_COMPARE(editor.take(), nothing);
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress(first), editor.modbusPort));
    QTRY_VERIFY_WITH_TIMEOUT(editor.state().contains(QStringLiteral("no answer within 3 s")), 20'000);
    QCOMPARE(editor.take(), nothing);
}

void TakeIntoTesterTest::closingTheDockStopsTheMonitor() {
    TwoDisplays editor;
    editor.find<QAbstractButton>("btnClosePanels")->click();
    QVERIFY(!editor.panel().monitor().isRunning());
    editor.trigger("miViewMonitor");
    QCOMPARE(editor.take(), nothing);
}

void TakeIntoTesterTest::hidingThePanelsStopsTheMonitor() {
    TwoDisplays editor;
    editor.trigger("miViewPanels");
    QVERIFY(!editor.panel().monitor().isRunning());
}

void TakeIntoTesterTest::anotherPanelInFrontDoesNot() {
    TwoDisplays editor;
    editor.trigger("miViewMessages");
    QVERIFY(editor.panel().monitor().isRunning());
    editor.trigger("miViewMonitor");
    QCOMPARE(editor.take(), QStringLiteral("STDMSG3"));
}

QTEST_MAIN(TakeIntoTesterTest)
#include "TakeIntoTesterTest.moc"
