#include "display/FolderBitmaps.h"
#include "display/SettledPage.h"
#include "link/DisplayWrites.h"
#include "link/SystemSocket.h"
#include "link/TransferControls.h"
#include "link/forms/DeviceTransfer.h"
#include "link/forms/MonitorPanel.h"
#include "link/forms/TesterClient.h"
#include "mainwindow/TcpTesterPage.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/CountedMouse.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/FreeTransferPort.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/NamedItem.h"
#include "tests/support/SimulatorProcess.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTableView>
#include <QTcpServer>
#include <QTcpSocket>
#include <QToolBar>

#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The rows and the state line of a panel, wherever it stands.
class Shown {
public:
    explicit Shown(const QWidget& root) : root_(root) {}

    /// Without the time of the last reading.
    QString state() const {
        return find<QLabel>("lblMonitorState")->text().section(QStringLiteral(" (as of "), 0, 0);
    }
    QString stateAndTime() const { return find<QLabel>("lblMonitorState")->text(); }
    int rowCount() const { return model().rowCount(); }
    /// "322|ON|0001|Level": what the columns after the item's name and label say; empty while there is no
    /// such row.
    QString row(const QString& item) const {
        const int row = indexOf(item);
        QStringList cells;
        for (int column = 2; row >= 0 && column < model().columnCount() - 1; ++column)
            cells << model().index(row, column).data().toString();
        return cells.join(u'|');
    }
    QString changedAt(const QString& item) const {
        return model().index(indexOf(item), model().columnCount() - 1).data().toString();
    }
    QString labelOf(const QString& item) const { return model().index(indexOf(item), 1).data().toString(); }
    bool isMarked(const QString& item) const {
        return model().index(indexOf(item), 0).data(Qt::FontRole).value<QFont>().bold();
    }
    /// Enter on the item's row.
    void enter(const QString& item) const {
        auto* const table = find<QTableView>("tblMonitor");
        table->selectRow(indexOf(item));
        QTest::keyClick(table, Qt::Key_Return);
    }
    template <typename Widget>
    Widget* find(const char* name) const {
        auto* const widget = root_.findChild<Widget*>(QLatin1String(name));
        if (!widget)
            throw std::logic_error(std::string("no ") + name);
        return widget;
    }

private:
    const QAbstractItemModel& model() const { return *find<QTableView>("tblMonitor")->model(); }
    int indexOf(const QString& item) const {
        for (int row = 0; row < model().rowCount(); ++row)
            if (model().index(row, 0).data().toString() == item)
                return row;
        return -1;
    }

    const QWidget& root_;
};

DisplayAddress at(quint16 port) {
    return {"127.0.0.1", port};
}

/// A panel that reads a display at the shortest interval, and whose time is set by hand.
struct Watched {
    Watched() {
        project.IP = "127.0.0.1";
        panel.show();
        shown.find<QDoubleSpinBox>("spnMonitorSeconds")->setValue(0.5);
        shown.find<QPushButton>("btnMonitorStart")->click();
    }
    void write(const char* assignment) {
        writeToDisplay(at(display.modbusPort()), assignedWrites({assignment}, &project));
    }

    const SimulatorProcess display;
    Project project;
    std::int64_t now = 0; ///< ms
    MonitorPanel panel{project,
                       128,
                       {[this] { return now; }, [] { return LocalTime{2026, 1, 31, 14, 5, 9}; }},
                       display.modbusPort(),
                       [] { return std::vector<Item>(); }};
    const Shown shown{panel};
};

/// Answers the connection dialog that comes next.
void connectTo(CountedMouse& mouse, quint16 port) {
    onModal(QStringLiteral("frmConnection"), [&mouse, port](QWidget* dialog) {
        auto* const box = dialog->findChild<QLineEdit*>(QStringLiteral("txtPort"));
        box->selectAll();
        QTest::keyClicks(box, QString::number(port));
        mouse.click(dialog->findChild<QPushButton*>(QStringLiteral("btnOK")));
    });
}

/// The main window with a new project for the display at that port, the monitor's tab in front.
struct MonitoringEditor : EditorFixture {
    explicit MonitoringEditor(quint16 port) {
        modbusPort = port;
        startWithNewProject("Plant");
        type("txtSystemIP", QStringLiteral("127.0.0.1"));
        trigger("miViewMonitor");
        find<QDoubleSpinBox>("spnMonitorSeconds")->setValue(0.5);
    }
    Shown shown() const { return Shown(*window); }
    QString state() const { return shown().state(); }
    QString row(const QString& item) const { return shown().row(item); }
    bool isChecked(const char* box) const { return find<QCheckBox>(box)->isChecked(); }
};

/// A display that takes connections and says nothing; it remembers what it saw, in order.
class SilentDisplay : public QObject {
public:
    SilentDisplay() {
        server_.listen(QHostAddress::LocalHost);
        connect(&server_, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* const client = server_.nextPendingConnection()) {
                for (const QTcpSocket* const earlier : clients)
                    openAtNewConnection += hasEnded(*earlier) ? 0 : 1;
                clients.push_back(client);
                connect(client, &QTcpSocket::readyRead, this,
                        [this, client] { received += client->readAll(); });
            }
        });
    }
    quint16 port() const { return server_.serverPort(); }

    std::vector<QTcpSocket*> clients;
    int openAtNewConnection = 0; ///< earlier connections that had not ended when another came
    QByteArray received;

private:
    /// What the system knows, which may not have reached the event loop yet.
    static bool hasEnded(const QTcpSocket& socket) {
        const auto handle = static_cast<systemsocket::Handle>(socket.socketDescriptor());
        char byte = 0;
        return socket.state() != QAbstractSocket::ConnectedState || ::recv(handle, &byte, 1, MSG_PEEK) == 0;
    }

    QTcpServer server_;
};

} // namespace

class DisplayMonitorTest : public QObject {
    Q_OBJECT
private slots:
    void isOffUntilStart();
    void showsWhatTheDisplayHolds();
    void showsWhatAnIndependentServerHolds();
    void marksWhatChangedForThreeSeconds();
    void aMarkEndsThoughNothingIsReadAnyMore();
    void hasTheLabels();
    void theFirstReadingIsNotAChange();
    void showsOnlyWhatIsOn();
    void drawsThePanelFromTheProjectAndTheValuesRead();
    void afterStopThePictureStands();
    void namesItemsThatNoRequestReaches();
    void faultsAreSaidInTheTab_data();
    void aMissingAddressIsSaidInTheTab();
    void faultsAreSaidInTheTab();
    void triesAgainAfterLongerAndLongerPauses();
    void neverPausesForMoreThanTenSeconds();
    void readsEverySecondUnlessToldOtherwise();
    void aShorterIntervalCountsAtOnce();
    void isSilentWhileSomebodyElseTalksToTheDisplay();
    void comesBackWhenTheDisplayDoes();
    void whatWasReadStaysWhenTheDisplayGoesAway();
    void updateClosesTheConnectionFirst();
    void readsAgainOnceTheButtonsAreEnabled();
    void takesTheDisplaysMessagesIntoTheTester();
    void thePreviewMayShowWhatTheDisplayHoldsWhileItIsRead();
    void aRowLeadsToItsItem();
    void theRowOfAnItemThatIsNotAppliedSaysSo();
    void stopsOnANewProjectAndOnOpening();
    void stopsOnADownload();
    void stopsWhenTheWindowCloses();
    void stopsWithoutAProjectAndWithoutItsWindow();
    void aRowNamesItsPlace();
    void worksByKeyboardAlone();
    void aTechnicianMendsAWrongMessageInTwelveClicks();
};

void DisplayMonitorTest::isOffUntilStart() {
    SilentDisplay display;
    const MonitoringEditor editor(display.port());
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
    QCOMPARE(editor.shown().rowCount(), 0);
    QVERIFY(!editor.find<QPushButton>("btnMonitorStop")->isEnabled());
    QVERIFY(!editor.find<QPushButton>("btnMonitorTake")->isEnabled());
    editor.click("btnMonitorStart");
    QTRY_COMPARE(display.clients.size(), 1U);
    QCOMPARE(editor.state(), QStringLiteral("Connecting to 127.0.0.1 \u2026"));
    editor.click("btnMonitorStop");
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
    QTRY_COMPARE(display.clients.front()->state(), QAbstractSocket::UnconnectedState);
}

void DisplayMonitorTest::showsWhatTheDisplayHolds() {
    const SimulatorProcess display;
    MonitoringEditor editor(display.modbusPort());
    editor.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nACT STILL 2000";
    editor.project.RegVar[0] = {"RegVar1", "0.0", "5", "2"};
    writeToDisplay(at(display.modbusPort()), switchWrites(editor.project, {"STDMSG3", "ALTMSG20"}, {}));
    writeToDisplay(at(display.modbusPort()),
                   assignedWrites({"RegVar1=123.456", "CoilVar32=on"}, &editor.project));
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.shown().rowCount(), 156);
    QCOMPARE(editor.state(), QStringLiteral("Reading 127.0.0.1 every 0.5 s"));
    QCOMPARE(editor.row(QStringLiteral("STDMSG3")), QStringLiteral("322|ON|0001|Level"));
    QCOMPARE(editor.row(QStringLiteral("STDMSG4")), QStringLiteral("323|OFF|0000|"));
    QCOMPARE(editor.row(QStringLiteral("ALTMSG20")), QStringLiteral("319|ON|0001|"));
    QCOMPARE(editor.row(QStringLiteral("RegVar1")), QStringLiteral("100|123.456|E979 42F6|*****"));
    QCOMPARE(editor.row(QStringLiteral("CoilVar32")), QStringLiteral("131|ON|0001|ON"));
    QVERIFY(editor.messages.shown.empty());
}

void DisplayMonitorTest::showsWhatAnIndependentServerHolds() {
#ifdef ORVISTA_MODBUS_SERVER
    ChildProcess server({ORVISTA_PYTHON, ORVISTA_MODBUS_SERVER});
    const auto port = static_cast<quint16>(std::stoi(server.readLine()));
    const MonitoringEditor editor(port);
    writeToDisplay(at(port), switchWrites(editor.project, {"STDMSG40", "ALTMSG1"}, {}));
    writeToDisplay(at(port), assignedWrites({"RegVar64=-2.5"}, &editor.project));
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.row(QStringLiteral("RegVar64")), QStringLiteral("226|-2.5|0000 C020|-2.500"));
    QVERIFY(editor.row(QStringLiteral("STDMSG40")).startsWith(QStringLiteral("359|ON|")));
    QVERIFY(editor.row(QStringLiteral("STDMSG39")).startsWith(QStringLiteral("358|OFF|")));
    QVERIFY(editor.row(QStringLiteral("ALTMSG1")).startsWith(QStringLiteral("300|ON|")));
#else
    QSKIP("no independent server here");
#endif
}

void DisplayMonitorTest::hasTheLabels() {
    Watched watched;
    ProjectNotes notes;
    notes.set({Kind::Regular, 2}, {"TankFull", "", ""});
    watched.panel.useNotes(notes);
    QTRY_COMPARE(watched.shown.labelOf(QStringLiteral("STDMSG3")), QStringLiteral("TankFull"));
    QCOMPARE(watched.shown.labelOf(QStringLiteral("STDMSG4")), QString());
}

void DisplayMonitorTest::marksWhatChangedForThreeSeconds() {
    Watched watched;
    QTRY_COMPARE(watched.shown.rowCount(), 156);
    QCOMPARE(watched.shown.stateAndTime(), QStringLiteral("Reading 127.0.0.1 every 0.5 s (as of 14:05:09)"));
    watched.write("RegVar2=7");
    QTRY_VERIFY(watched.shown.isMarked(QStringLiteral("RegVar2")));
    QCOMPARE(watched.shown.changedAt(QStringLiteral("RegVar2")), QStringLiteral("14:05:09"));
    QVERIFY(!watched.shown.isMarked(QStringLiteral("RegVar1")));
    watched.now = 2999;
    watched.write("RegVar3=7");
    QTRY_VERIFY(watched.shown.isMarked(QStringLiteral("RegVar3")));
    QVERIFY(watched.shown.isMarked(QStringLiteral("RegVar2")));
    watched.now = 3000;
    QTRY_VERIFY(!watched.shown.isMarked(QStringLiteral("RegVar2")));
    QVERIFY(watched.shown.isMarked(QStringLiteral("RegVar3")));
    QCOMPARE(watched.shown.changedAt(QStringLiteral("RegVar2")), QStringLiteral("14:05:09"));
}

void DisplayMonitorTest::aMarkEndsThoughNothingIsReadAnyMore() {
    Watched watched;
    QTRY_COMPARE(watched.shown.rowCount(), 156);
    watched.write("RegVar2=7");
    QTRY_VERIFY(watched.shown.isMarked(QStringLiteral("RegVar2")));
    watched.now = 2990;
    watched.shown.find<QPushButton>("btnMonitorStop")->click();
    QVERIFY(watched.shown.isMarked(QStringLiteral("RegVar2")));
    watched.now = 3000;
    QTRY_VERIFY(!watched.shown.isMarked(QStringLiteral("RegVar2")));
}

void DisplayMonitorTest::theFirstReadingIsNotAChange() {
    const SimulatorProcess display;
    const MonitoringEditor editor(display.modbusPort());
    writeToDisplay(at(display.modbusPort()), switchWrites(editor.project, {"STDMSG3"}, {}));
    for (int run = 0; run < 2; ++run) {
        editor.click("btnMonitorStart");
        QTRY_VERIFY(editor.row(QStringLiteral("STDMSG3")).startsWith(QStringLiteral("322|ON|")));
        QCOMPARE(editor.shown().changedAt(QStringLiteral("STDMSG3")), QString());
        QVERIFY(!editor.shown().isMarked(QStringLiteral("STDMSG3")));
        editor.click("btnMonitorStop");
        // What was read last stays to be looked at.
        QVERIFY(!editor.row(QStringLiteral("STDMSG3")).isEmpty());
    }
}

void DisplayMonitorTest::showsOnlyWhatIsOn() {
    const SimulatorProcess display;
    const MonitoringEditor editor(display.modbusPort());
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.shown().rowCount(), 156);
    editor.click("chkMonitorOnlyOn");
    QTRY_COMPARE(editor.shown().rowCount(), 0);
    writeToDisplay(at(display.modbusPort()), switchWrites(editor.project, {"ALTMSG2"}, {}));
    writeToDisplay(at(display.modbusPort()), assignedWrites({"RegVar5=1"}, &editor.project));
    QTRY_COMPARE(editor.shown().rowCount(), 2);
    QVERIFY(!editor.row(QStringLiteral("ALTMSG2")).isEmpty());
    QVERIFY(!editor.row(QStringLiteral("RegVar5")).isEmpty());
    editor.click("chkMonitorOnlyOn");
    QCOMPARE(editor.shown().rowCount(), 156);
}

void DisplayMonitorTest::drawsThePanelFromTheProjectAndTheValuesRead() {
    const SimulatorProcess display;
    MonitoringEditor editor(display.modbusPort());
    editor.project.STDMSG[2] =
        "CLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nDISPVAR 40 0 GREEN BLACK RegVar1\r\nACT STILL 2000";
    writeToDisplay(at(display.modbusPort()), switchWrites(editor.project, {"STDMSG3"}, {}));
    writeToDisplay(at(display.modbusPort()), assignedWrites({"RegVar1=12.5"}, &editor.project));
    const auto* const panel = editor.find<PanelView>("monitorPanel");
    const LedRaster dark({128});
    QCOMPARE(panel->shown(), dark);
    editor.click("btnMonitorStart");
    MessageCoils coils;
    coils.regular.set(2);
    const Programme programme = deviceProgramme(editor.project, coils, PlayList::inOrder(),
                                                FolderBitmaps(editor.project.ProjPath), {128});
    DisplayValues values;
    values.floats[0] = 12.5F;
    const LedRaster expected = settledPage(programme, 0, values);
    QVERIFY(expected != dark);
    QTRY_COMPARE(panel->shown(), expected);
    QCOMPARE(panel->accessibleDescription(), QStringLiteral("On: STDMSG3"));
    writeToDisplay(at(display.modbusPort()), switchWrites(editor.project, {}, {"STDMSG3"}));
    QTRY_COMPARE(panel->shown(), dark);
    QCOMPARE(panel->accessibleDescription(), QStringLiteral("Dark: no message is on"));
}

void DisplayMonitorTest::afterStopThePictureStands() {
    Watched watched;
    watched.project.ResetAddressMap(); // no coil stands for two messages
    watched.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"One\"\r\nACT STILL 2000\r\n"
                                "CLEAR\r\nTEXT 0 0 RED BLACK \"Two\"\r\nACT STILL 2000";
    const auto* const picture = watched.shown.find<PanelView>("monitorPanel");
    writeToDisplay(at(watched.display.modbusPort()), switchWrites(watched.project, {"STDMSG3"}, {}));
    QTRY_VERIFY(picture->shown() != LedRaster({128}));
    const LedRaster one = picture->shown();
    QTRY_VERIFY((watched.now += 500, picture->shown() != one));
    const LedRaster two = picture->shown();
    watched.shown.find<QPushButton>("btnMonitorStop")->click();
    watched.now += 2000;
    watched.panel.hide();
    watched.panel.show();
    QCOMPARE(picture->shown(), two);
    watched.shown.find<QPushButton>("btnMonitorStart")->click();
    QTRY_COMPARE(picture->shown(), one);
}

void DisplayMonitorTest::namesItemsThatNoRequestReaches() {
    const SimulatorProcess display;
    MonitoringEditor editor(display.modbusPort());
    editor.project.DigitalInput = 65530;
    editor.click("btnMonitorStart");
    QTRY_COMPARE(
        editor.state(),
        QStringLiteral("Reading 127.0.0.1 every 0.5 s, except items that the address map puts beyond "
                       "0 to 65535: CoilVar7 to CoilVar32"));
    QCOMPARE(editor.row(QStringLiteral("CoilVar6")), QStringLiteral("65535|OFF|0000|OFF"));
    QCOMPARE(editor.row(QStringLiteral("CoilVar7")), QStringLiteral("65536|no address||"));
}

void DisplayMonitorTest::faultsAreSaidInTheTab_data() {
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const QStringList& options, const char* reason) {
        QTest::newRow(name) << options << QString::fromLatin1(reason);
    };
    const QString fault = QStringLiteral("--fault");
    row("refuse", {fault, "refuse"}, "refused");
    row("close", {fault, "close"}, "(ended|closed|reset)");
    row("reset", {fault, "reset"}, "(ended|closed|reset)");
    row("no-answer", {fault, "no-answer"}, "reading coils 320 to 359: no answer within 3 s");
    row("exception", {fault, "exception", "--exception", "2"},
        "reading coils 320 to 359: exception 2, illegal data address");
    row("garbage", {fault, "garbage"}, "reading coils 320 to 359: the display's answer is not Modbus");
}

void DisplayMonitorTest::aMissingAddressIsSaidInTheTab() {
    MonitoringEditor editor(1);
    editor.project.IP.clear();
    editor.click("btnMonitorStart");
    const QRegularExpression expected(
        QStringLiteral("^No address on the System page. Tries again after \\d+ s\\.$"));
    QTRY_VERIFY2(expected.match(editor.state()).hasMatch(), qPrintable(editor.state()));
}

void DisplayMonitorTest::faultsAreSaidInTheTab() {
    QFETCH(const QStringList, options);
    QFETCH(const QString, reason);
    const SimulatorProcess display(options);
    const MonitoringEditor editor(display.modbusPort());
    editor.click("btnMonitorStart");
    const QRegularExpression expected(
        QStringLiteral("^127\\.0\\.0\\.1: .*%1.*\\. Tries again after \\d+ s\\.$").arg(reason));
    QTRY_VERIFY2(expected.match(editor.state()).hasMatch(), qPrintable(editor.state()));
    QVERIFY(editor.messages.shown.empty());
    QVERIFY(editor.find<QPushButton>("btnMonitorStop")->isEnabled());
}

void DisplayMonitorTest::triesAgainAfterLongerAndLongerPauses() {
    Project project;
    DisplayMonitor monitor(project, 1);
    project.IP = "127.0.0.1";
    std::vector<std::int64_t> pauses;
    connect(&monitor, &DisplayMonitor::changed, this, [&] {
        if (!monitor.failure().isEmpty())
            pauses.push_back(monitor.pause().count());
    });
    monitor.start();
    QTRY_COMPARE_WITH_TIMEOUT(pauses, (std::vector<std::int64_t>{1000, 2000, 5000}), 8000);
    monitor.stop();
    QVERIFY(!monitor.isRunning());
}

void DisplayMonitorTest::neverPausesForMoreThanTenSeconds() {
    Project project;
    DisplayMonitor monitor(project, 1);
    project.IP = "127.0.0.1";
    std::vector<std::int64_t> pauses;
    connect(&monitor, &DisplayMonitor::changed, this, [&] {
        if (monitor.failure().isEmpty())
            return;
        pauses.push_back(monitor.pause().count());
        monitor.release(); // reads at once
    });
    monitor.start();
    QTRY_VERIFY(pauses.size() >= 6);
    monitor.stop();
    pauses.resize(6);
    QCOMPARE(pauses, (std::vector<std::int64_t>{1000, 2000, 5000, 10000, 10000, 10000}));
}

void DisplayMonitorTest::readsEverySecondUnlessToldOtherwise() {
    const Project project;
    const MonitorPanel panel(project, 128, PreviewClock::system(), 1, [] { return std::vector<Item>(); });
    const auto* const seconds = Shown(panel).find<QDoubleSpinBox>("spnMonitorSeconds");
    QCOMPARE(seconds->value(), 1.0);
    QCOMPARE(seconds->minimum(), 0.5);
    QCOMPARE(seconds->maximum(), 10.0);
}

void DisplayMonitorTest::aShorterIntervalCountsAtOnce() {
    const SimulatorProcess display;
    Project project;
    project.IP = "127.0.0.1";
    DisplayMonitor monitor(project, display.modbusPort());
    monitor.setInterval(std::chrono::hours(1));
    QSignalSpy changes(&monitor, &DisplayMonitor::changed);
    monitor.start();
    QTRY_VERIFY(monitor.items().has_value());
    changes.clear();
    monitor.setInterval(std::chrono::milliseconds(10));
    QTRY_VERIFY(!changes.empty());
}

void DisplayMonitorTest::isSilentWhileSomebodyElseTalksToTheDisplay() {
    SilentDisplay display;
    Project project;
    project.IP = "127.0.0.1";
    DisplayMonitor monitor(project, display.port());
    const auto waits = [&monitor] {
        const auto timers = monitor.findChildren<QTimer*>();
        return std::ranges::any_of(timers, [](const QTimer* timer) { return timer->isActive(); });
    };
    monitor.hold();
    monitor.release(); // it was never started
    QVERIFY(!waits());
    monitor.start();
    QTRY_COMPARE(display.clients.size(), 1U);
    QVERIFY(waits());
    monitor.hold();
    QVERIFY(!waits());
    QTRY_COMPARE(display.clients.front()->state(), QAbstractSocket::UnconnectedState);
    monitor.stop();
    monitor.release(); // it was stopped meanwhile
    QVERIFY(!waits());
    monitor.start();
    monitor.hold();
    monitor.release();
    QTRY_COMPARE(display.clients.size(), 2U);
}

void DisplayMonitorTest::comesBackWhenTheDisplayDoes() {
    std::optional<SilentDisplay> before(std::in_place);
    const quint16 port = before->port();
    before.reset();
    const MonitoringEditor editor(port);
    editor.click("btnMonitorStart");
    QTRY_VERIFY(editor.state().contains(QStringLiteral("refused")));
    std::optional<SimulatorProcess> display;
    display.emplace(QStringList{"--modbus-port", QString::number(port)});
    QTRY_COMPARE(editor.state(), QStringLiteral("Reading 127.0.0.1 every 0.5 s"));
    QCOMPARE(editor.shown().rowCount(), 156);
}

void DisplayMonitorTest::whatWasReadStaysWhenTheDisplayGoesAway() {
    std::optional<SimulatorProcess> display(std::in_place);
    const MonitoringEditor editor(display->modbusPort());
    writeToDisplay(at(display->modbusPort()), switchWrites(editor.project, {"STDMSG3"}, {}));
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.state(), QStringLiteral("Reading 127.0.0.1 every 0.5 s"));
    display.reset();
    QTRY_VERIFY(editor.state().contains(QStringLiteral("Tries again after")));
    QCOMPARE(editor.shown().rowCount(), 156);
    QCOMPARE(editor.row(QStringLiteral("STDMSG3")), QStringLiteral("322|ON|0001|"));
    QVERIFY(editor.find<QPushButton>("btnMonitorStop")->isEnabled());
    QVERIFY(editor.messages.shown.empty());
}

void DisplayMonitorTest::updateClosesTheConnectionFirst() {
    SilentDisplay display;
    MonitoringEditor editor(display.port());
    TesterClient client(editor.project, editor.window->testerPage(), editor.messages, display.port());
    editor.window->testerPage().useActions(client);
    editor.click("btnMonitorStart");
    QTRY_COMPARE(display.received.size(), 12);
    editor.showPage("C5");
    editor.click("btnRegMsgUpdate");
    QTRY_COMPARE(display.clients.size(), 2U);
    QCOMPARE(display.openAtNewConnection, 0);
    // The request went out whole, and the monitor goes on after it.
    QTRY_COMPARE(display.clients.size(), 3U);
    QCOMPARE(display.openAtNewConnection, 0);
    QTRY_COMPARE(display.received.size(), 12 + 18 + 12);
    QVERIFY(editor.messages.shown.empty());
}

void DisplayMonitorTest::readsAgainOnceTheButtonsAreEnabled() {
    SilentDisplay display;
    const MonitoringEditor editor(display.port());
    TcpTesterPage& tester = editor.window->testerPage();
    const auto setButtons = [&tester](bool enabled) {
        for (const UpdateButton button : {UpdateButton::btnEmgMsgUpdate, UpdateButton::btnRegMsgUpdate,
                                          UpdateButton::cmdUpdateReg, UpdateButton::cmdUpdateCoil})
            tester.setEnabled(button, enabled);
    };
    setButtons(false);
    editor.click("btnMonitorStart");
    QVERIFY(editor.window->findChild<MonitorPanel*>()->monitor().isRunning());
    // Whoever connects now is heard before any connection that a queued event might bring.
    QTcpSocket other;
    other.connectToHost(QHostAddress::LocalHost, display.port());
    QTRY_COMPARE(display.clients.size(), 1U);
    setButtons(true);
    QTRY_COMPARE(display.clients.size(), 2U);
    QTRY_COMPARE(display.received.size(), 12);
}

void DisplayMonitorTest::takesTheDisplaysMessagesIntoTheTester() {
    const SimulatorProcess display;
    const MonitoringEditor editor(display.modbusPort());
    writeToDisplay(at(display.modbusPort()),
                   switchWrites(editor.project, {"STDMSG3", "STDMSG40", "ALTMSG1"}, {}));
    editor.showPage("C5");
    editor.click("chkRegMsg(0)");
    editor.click("btnMonitorStart");
    QTRY_VERIFY(editor.find<QPushButton>("btnMonitorTake")->isEnabled());
    QVERIFY(editor.isChecked("chkRegMsg(0)"));
    editor.click("btnMonitorTake");
    QVERIFY(!editor.isChecked("chkRegMsg(0)"));
    for (int box = 1; box < 40; ++box)
        QCOMPARE(editor.isChecked(qPrintable(QStringLiteral("chkRegMsg(%1)").arg(box))),
                 box == 2 || box == 39);
    for (int box = 0; box < 20; ++box)
        QCOMPARE(editor.isChecked(qPrintable(QStringLiteral("chkEmergMsg(%1)").arg(box))), box == 0);
}

void DisplayMonitorTest::thePreviewMayShowWhatTheDisplayHoldsWhileItIsRead() {
    const SimulatorProcess display;
    MonitoringEditor editor(display.modbusPort());
    editor.project.STDMSG[0] = "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nACT STILL 1000";
    writeToDisplay(at(display.modbusPort()), assignedWrites({"RegVar1=12.5"}, &editor.project));
    editor.showMessage("R1");
    auto* const list = editor.find<QComboBox>("cboPreviewValues");
    const int held = list->findText(QStringLiteral("As the Display Has It"));
    const auto canBeChosen = [list, held] {
        return list->model()->flags(list->model()->index(held, 0)).testFlag(Qt::ItemIsEnabled);
    };
    const auto shown = [&editor] { return editor.find<PanelView>("panelPreview")->accessibleDescription(); };
    QVERIFY(!canBeChosen());
    editor.click("btnMonitorStart");
    QTRY_VERIFY(editor.find<QPushButton>("btnMonitorTake")->isEnabled());
    QVERIFY(canBeChosen());
    list->setCurrentIndex(held);
    QCOMPARE(shown(), QStringLiteral("12.500"));
    writeToDisplay(at(display.modbusPort()), assignedWrites({"RegVar1=-7"}, &editor.project));
    QTRY_COMPARE(shown(), QStringLiteral("-7.000"));
    editor.click("btnMonitorStop");
    QVERIFY(!canBeChosen());
    QCOMPARE(list->currentText(), QStringLiteral("Defaults"));
    QCOMPARE(shown(), QStringLiteral("0.000"));
}

void DisplayMonitorTest::aRowLeadsToItsItem() {
    const SimulatorProcess display;
    const MonitoringEditor editor(display.modbusPort());
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.shown().rowCount(), 156);
    editor.shown().enter(QStringLiteral("ALTMSG2"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("ALTMSG2"));
    QVERIFY(editor.find<DeviceTextEdit>("txtMsg")->isVisible());
    editor.shown().enter(QStringLiteral("CoilVar32"));
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("CoilVar32"));
    QVERIFY(editor.find<QWidget>("txtVarName")->isVisible());
}

void DisplayMonitorTest::theRowOfAnItemThatIsNotAppliedSaysSo() {
    const SimulatorProcess display;
    const MonitoringEditor editor(display.modbusPort());
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.shown().rowCount(), 156);
    editor.shown().enter(QStringLiteral("STDMSG3"));
    QTest::keyClicks(editor.find<DeviceTextEdit>("txtMsg"), QStringLiteral("CLEAR"));
    QCOMPARE(editor.row(QStringLiteral("STDMSG3")), QStringLiteral("322|OFF|0000| (not applied)"));
    QCOMPARE(editor.row(QStringLiteral("STDMSG4")), QStringLiteral("323|OFF|0000|"));
    // The first time only says what would be lost.
    editor.shown().enter(QStringLiteral("STDMSG4"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    editor.click("btnMsgApply");
    QCOMPARE(editor.row(QStringLiteral("STDMSG3")), QStringLiteral("322|OFF|0000|"));
    editor.shown().enter(QStringLiteral("STDMSG4"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG4"));
}

void DisplayMonitorTest::stopsOnANewProjectAndOnOpening() {
    const SimulatorProcess display;
    MonitoringEditor editor(display.modbusPort());
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.shown().rowCount(), 156);
    editor.messages.answers.push_back(Answer::No);
    editor.newProject("Other");
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
    editor.trigger("miFileSave");
    editor.click("btnMonitorStart");
    QVERIFY(editor.state() != QStringLiteral("Stopped"));
    editor.openProject("Other");
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
}

void DisplayMonitorTest::stopsOnADownload() {
    const SimulatorProcess display;
    MonitoringEditor editor(display.modbusPort());
    DeviceTransfer transfer(editor.project, editor.window->lifecycle(), editor.chooser, editor.messages,
                            *editor.window, &makeTransferControl);
    editor.window->useTransfer(transfer);
    editor.trigger("miFileSave");
    editor.click("btnMonitorStart");
    QTRY_COMPARE(editor.state(), QStringLiteral("Reading 127.0.0.1 every 0.5 s"));
    // Without a project for the files nothing is downloaded.
    editor.trigger("miLinkDownload");
    QCOMPARE(editor.state(), QStringLiteral("Reading 127.0.0.1 every 0.5 s"));
    // A cancelled connection goes on with what lies in the folder.
    editor.chooser.newProjects.push_back(editor.projectNamed("Fetched"));
    onModal(QStringLiteral("frmConnection"), [](QWidget* dialog) { dialog->close(); });
    editor.trigger("miLinkDownload");
    QVERIFY(allModalsServed());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Fetched*]"));
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
    QVERIFY(!editor.window->findChild<MonitorPanel*>()->monitor().isRunning());
    editor.window.reset();
}

void DisplayMonitorTest::stopsWhenTheWindowCloses() {
    SilentDisplay display;
    MonitoringEditor editor(display.port());
    editor.click("btnMonitorStart");
    QTRY_COMPARE(display.clients.size(), 1U);
    editor.messages.answers.push_back(Answer::No);
    QVERIFY(editor.window->close());
    QVERIFY(!editor.window->findChild<MonitorPanel*>()->monitor().isRunning());
    QTRY_COMPARE(display.clients.front()->state(), QAbstractSocket::UnconnectedState);
}

void DisplayMonitorTest::stopsWithoutAProjectAndWithoutItsWindow() {
    Watched watched;
    QVERIFY(watched.panel.monitor().isRunning());
    watched.panel.setEnabled(false);
    QVERIFY(!watched.panel.monitor().isRunning());
    watched.panel.setEnabled(true);
    QVERIFY(!watched.panel.monitor().isRunning());
    watched.shown.find<QPushButton>("btnMonitorStart")->click();
    QVERIFY(watched.panel.monitor().isRunning());
    watched.panel.hide();
    QVERIFY(!watched.panel.monitor().isRunning());
}

void DisplayMonitorTest::aRowNamesItsPlace() {
    Watched watched;
    QSignalSpy chosen(&watched.panel, &ProjectPanel::placeChosen);
    QTRY_VERIFY(watched.shown.rowCount() > 0);
    watched.shown.enter(QStringLiteral("ALTMSG2"));
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.front().front().value<Place>(), (Place{named("ALTMSG2"), 0}));
}

void DisplayMonitorTest::worksByKeyboardAlone() {
    SilentDisplay display;
    const MonitoringEditor editor(display.port());
    auto* const start = editor.find<QPushButton>("btnMonitorStart");
    start->setFocus();
    QTest::keyClick(start, Qt::Key_Return);
    QTRY_COMPARE(display.clients.size(), 1U);
    const auto focused = [&editor] { return editor.window->focusWidget()->objectName(); };
    QCOMPARE(focused(), QStringLiteral("btnMonitorStop"));
    for (const char* next : {"spnMonitorSeconds", "chkMonitorOnlyOn", "tblMonitor"}) {
        QTest::keyClick(editor.window->focusWidget(), Qt::Key_Tab);
        QCOMPARE(focused(), QString::fromLatin1(next));
    }
    auto* const stop = editor.find<QPushButton>("btnMonitorStop");
    stop->setFocus();
    QTest::keyClick(stop, Qt::Key_Return);
    QCOMPARE(editor.state(), QStringLiteral("Stopped"));
    QCOMPARE(focused(), QStringLiteral("btnMonitorStart"));
}

void DisplayMonitorTest::aTechnicianMendsAWrongMessageInTwelveClicks() {
    const SimulatorProcess display({"--transfer-port", QString::number(freeTransferPort())});
    EditorFixture editor;
    editor.modbusPort = display.modbusPort();
    editor.startWithNewProject("Plant");
    editor.type("txtSystemIP", QStringLiteral("127.0.0.1"));
    editor.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Lewel\"\r\nACT STILL 2000";
    editor.trigger("miFileSave");
    DeviceTransfer transfer(editor.project, editor.window->lifecycle(), editor.chooser, editor.messages,
                            *editor.window, &makeTransferControl);
    editor.window->useTransfer(transfer);
    writeToDisplay(at(display.modbusPort()), switchWrites(editor.project, {"STDMSG3"}, {}));
    const Shown shown(*editor.window);
    CountedMouse mouse(editor);

    // Found: it is on, and its text is wrong.
    mouse.choose("mnuView", "miViewMonitor");
    mouse.click("btnMonitorStart");
    QTRY_COMPARE(shown.row(QStringLiteral("STDMSG3")), QStringLiteral("322|ON|0001|Lewel"));
    auto* const rows = editor.find<QTableView>("tblMonitor");
    mouse.doubleClick(rows->viewport(), rows->visualRect(rows->model()->index(2, 0)).center());
    // Changed.
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    auto* const script = editor.find<DeviceTextEdit>("txtMsg");
    QCOMPARE(editor.window->focusWidget(), script);
    QTest::keyClick(script, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(script, QStringLiteral("TEXT 0 0 RED BLACK \"Level\""));
    mouse.click("btnMsgApply");
    // Sent, and verified.
    connectTo(mouse, display.transferPort());
    auto* const bar = editor.window->findChild<QToolBar*>();
    mouse.click(bar->widgetForAction(editor.find<QAction>("UPLOAD")));
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, std::string("All files were successfully uploaded"));
    ++mouse.clicks; // its box
    connectTo(mouse, display.transferPort());
    mouse.choose("mnuTools", "miToolsVerify");
    QVERIFY(allModalsServed());
    QVERIFY(editor.find<QLabel>("lblComparison")->text().contains(QStringLiteral("holds every byte")));
    QVERIFY2(mouse.clicks <= 12, qPrintable(QString::number(mouse.clicks)));
    editor.window.reset();
}

QTEST_MAIN(DisplayMonitorTest)
#include "DisplayMonitorTest.moc"
