#include "link/forms/TesterClient.h"
#include "mainwindow/EditorProgram.h"
#include "mainwindow/TcpTesterPage.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/EnvironmentSetting.h"
#include "tests/support/ModalDriver.h"

#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <QTcpServer>

#include <filesystem>
#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string example = std::string(ORVISTA_EXAMPLES) + "/pumpstation";

/// Stands in for the simulated display: notes its process and arguments, prints what it is told to, and
/// stays.
class StandIn {
public:
    explicit StandIn(const std::string& line = "Modbus/TCP on 127.0.0.1:502",
                     const std::string& command = "sleep 1000") {
        const std::string told = line.empty() ? "" : "echo '" + line + "'\n";
        writeBytes(program(),
                   "#!/bin/sh\necho \"$$ $*\" >>'" + notes() + "'\n" + told + "exec " + command + '\n');
        std::filesystem::permissions(program(), std::filesystem::perms::owner_all);
    }
    std::string program() const { return folder_.file("simulator"); }
    /// A line for each start: its process, and its arguments.
    QStringList starts() const {
        return std::filesystem::exists(notes())
                   ? QString::fromStdString(fileBytes(notes())).split(u'\n', Qt::SkipEmptyParts)
                   : QStringList();
    }
    QString heldBy(int start) const { return starts().at(start).section(QStringLiteral("--root "), 1); }
    /// Not where it has ended and only nobody has asked for its exit code.
    bool runs(int start) const {
        QFile arguments("/proc/" + starts().at(start).section(u' ', 0, 0) + "/cmdline");
        return arguments.open(QIODevice::ReadOnly) && !arguments.readAll().isEmpty();
    }

private:
    std::string notes() const { return folder_.file("notes"); }
    TemporaryFolder folder_;
};

struct TryingEditor : EditorFixture {
    explicit TryingEditor(const std::string& simulator, const std::string& copied = example,
                          const QStringList& options = {}, quint16 port = 1) {
        modbusPort = port;
        const auto chooseFolder = [this](const std::string& caption) {
            captions.push_back(caption);
            return folder;
        };
        tryOut = TryOutSettings{chooseFolder, copied, "PUMPSTATION", QString::fromStdString(simulator),
                                QStringList{"--headless"} + options};
        start();
    }
    void tryIn(const TemporaryFolder& chosen) {
        folder = chosen.path();
        trigger("miToolsTry");
    }

    std::optional<std::string> folder; ///< what the user chooses; nothing: he cancels
    std::vector<std::string> captions;
};

/// For the simulated display itself.
QStringList portOptions(quint16 modbus, quint16 transfer = 0) {
    return {"--modbus-port", QString::number(modbus), "--transfer-port", QString::number(transfer)};
}

/// Variables of a process that is started to be killed: where its user tries the program, and with what.
constexpr const char* toBeKilled = "ORVISTA_TRY_OUT_TEST_FOLDER";
constexpr const char* itsSimulator = "ORVISTA_TRY_OUT_TEST_SIMULATOR";

QString notice(const EditorFixture& editor, const char* name = "lblTryDisplay") {
    const auto* const line = editor.window->findChild<QLabel*>(QLatin1String(name));
    return line && line->isVisible() ? line->text() : QString();
}

} // namespace

class TryOutTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void opensACopyOfTheExampleAtItsFirstMessage();
    void startsADisplayThatHoldsTheExample();
    void theDisplayGoesWithTheEditor();
    void theDisplayEndsWhenItsEditorIsGone();
    void aKilledEditorLeavesNeitherDisplayNorFolder();
    void theEditorThatIsKilled();
    void saysWhatToDoNext();
    void theNextStepGoesOnceItWasTaken();
    void theNextStepGoesWithTheProject();
    void tryingAgainTakesAnotherFolderAndAnotherDisplay();
    void aMessageComesOnAtTheSimulatedDisplay();
    void saysWhatTheSimulatedDisplaySaysOfTakenPorts();
    void saysWhatHelpsWherePort502IsRefused();
    void saysThatThereIsNoSimulator();
    void saysThatThereIsNoRoomForItsFiles();
    void theNextStepGoesWithTheDisplay();
    void saysThatThereIsNoExample();
    void saysWhatHelpsWhereNothingCanBeCopied();
    void withoutAFolderNothingHappens();
    void asksForTheOpenProjectAsOpenDoes();
    void bothEntriesAreAlwaysEnabled();
    void theHelpOpensAtTheShownPage();
    void aNewcomerSeesHisFirstMessageMoveInSixClicks();
};

void TryOutTest::opensACopyOfTheExampleAtItsFirstMessage() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [PUMPSTATION]"));
    QCOMPARE(editor.project.ProjPath, folder.file("pumpstation"));
    QVERIFY(!editor.project.modified);
    QCOMPARE(fileBytes(folder.file("pumpstation/PUMPSTATION.orx")), fileBytes(example + "/PUMPSTATION.orx"));
    QCOMPARE(fileBytes(folder.file("pumpstation/pump.bmp")), fileBytes(example + "/pump.bmp"));
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG1"));
    QVERIFY(editor.find<QPlainTextEdit>("txtMsg")->isVisible());
    QVERIFY(editor.find<QWidget>("btnPreviewPlay")->isEnabled());
    QVERIFY(editor.messages.shown.empty());
    QTRY_COMPARE(simulator.starts().size(), 1);
}

void TryOutTest::startsADisplayThatHoldsTheExample() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    QTRY_COMPARE(simulator.starts().size(), 1);
    QVERIFY(simulator.starts()[0].contains(
        QStringLiteral(" --headless --until-input-ends --remove-root --beside ")));
    const std::string held = simulator.heldBy(0).toStdString();
    QCOMPARE(fileBytes(held + "/stdmsg.ilm"), fileBytes(example + "/stdmsg.ilm"));
    // What it is sent does not end in the project.
    QVERIFY(!simulator.heldBy(0).startsWith(QString::fromStdString(folder.path())));
    QVERIFY(notice(editor).isEmpty());
}

void TryOutTest::theDisplayGoesWithTheEditor() {
    const StandIn simulator;
    const TemporaryFolder folder;
    {
        TryingEditor editor(simulator.program());
        editor.tryIn(folder);
        QTRY_COMPARE(simulator.starts().size(), 1);
        QVERIFY(simulator.runs(0));
    }
    QVERIFY(!simulator.runs(0));
    QVERIFY(!std::filesystem::exists(simulator.heldBy(0).toStdString()));
}

void TryOutTest::theDisplayEndsWhenItsEditorIsGone() {
    const TemporaryFolder folder;
    QProcess display;
    display.start(ORVISTA_SIMULATOR, QStringList{"--headless", "--until-input-ends", "--root",
                                                 QString::fromStdString(folder.path())} +
                                         portOptions(0));
    QVERIFY(display.waitForReadyRead(20'000));
    QCOMPARE(display.state(), QProcess::Running);
    display.closeWriteChannel(); // as the system does for an editor that was killed
    QVERIFY(display.waitForFinished(20'000));
    QCOMPARE(display.exitCode(), 0);
}

void TryOutTest::aKilledEditorLeavesNeitherDisplayNorFolder() {
    const StandIn simulator("", "'" ORVISTA_SIMULATOR "' \"$@\"");
    const TemporaryFolder folder;
    const TemporaryFolder temporary;
    QProcess editor;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", QString::fromStdString(temporary.path()));
    environment.insert(toBeKilled, QString::fromStdString(folder.path()));
    environment.insert(itsSimulator, QString::fromStdString(simulator.program()));
    editor.setProcessEnvironment(environment);
    editor.start(QCoreApplication::applicationFilePath(), {"theEditorThatIsKilled"});
    QTRY_COMPARE_WITH_TIMEOUT(simulator.starts().size(), 1, 60'000);
    QVERIFY(simulator.runs(0));
    QVERIFY(QDir(simulator.heldBy(0)).exists("stdmsg.ilm"));
    editor.kill();
    QVERIFY(editor.waitForFinished());
    QTRY_VERIFY_WITH_TIMEOUT(!simulator.runs(0), 60'000);
    QVERIFY(!QDir(simulator.heldBy(0)).exists());
}

void TryOutTest::theEditorThatIsKilled() {
    if (!qEnvironmentVariableIsSet(toBeKilled))
        return; // a process of its own, which the test before starts
    TryingEditor editor(qgetenv(itsSimulator).toStdString(), example, portOptions(0));
    editor.folder = qgetenv(toBeKilled).toStdString();
    editor.trigger("miToolsTry");
    QTest::qWait(60'000);
}

void TryOutTest::saysWhatToDoNext() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    QCOMPARE(notice(editor, "lblGoThere"),
             QStringLiteral("Tick a message on the TCP Tester page and press Update"));
    QCOMPARE(editor.find<QPushButton>("btnGoThere")->text(), QStringLiteral("Go There"));
    editor.click("btnGoThere");
    QVERIFY(editor.find<QWidget>("btnRegMsgUpdate")->isVisible());
}

void TryOutTest::theNextStepGoesOnceItWasTaken() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    editor.showPage("C5");
    editor.click("chkRegMsg(0)");
    QVERIFY(!notice(editor, "lblGoThere").isEmpty());
    editor.click("btnRegMsgUpdate");
    QVERIFY(notice(editor, "lblGoThere").isEmpty());
}

void TryOutTest::theNextStepGoesWithTheProject() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    editor.showPage("C1");
    editor.type("txtSystemIP", QStringLiteral("127.0.0.2"));
    editor.trigger("miFileSave");
    QVERIFY(!notice(editor, "lblGoThere").isEmpty());
    editor.newProject("Line3");
    QVERIFY(notice(editor, "lblGoThere").isEmpty());
}

void TryOutTest::tryingAgainTakesAnotherFolderAndAnotherDisplay() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    QTRY_COMPARE(simulator.starts().size(), 1);
    editor.tryIn(folder);
    QTRY_COMPARE(simulator.starts().size(), 2);
    QCOMPARE(editor.project.ProjPath, folder.file("pumpstation 2"));
    QVERIFY(!simulator.runs(0));
    QVERIFY(simulator.runs(1));
}

void TryOutTest::aMessageComesOnAtTheSimulatedDisplay() {
    QTcpServer modbus;
    QVERIFY(modbus.listen(QHostAddress::LocalHost));
    const quint16 port = modbus.serverPort();
    modbus.close();
    const TemporaryFolder folder;
    TryingEditor editor(ORVISTA_SIMULATOR, example, portOptions(port), port);
    TesterClient client(editor.project, editor.window->testerPage(), editor.messages, port);
    editor.window->testerPage().useActions(client);
    editor.tryIn(folder);
    editor.trigger("miViewMonitor");
    editor.find<QDoubleSpinBox>("spnMonitorSeconds")->setValue(0.5);
    editor.click("btnMonitorStart");
    const auto* const state = editor.find<QLabel>("lblMonitorState");
    QTRY_VERIFY_WITH_TIMEOUT(state->text().startsWith(QStringLiteral("Reading 127.0.0.1 every 0.5 s")),
                             20'000);
    const auto firstMessage = [&editor] {
        const QAbstractItemModel& rows = *editor.find<QTableView>("tblMonitor")->model();
        return rows.index(0, 0).data().toString() + u' ' + rows.index(0, 3).data().toString();
    };
    QCOMPARE(firstMessage(), QStringLiteral("STDMSG1 OFF"));
    editor.showPage("C5");
    editor.click("chkRegMsg(0)");
    editor.click("btnRegMsgUpdate");
    QTRY_COMPARE(firstMessage(), QStringLiteral("STDMSG1 ON"));
    QVERIFY(notice(editor).isEmpty());
    QVERIFY(editor.messages.shown.empty());
}

void TryOutTest::saysWhatTheSimulatedDisplaySaysOfTakenPorts() {
    QTcpServer modbus;
    QTcpServer transfer;
    QVERIFY(modbus.listen(QHostAddress::LocalHost) && transfer.listen(QHostAddress::LocalHost));
    const TemporaryFolder folder;
    TryingEditor editor(ORVISTA_SIMULATOR, example, portOptions(modbus.serverPort(), transfer.serverPort()));
    editor.tryIn(folder);
    QTRY_VERIFY_WITH_TIMEOUT(
        notice(editor).startsWith(
            QStringLiteral("The test page cannot reach the simulated display. Modbus/TCP "
                           "not available on 127.0.0.1:%1: ")
                .arg(modbus.serverPort())),
        20'000);
    QTRY_VERIFY(notice(editor, "lblTryTransfer")
                    .startsWith(QStringLiteral("Upload and Download cannot reach the simulated display. File "
                                               "transfer not available on 127.0.0.1:%1: ")
                                    .arg(transfer.serverPort())));
    QVERIFY(notice(editor, "lblGoThere").isEmpty()); // the test page would not work
    editor.newProject("Line3");                      // which has another display
    QVERIFY(notice(editor).isEmpty());
    QVERIFY(notice(editor, "lblTryTransfer").isEmpty());
}

void TryOutTest::saysWhatHelpsWherePort502IsRefused() {
    const StandIn simulator("Modbus/TCP not available on 127.0.0.1:502: refused. This helps");
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    QTRY_COMPARE(
        notice(editor),
        QStringLiteral("The test page cannot reach the simulated display. Modbus/TCP not available on "
                       "127.0.0.1:502: refused. This helps"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [PUMPSTATION]"));
}

void TryOutTest::saysThatThereIsNoSimulator() {
    const TemporaryFolder folder;
    TryingEditor editor(folder.file("none"));
    editor.tryIn(folder);
    QTRY_COMPARE(notice(editor), QStringLiteral("The simulated display cannot be started: ") +
                                     QString::fromStdString(folder.file("none")));
    QVERIFY(notice(editor, "lblGoThere").isEmpty());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [PUMPSTATION]"));
}

void TryOutTest::saysThatThereIsNoRoomForItsFiles() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    {
        const EnvironmentSetting setting("TMPDIR", folder.file("none"));
        editor.tryIn(folder);
    }
    QVERIFY2(
        notice(editor).startsWith("The simulated display cannot be started: the folder for temporary files"),
        qPrintable(notice(editor)));
    QVERIFY(notice(editor, "lblGoThere").isEmpty());
    QVERIFY(editor.messages.shown.empty());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [PUMPSTATION]"));
}

void TryOutTest::theNextStepGoesWithTheDisplay() {
    const TemporaryFolder folder;
    const StandIn simulator({}, "true");
    TryingEditor editor(simulator.program());
    editor.tryIn(folder);
    QTRY_VERIFY(notice(editor, "lblGoThere").isEmpty());
}

void TryOutTest::saysThatThereIsNoExample() {
    const TemporaryFolder folder;
    const StandIn simulator;
    const TemporaryFolder programFolder;
    TryingEditor editor(simulator.program(), programFolder.file("examples"));
    editor.tryIn(folder);
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QVERIFY(editor.messages.shown[0].text.find(programFolder.file("examples")) != std::string::npos);
    QVERIFY(std::filesystem::is_empty(folder.path()));
}

void TryOutTest::saysWhatHelpsWhereNothingCanBeCopied() {
    const StandIn simulator;
    const TemporaryFolder folder;
    writeBytes(folder.file("file"), "no folder");
    TryingEditor editor(simulator.program());
    editor.folder = folder.file("file");
    editor.trigger("miToolsTry");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    const QString text = QString::fromStdString(editor.messages.shown[0].text);
    QVERIFY2(text.startsWith("Unable to copy the example into " + QString::fromStdString(*editor.folder)),
             qPrintable(text));
    QVERIFY2(text.endsWith("Choose a folder that you may write to, on a disk that is not full."),
             qPrintable(text));
}

void TryOutTest::withoutAFolderNothingHappens() {
    const StandIn simulator;
    TryingEditor editor(simulator.program());
    editor.newProject("Line3");
    editor.trigger("miToolsTry");
    QCOMPARE(editor.captions, std::vector<std::string>{"Choose a folder for a copy of the example"});
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    QVERIFY(simulator.starts().empty());
}

void TryOutTest::asksForTheOpenProjectAsOpenDoes() {
    const StandIn simulator;
    const TemporaryFolder folder;
    TryingEditor editor(simulator.program());
    editor.newProject("Line3");
    editor.messages.answers.push_back(Answer::Yes);
    editor.tryIn(folder);
    QCOMPARE(editor.messages.asked,
             std::vector<std::string>{"Do you want to save current project before open new one?"});
    QVERIFY(std::filesystem::exists(editor.projectFolder.file("Line3.orx")));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [PUMPSTATION]"));
}

void TryOutTest::bothEntriesAreAlwaysEnabled() {
    EditorFixture editor;
    editor.start();
    QVERIFY(editor.enabled("miToolsTry"));
    QVERIFY(editor.enabled("miToolsPageHelp"));
    editor.newProject("Line3");
    QVERIFY(editor.enabled("miToolsTry"));
    QVERIFY(editor.enabled("miToolsPageHelp"));
}

void TryOutTest::theHelpOpensAtTheShownPage() {
    EditorFixture editor;
    editor.startWithNewProject();
    const std::string help = editor.programFolder.file("OR102.chm ");
    std::vector<std::string> expected;
    for (const auto& [key, page] :
         {std::pair("C1", "system.html"), std::pair("C2", "modbus-setting.html"),
          std::pair("C3", "variable-list.html"), std::pair("C4", "message-list.html"),
          std::pair("C5", "tcp-tester.html")}) {
        editor.showPage(key);
        editor.trigger("miToolsPageHelp");
        expected.push_back(help + page);
        QCOMPARE(editor.help.openedPages, expected);
        QVERIFY(std::filesystem::exists(std::string(ORVISTA_HELP) + "/" + page));
    }
}

void TryOutTest::aNewcomerSeesHisFirstMessageMoveInSixClicks() {
    const StandIn simulator;
    const TemporaryFolder home;
    const TemporaryFolder programFolder;
    std::filesystem::create_directory(programFolder.file("examples"));
    std::filesystem::copy(example, programFolder.file("examples/pumpstation"));
    std::filesystem::copy(simulator.program(), programFolder.file("lx400d-simulator"));
    qputenv("HOME", QByteArray::fromStdString(home.path()));

    int clicks = 0;
    const auto click = [&clicks](QWidget* widget, QPoint at = {5, 5}) {
        ++clicks;
        QTest::mouseClick(widget, Qt::LeftButton, {}, at);
    };
    EditorProgram editor(programFolder.path());
    onModal(QStringLiteral("frmStartup"), [&](QWidget* dialog) {
        ++clicks; // on the frame
        dialog->close();
    });
    editor.window().show();
    QTRY_VERIFY(allModalsServed());
    onModal(QStringLiteral("frmSelDir"),
            [&](QWidget* dialog) { click(dialog->findChild<QPushButton*>(QStringLiteral("btnOK"))); });
    auto* const tools = editor.window().findChild<QMenu*>(QStringLiteral("mnuTools"));
    QMenuBar* const bar = editor.window().menuBar();
    click(bar, bar->actionGeometry(tools->menuAction()).center());
    QTRY_VERIFY(tools->isVisible());
    auto* const entry = editor.window().findChild<QAction*>(QStringLiteral("miToolsTry"));
    click(tools, tools->actionGeometry(entry).center());
    QTRY_VERIFY(allModalsServed());
    QVERIFY(std::filesystem::exists(home.file("pumpstation/PUMPSTATION.orx")));

    const auto* const moment = editor.window().findChild<QSlider*>(QStringLiteral("sldPreviewTime"));
    const int before = moment->value();
    click(editor.window().findChild<QWidget*>(QStringLiteral("btnPreviewPlay")));
    QTRY_VERIFY(moment->value() != before);
    QVERIFY2(clicks <= 6, qPrintable(QString::number(clicks)));
    QTRY_COMPARE(simulator.starts().size(), 1);
}

QTEST_MAIN(TryOutTest)
#include "TryOutTest.moc"
