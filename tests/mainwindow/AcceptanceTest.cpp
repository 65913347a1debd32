#include "compare/DisplayContents.h"
#include "display/SettledPage.h"
#include "items/AcceptanceCopy.h"
#include "mainwindow/RecoveryFolder.h"
#include "tests/mainwindow/AcceptingEditor.h"
#include "widgets/PanelView.h"

#include <QPlainTextEdit>

using namespace orvista;
using namespace orvista::testing;

class AcceptanceTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void showsTheMessagesOneAfterTheOther();
    void doesNotBeginWhereTheDisplayHoldsSomethingElse();
    void ofAMasterTheDisplaysOwnProjectIsAccepted();
    void aMasterIsAcceptedAtItsDisplaysOnly();
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
    void anEmergencyMessageIsPutBackWithACaution();
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
        // As large as in the rows, whatever the letters are.
        QVERIFY(person.find<PanelView>("acceptPanel")->width() >=
                person.find<RowsTable>("tblAccept")->columnWidth(2));
        QVERIFY(person.find<QLineEdit>("txtAcceptName")->isReadOnly()); // no cursor
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

/// The editor's project as a master with a line for the display, which holds that line's own project.
struct AcceptingMaster : AcceptingEditor {
    explicit AcceptingMaster(const std::string& row) {
        copyFiles(transfer.source, held.path());
        transfer.source = held.path();
        project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"{tank:3}\"\r\nACT STILL 2000";
        window->lifecycle().SetModified(true);
        trigger("miFileSave");
        writeBytes(projectFolder.file("Plant.notes.json"),
                   R"({"version":1,"master":{"list":"displays.csv"}})");
        writeBytes(projectFolder.file("displays.csv"), "name,address,port,columns,tank\n" + row + "\n");
        openProject("Plant");
    }
    TemporaryFolder held;
};

void AcceptanceTest::ofAMasterTheDisplaysOwnProjectIsAccepted() {
    AcceptingMaster editor("Line 17,127.0.0.1,7000,96,One");
    onModal(QStringLiteral("frmAccept"), [&](QWidget* dialog) {
        const Person person(dialog);
        onModal(QStringLiteral("comdlg"), [&](QWidget* files) {
            auto* const chooser = qobject_cast<QFileDialog*>(files);
            QCOMPARE(QFileInfo(chooser->selectedFiles().value(0)).fileName(),
                     QStringLiteral("Line 17-accepted.json"));
            chooser->selectFile(QString::fromStdString(editor.resultPath()));
            QMetaObject::invokeMethod(chooser, "accept");
        });
        person.press("btnAcceptStart");
        person.awaitMessage(editor, QStringLiteral("STDMSG1"));
        const Project plain;
        const Programme programme =
            programmeOfLine("TEXT 0 0 RED BLACK \"One\"", 1, {96}, fieldFormats(plain), NoBitmaps());
        QTRY_COMPARE(person.find<PanelView>("acceptPanel")->shown(),
                     settledPage(programme, 0, defaultValues(plain)));
        person.press("btnAcceptGood");
        person.awaitMessage(editor, QStringLiteral("STDMSG2"));
        person.press("btnCancel");
    });
    editor.trigger("miToolsAccept");
    QVERIFY(allModalsServed());
    QCOMPARE(editor.result().fingerprint, fingerprint(DisplayContents::ofFolder(editor.held.path())));
}

void AcceptanceTest::aMasterIsAcceptedAtItsDisplaysOnly() {
    for (const auto& [row, notice] :
         {std::pair("Line 17,127.0.0.1,7000,,Off",
                    "Line 17 does not hold what this project sends. Upload it first."),
          std::pair("Line 17,127.0.0.1,7001,,One", "The list of displays has no display at 127.0.0.1:7000"),
          std::pair("Line 17,127.0.0.1,7000,,Sour",
                    "Line 17 cannot have the project: 'Sour' is 4 wide, its place 3")}) {
        AcceptingMaster editor(row);
        editor.trigger("miToolsAccept");
        QCOMPARE(editor.notice(), QString::fromUtf8(notice));
        QCOMPARE(editor.on(), QString());
    }
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
        editor.fail(ModbusFault::Exception);
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
        editor.fail(ModbusFault::Refuse);
        person.press("btnAcceptGood");
        QTRY_VERIFY_WITH_TIMEOUT(person.state().contains(QStringLiteral(
                                     "Not put back: STDMSG1. Close: it is offered to be put back.")),
                                 15'000);
        QVERIFY(!person.can("btnAcceptStart")); // it would take STDMSG1 for what was there before
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

namespace {

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

} // namespace

void AcceptanceTest::whatWasCutOffIsOfferedForAnHour() {
    for (const int minutes : {4, 61}) {
        const AcceptingEditor editor([minutes](const AcceptingEditor& made) { leaveCutOff(made, minutes); });
        const auto* const line = editor.window->findChild<QLabel*>(QStringLiteral("lblCutOff"));
        const QString text = line && line->isVisible() ? line->text() : QString();
        QCOMPARE(text, minutes == 4 ? QStringLiteral("Acceptance at 127.0.0.1 was cut off 4 minutes ago…")
                                    : QString());
    }
}

void AcceptanceTest::anEmergencyMessageIsPutBackWithACaution() {
    AcceptingEditor editor([](const AcceptingEditor& made) {
        Project project;
        project.DigitalInput = 500;
        RecoveryFolder folder(made.recovery.folder, RecoveryFolder::acceptances);
        QVERIFY(folder.write(acceptanceCopy(
            {"127.0.0.1", displayItems(project), {{0, {0, 0}, {1, 0}}, {44, {0, 0}, {1, 0}}}})));
        folder.abandon();
    });
    editor.otherSwitches({Kind::Regular, 0}, true);
    editor.otherSwitches({Kind::Emergency, 4}, true);
    onModal(QStringLiteral("frmPutBack"), [&](QWidget* dialog) {
        const Person person(dialog);
        QTRY_COMPARE(person.find<QLabel>("lblPutBack")->text(),
                     QStringLiteral("The acceptance at 127.0.0.1 was cut off. Others may need ALTMSG5 by "
                                    "now: see first that there is no emergency. What it has switched is to "
                                    "be as before:"));
        person.press("btnCancel");
    });
    editor.click("btnCutOff");
    QCOMPARE(editor.on(), QStringLiteral("STDMSG1 ALTMSG5"));
    QCOMPARE(editor.keptCopies().size(), 1); // offered again
}

void AcceptanceTest::aResultThatCannotBeWrittenIsSaid() {
    AcceptingEditor editor;
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
