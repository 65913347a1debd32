#include "compare/DisplayContents.h"
#include "items/AcceptanceCopy.h"
#include "items/AcceptanceFile.h"
#include "link/TransferCommands.h"
#include "link/forms/ModbusExchange.h"
#include "mainwindow/RecoveryFolder.h"
#include "model/FolderCopy.h"
#include "simulator/SimulatedDevice.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/PanelView.h"
#include "widgets/RowsTable.h"

#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

const QString addressOfDisplay = QStringLiteral("127.0.0.1");

/// Hands out the files of a folder as those of the display.
class FilesFrom final : public TransferCommands {
public:
    void upload() override {}
    FetchedDisplay download() override { return {}; }
    FetchedDisplay fetch(const std::string& title, const std::string& folder) override {
        titles.push_back(title);
        copyFiles(source, folder);
        return {FetchedDisplay::End::Fetched, "127.0.0.1:7000", {}, "127.0.0.1"};
    }
    std::string source;
    std::vector<std::string> titles;
};

/// An editor with three messages beside a display that holds them, and a second client of that display.
struct AcceptingEditor : EditorFixture {
    /// \param before the start
    explicit AcceptingEditor(const std::function<void(AcceptingEditor&)>& before = [](AcceptingEditor&) {}) {
        recovery.folder = QString::fromStdString(copies.path());
        before(*this);
        startDisplay(0);
        modbusPort = device->modbus().port();
        startWithNewProject("Plant");
        type("txtSystemIP", addressOfDisplay);
        project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"One\"\r\nACT STILL 2000";
        project.STDMSG[1] =
            "CLEAR\r\nDISPVAR 0 0 RED BLACK RegVar1\r\nDISPVARS 60 0 RED BLACK CoilVar1\r\nACT STILL 2000";
        project.ALTMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Fire\"\r\nACT STILL 2000";
        project.DigitalInput = 500;
        trigger("miFileSave");
        transfer.source = project.ProjPath;
        copyFiles(transfer.source, root.path());
        device->loadFiles();
        window->useTransfer(transfer);
        other.setDisplay("127.0.0.1", modbusPort);
    }
    ~AcceptingEditor() { window.reset(); }

    void startDisplay(quint16 port) {
        DeviceSettings settings;
        settings.modbusPort = port;
        settings.root = root.path();
        device.emplace(settings, Faults());
        QVERIFY(device->startModbus());
    }
    bool isOn(Item item) const { return device->memory().coil(addressOf(project, item)); }
    /// The coils that are on, by name.
    QString on() const {
        QStringList names;
        for (const DisplayItem& item : displayItems(project))
            if (!item.isFloat() && isOn(item.item))
                names << QString::fromStdString(item.name());
        return names.join(u' ');
    }
    void otherSwitches(Item item, bool on) {
        other.ask(coilRequest(static_cast<std::uint16_t>(addressOf(project, item)), on));
        QTRY_VERIFY(!other.isAsking());
        QCOMPARE(isOn(item), on);
    }
    std::string resultPath() const { return projectFolder.file("Plant-accepted.json"); }
    void chooseResult() const {
        onModal(QStringLiteral("comdlg"), [this](QWidget* dialog) {
            auto* const files = qobject_cast<QFileDialog*>(dialog);
            QCOMPARE(QFileInfo(files->selectedFiles().value(0)).fileName(),
                     QStringLiteral("Plant-accepted.json"));
            files->selectFile(QString::fromStdString(resultPath()));
            QMetaObject::invokeMethod(files, "accept");
        });
    }
    Acceptance result() const { return readAcceptanceFile(resultPath()).acceptance.value(); }
    QStringList keptCopies() const {
        return QDir(recovery.folder).entryList({QStringLiteral("*.acceptance")});
    }

    TemporaryFolder copies;
    TemporaryFolder root;
    std::optional<SimulatedDevice> device;
    FilesFrom transfer;
    ModbusExchange other;
};

/// The dialog `frmAccept`, and who sits before it.
struct Person {
    explicit Person(QWidget* dialog) : dialog(dialog) {}
    template <typename Widget>
    Widget* find(const char* name) const {
        return dialog->findChild<Widget*>(QString::fromLatin1(name));
    }
    bool can(const char* button) const { return find<QPushButton>(button)->isEnabled(); }
    void press(const char* button) const {
        QTRY_VERIFY2(can(button), button);
        QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton);
    }
    QString state() const { return find<QLabel>("lblAcceptState")->text(); }
    void awaitMessage(const AcceptingEditor& editor, const QString& names) const {
        QTRY_COMPARE(editor.on(), names);
        QTRY_VERIFY(can("btnAcceptGood"));
    }
    QStringList row(int row) const {
        QStringList cells;
        const auto* const model = find<RowsTable>("tblAccept")->model();
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data().toString();
        return cells;
    }
    QWidget* dialog;
};

/// Opens the dialog and begins, then lets `act` go on.
void accept(AcceptingEditor& editor, const std::function<void(const Person&)>& act) {
    onModal(QStringLiteral("frmAccept"), [&editor, act](QWidget* dialog) {
        const Person person(dialog);
        editor.chooseResult();
        person.press("btnAcceptStart");
        act(person);
    });
    editor.trigger("miToolsAccept");
    QVERIFY(allModalsServed());
}

} // namespace

class AcceptanceTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void showsTheMessagesOneAfterTheOther();
    void doesNotBeginWhereTheDisplayHoldsSomethingElse();
    void sayWhatItWillDoToThePlant();
    void doesNotBeginWhileAnEmergencyMessageIsOn();
    void endsWhenAnEmergencyMessageComesOn();
    void writesTheWidestValuesAndPutsThemBack();
    void whatOthersSwitchIsNamedAndStays();
    void escapePutsBackFirst();
    void goesBackToTheMessageBefore();
    void aDisplayThatRefusesEndsIt();
    void whatADeadDisplayKeepsIsOfferedAndPutBack();
    void whatWasCutOffIsOfferedForAnHour();
    void aResultThatCannotBeWrittenIsSaid();
    void switchesNothingThatCannotBeKept();
    void isNotBegunTwice();
    void worksByKeyboardAlone();
};

void AcceptanceTest::showsTheMessagesOneAfterTheOther() {
    AcceptingEditor editor;
    editor.otherSwitches({Kind::Regular, 8}, true);
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QCOMPARE(editor.keptCopies().size(), 1);
        QCOMPARE(person.find<QLabel>("lblAcceptMessage")->text(),
                 QStringLiteral("The display should show STDMSG1:"));
        QTRY_COMPARE(person.find<PanelView>("acceptPanel")->shown(), editor.device->raster());
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        QCOMPARE(editor.result().messages.size(), std::size_t{1}); // whole after each message
        person.find<QLineEdit>("txtAcceptRemark")->setText(QStringLiteral("the 1 is missing"));
        person.press("btnAcceptBad");
        person.awaitMessage(editor, QStringLiteral("ALTMSG3"));
        person.press("btnAcceptSkip");
        QTRY_COMPARE(person.state(),
                     QStringLiteral("1 as shown, 1 wrong, 1 skipped. Everything else is as it was before."));
        QCOMPARE(person.row(1).mid(3),
                 (QStringList{QStringLiteral("wrong"), QStringLiteral("the 1 is missing")}));
        QCOMPARE(editor.on(), QStringLiteral("STDMSG9"));
        person.press("btnCancel");
    });
    QVERIFY(editor.keptCopies().isEmpty());
    QCOMPARE(editor.transfer.titles, std::vector<std::string>{"Accept at the Display"});
    const Acceptance result = editor.result();
    QCOMPARE(result.fingerprint, fingerprint(DisplayContents::ofUpload(editor.project)));
    QCOMPARE(result.address, std::string("127.0.0.1"));
    QCOMPARE(result.messages.size(), std::size_t{3});
    QCOMPARE(result.messages[1].message, Item(Kind::Regular, 1));
    QCOMPARE(result.messages[1].result, SeenResult::Wrong);
    QCOMPARE(result.messages[1].remark, std::string("the 1 is missing"));
    QVERIFY(editor.messages.shown.empty());
}

void AcceptanceTest::doesNotBeginWhereTheDisplayHoldsSomethingElse() {
    AcceptingEditor editor;
    editor.project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Eins\"\r\nACT STILL 2000";
    editor.window->lifecycle().SetModified(true);
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.notice(),
             QStringLiteral("127.0.0.1:7000 does not hold what this project sends. Upload it first."));
    QVERIFY(editor.find<QTableView>("tblComparison")->isVisible());
    QCOMPARE(editor.on(), QString());
}

void AcceptanceTest::sayWhatItWillDoToThePlant() {
    AcceptingEditor editor;
    onModal(QStringLiteral("frmAccept"), [](QWidget* dialog) {
        const Person person(dialog);
        QCOMPARE(person.find<QLabel>("lblAcceptWarning")->text(),
                 QStringLiteral(
                     "While this runs, messages of this display are switched. A PLC that writes the same "
                     "coils will interfere."));
        QCOMPARE(person.state(), QStringLiteral("3 message(s) are ticked."));
        dialog->close();
    });
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.on(), QString());
}

void AcceptanceTest::doesNotBeginWhileAnEmergencyMessageIsOn() {
    AcceptingEditor editor;
    editor.otherSwitches({Kind::Emergency, 0}, true);
    accept(editor, [&](const Person& person) {
        QTRY_VERIFY(person.state().startsWith(
            QStringLiteral("Ended: ALTMSG1 is on: nothing is switched while an emergency message is on.")));
        QCOMPARE(editor.on(), QStringLiteral("ALTMSG1"));
        person.press("btnCancel");
    });
}

void AcceptanceTest::endsWhenAnEmergencyMessageComesOn() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        editor.otherSwitches({Kind::Emergency, 7}, true);
        QTRY_VERIFY2(
            person.state().contains(QStringLiteral("Ended: ALTMSG8 came on, which was not switched here.")),
            qPrintable(person.state()));
        QTRY_COMPARE(editor.on(), QStringLiteral("ALTMSG8"));
        person.press("btnCancel");
    });
}

void AcceptanceTest::writesTheWidestValuesAndPutsThemBack() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QVERIFY(!person.can("btnAcceptWidest")); // it has no variables
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        person.press("btnAcceptWidest");
        QTRY_COMPARE(editor.device->memory().floatAt(addressOf(editor.project, {Kind::Float, 0})), -99.999F);
        QTRY_VERIFY(person.can("btnAcceptGood"));
        QTRY_COMPARE(person.find<PanelView>("acceptPanel")->shown(), editor.device->raster());
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("ALTMSG3"));
        QCOMPARE(editor.device->memory().floatAt(addressOf(editor.project, {Kind::Float, 0})), 0.0F);
        person.press("btnAcceptStop");
        QTRY_COMPARE(editor.on(), QString());
        person.press("btnCancel");
    });
}

void AcceptanceTest::whatOthersSwitchIsNamedAndStays() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        editor.otherSwitches({Kind::Regular, 19}, true);
        editor.otherSwitches({Kind::Boolean, 3}, true);
        QTRY_VERIFY(person.state().contains(
            QStringLiteral("Changed by others, and left to them: CoilVar4, STDMSG20.")));
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("STDMSG2 STDMSG20 CoilVar4"));
        person.press("btnAcceptStop");
        QTRY_COMPARE(editor.on(), QStringLiteral("STDMSG20 CoilVar4"));
        person.press("btnCancel");
    });
}

void AcceptanceTest::escapePutsBackFirst() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QTest::keyClick(person.dialog, Qt::Key_Escape);
        QVERIFY(person.dialog->isVisible());
    });
    QCOMPARE(editor.on(), QString());
}

void AcceptanceTest::goesBackToTheMessageBefore() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QVERIFY(!person.can("btnAcceptBack"));
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        person.press("btnAcceptBack");
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        person.press("btnAcceptBad");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        QCOMPARE(editor.result().messages.size(), std::size_t{1});
        QCOMPARE(editor.result().messages[0].result, SeenResult::Wrong);
        QTest::keyClick(person.dialog, Qt::Key_Escape);
    });
}

void AcceptanceTest::aDisplayThatRefusesEndsIt() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        Faults faults;
        faults.modbus = ModbusFault::Exception;
        editor.device->setFaults(faults);
        QTRY_VERIFY(person.state().contains(QStringLiteral("exception 4, server device failure")));
        editor.device->setFaults(Faults());
        QTRY_COMPARE(editor.on(), QString());
        QTRY_VERIFY(person.state().endsWith(QStringLiteral("Everything else is as it was before.")));
        person.press("btnCancel");
    });
}

void AcceptanceTest::whatADeadDisplayKeepsIsOfferedAndPutBack() {
    AcceptingEditor editor;
    accept(editor, [&](const Person& person) {
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        Faults faults;
        faults.modbus = ModbusFault::Refuse;
        editor.device->setFaults(faults);
        person.press("btnAcceptGood");
        QTRY_VERIFY_WITH_TIMEOUT(person.state().contains(QStringLiteral("Not put back: STDMSG1.")), 15'000);
        person.press("btnCancel");
    });
    QCOMPARE(editor.keptCopies().size(), 1);
    editor.device->setFaults(Faults());
    QCOMPARE(editor.find<QLabel>("lblCutOff")->text(),
             QStringLiteral("Acceptance at 127.0.0.1 was cut off just now…"));
    onModal(QStringLiteral("frmPutBack"), [&](QWidget* dialog) {
        const Person person(dialog);
        QTRY_COMPARE(person.find<QPlainTextEdit>("txtPutBack")->toPlainText(),
                     QStringLiteral("STDMSG1: ON now, OFF before"));
        QCOMPARE(editor.on(), QStringLiteral("STDMSG1"));
        person.press("btnPutBack");
        QTRY_COMPARE(person.find<QLabel>("lblPutBack")->text(),
                     QStringLiteral("Nothing is left to be put back at 127.0.0.1."));
        person.press("btnCancel");
    });
    editor.click("btnCutOff");
    QCOMPARE(editor.on(), QString());
    QVERIFY(editor.keptCopies().isEmpty());
}

/// \param minutes since it was cut off
void leaveCutOff(const AcceptingEditor& editor, int minutes) {
    RecoveryFolder folder(editor.recovery.folder, RecoveryFolder::acceptances);
    QVERIFY(folder.write(acceptanceCopy({"127.0.0.1", displayItems(Project()), {{0, {0, 0}, {1, 0}}}})));
    folder.abandon();
    QFile copy(QDir(editor.recovery.folder).filePath(editor.keptCopies().value(0)));
    QVERIFY(copy.open(QIODevice::ReadWrite));
    QVERIFY(copy.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutes - 5),
                             QFileDevice::FileModificationTime));
}

void AcceptanceTest::whatWasCutOffIsOfferedForAnHour() {
    for (const int minutes : {4, 61}) {
        const AcceptingEditor editor([minutes](const AcceptingEditor& made) { leaveCutOff(made, minutes); });
        const auto* const line = editor.window->findChild<QLabel*>(QStringLiteral("lblCutOff"));
        const QString text = line && line->isVisible() ? line->text() : QString();
        QCOMPARE(text, minutes == 4 ? QStringLiteral("Acceptance at 127.0.0.1 was cut off 4 minutes ago…")
                                    : QString());
    }
}

void AcceptanceTest::aResultThatCannotBeWrittenIsSaid() {
    AcceptingEditor editor;
    QDir(QString::fromStdString(editor.projectFolder.path())).mkdir(QStringLiteral("taken"));
    onModal(QStringLiteral("frmAccept"), [&editor](QWidget* dialog) {
        const Person person(dialog);
        editor.chooseResult();
        person.press("btnAcceptStart");
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QFile::remove(QString::fromStdString(editor.resultPath()));
        QVERIFY(QDir(QString::fromStdString(editor.projectFolder.path()))
                    .mkdir(QStringLiteral("Plant-accepted.json")));
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        QVERIFY2(person.state().contains(QStringLiteral("Plant-accepted.json cannot be written: ")),
                 qPrintable(person.state()));
        QVERIFY(QDir(QString::fromStdString(editor.resultPath())).removeRecursively());
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("ALTMSG3"));
        QCOMPARE(editor.result().messages.size(), std::size_t{2}); // nothing is lost
        QTest::keyClick(person.dialog, Qt::Key_Escape);
    });
    editor.trigger("miToolsAccept");
}

void AcceptanceTest::switchesNothingThatCannotBeKept() {
    AcceptingEditor editor([](AcceptingEditor& made) {
        writeBytes(made.copies.file("file"), "");
        made.recovery.folder = QString::fromStdString(made.copies.file("file")) + QStringLiteral("/below");
    });
    accept(editor, [&](const Person& person) {
        QTRY_VERIFY(person.state().startsWith(
            QStringLiteral("Ended: what is there now cannot be kept, so that nothing is switched.")));
        QCOMPARE(editor.on(), QString());
        person.press("btnCancel");
    });
}

void AcceptanceTest::isNotBegunTwice() {
    AcceptingEditor editor;
    RecoveryFolder another(editor.recovery.folder, RecoveryFolder::acceptances);
    QVERIFY(another.write(acceptanceCopy({"127.0.0.1", displayItems(editor.project), {}})));
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.notice(),
             QStringLiteral("Another window of the program is at an acceptance at 127.0.0.1."));
}

void AcceptanceTest::worksByKeyboardAlone() {
    AcceptingEditor editor;
    onModal(QStringLiteral("frmAccept"), [&editor](QWidget* dialog) {
        const Person person(dialog);
        QCOMPARE(dialog->focusWidget()->objectName(), QStringLiteral("txtAcceptName"));
        QTest::keyClicks(dialog->focusWidget(), QStringLiteral("J. Weiss"));
        editor.chooseResult();
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        QCOMPARE(dialog->focusWidget()->objectName(), QStringLiteral("btnAcceptGood"));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        QCOMPARE(dialog->focusWidget()->objectName(), QStringLiteral("btnAcceptBad"));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
        person.awaitMessage(editor, QStringLiteral("ALTMSG3"));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape);
    });
    editor.trigger("miToolsAccept");
    QCOMPARE(editor.result().name, std::string("J. Weiss"));
    QCOMPARE(editor.result().messages.size(), std::size_t{2});
    QCOMPARE(editor.on(), QString());
}

QTEST_MAIN(AcceptanceTest)
#include "AcceptanceTest.moc"
