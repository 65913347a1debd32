#include "mainwindow/Recovery.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/NamedItem.h"
#include "widgets/DeviceTextEdit.h"

#include <QDir>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>

using namespace orvista;
using namespace orvista::testing;

namespace {

using namespace std::chrono_literals;

/// An editor that keeps its unsaved work in a folder which several of them may share.
struct Editor : EditorFixture {
    /// By default copies are written when the test says so.
    explicit Editor(const TemporaryFolder& data, std::chrono::milliseconds delay = 1h) {
        recovery = {QString::fromStdString(data.path()), delay};
        start();
    }
    QTimer* delay() const { return find<QTimer>("recoveryDelay"); }
    void keep() const { window->recovery().keeper().keepNow(); }
    void typeScript(const char* key, const QString& text) const {
        showMessage(key);
        auto* const box = find<DeviceTextEdit>("txtMsg");
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, text);
    }
    void applyScript(const char* key, const QString& text) const {
        typeScript(key, text);
        click("btnMsgApply");
    }
    bool applyEnabled(const char* button = "btnMsgApply") const {
        return find<QPushButton>(button)->isEnabled();
    }
    std::string script() const { return find<DeviceTextEdit>("txtMsg")->bytes(); }
};

QStringList copiesIn(const TemporaryFolder& data) {
    const QDir folder(QString::fromStdString(data.path()));
    QStringList paths;
    for (const QString& name : folder.entryList({"*.recovery"}, QDir::Files))
        paths << folder.filePath(name);
    return paths;
}

/// The only copy there is.
UnsavedWork copyIn(const TemporaryFolder& data) {
    const QStringList copies = copiesIn(data);
    const auto work = copies.size() == 1 ? RecoveryFolder::read(copies.front()) : std::nullopt;
    if (!work)
        throw std::runtime_error("there is not one copy");
    return *work;
}

/// What an editor leaves that ends without being asked, in this folder.
void leaveWork(const TemporaryFolder& data, const std::string& name) {
    Editor editor(data);
    editor.newProject(name);
    editor.applyScript("R7", "CLEAR applied");
    editor.typeScript("E2", "CLEAR not applied");
    editor.trigger("miFileExit");
}

/// The rows of the dialog, a line each.
QStringList rowsOf(const QWidget* dialog) {
    const auto* const model = dialog->findChild<QTableView*>("tblRestore")->model();
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row)
        rows << model->index(row, 1).data().toString() + u'|' + model->index(row, 2).data().toString();
    return rows;
}

void openFirst(QWidget* dialog) {
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
}

} // namespace

class RecoveryTest : public QObject {
    Q_OBJECT
private slots:
    void aCopyIsDueTwoSecondsAfterTheFirstChange();
    void aCopyIsWrittenByItself();
    void holdsTheModelAndWhatIsNotApplied();
    void theTimerRestsUnderADialogWhichWritesWhatWaits();
    void anUnchangedCopyIsNotWrittenAgain();
    void aCopyThatFailedIsWrittenAtTheNextChange();
    void eightNamesAreToldAndTheOthersCounted();
    void saveRemovesIt();
    void whatASaveLeavesOutIsKept();
    void anEditThatWasTakenBackLeavesNone();
    void closingWithNoRemovesIt();
    void closingWithCancelKeepsIt();
    void newWithNoRemovesIt();
    void exitKeepsWhatWaits();
    void restoresAProjectWithItsTexts();
    void restoresAllThreePages();
    void restoresByKeyboardAlone();
    void nothingToRestoreIsSaid();
    void whatIsThereNeverOpensOrAsksByItself();
    void theDockTellsOnceWhatIsThere();
    void escapeRestoresNothing();
    void aModifiedProjectIsAskedForFirst();
    void aFailedSaveStopsTheRestore();
    void aDamagedCopyChangesNothing();
    void aCopyOfANewerVersionSaysSo();
    void aRowIsRemovedOnceItWasAskedFor();
    void removesByKeyboardAlone();
    void noRemovesNothing();
    void thatNoCopyCanBeKeptIsSaidOnce();
    void theCopyOfARunningEditorIsNotOffered();
    void saveAfterARestoreRemovesTheCopy();
};

void RecoveryTest::aCopyIsDueTwoSecondsAfterTheFirstChange() {
    const TemporaryFolder data;
    Editor editor(data, RecoverySettings().delay);
    editor.newProject("Line3");
    QVERIFY(editor.delay()->isActive());
    QVERIFY(editor.delay()->isSingleShot());
    QCOMPARE(editor.delay()->interval(), 2000);
    // A later change does not put it off: starting a timer again gives it another id.
    const int id = editor.delay()->timerId();
    editor.typeScript("R1", "a");
    QCOMPARE(editor.delay()->timerId(), id);
    QVERIFY(copiesIn(data).empty());
}

void RecoveryTest::aCopyIsWrittenByItself() {
    const TemporaryFolder data;
    Editor editor(data, 1ms);
    editor.newProject("Line3");
    editor.typeScript("R1", "CLEAR typed");
    QTRY_VERIFY(!copiesIn(data).empty() && !copyIn(data).notApplied.empty() &&
                copyIn(data).notApplied.front().texts.front() == "CLEAR typed");
}

void RecoveryTest::holdsTheModelAndWhatIsNotApplied() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.applyScript("R7", "CLEAR applied");
    editor.typeScript("E2", "CLEAR typed");
    editor.showPage("C2");
    editor.type("txtNewAltAddr", "50");
    editor.keep();
    const UnsavedWork work = copyIn(data);
    QCOMPARE(work.project.ProjName, std::string("Line3"));
    QCOMPARE(work.project.ProjPath, editor.projectFolder.path());
    QCOMPARE(work.project.STDMSG[6], std::string("CLEAR applied"));
    QCOMPARE(work.project.ALTMSG[1], std::string("CLEAR"));
    const std::vector<NotAppliedTexts> expected{{named("address map"), {"50", "70", "", ""}},
                                                {named("ALTMSG2"), {"CLEAR typed"}}};
    QCOMPARE(work.notApplied, expected);
}

void RecoveryTest::theTimerRestsUnderADialogWhichWritesWhatWaits() {
    const TemporaryFolder data;
    Editor editor(data, 1h);
    editor.newProject("Line3");
    QVERIFY(copiesIn(data).empty());
    onModal("frmLic", [&](QWidget* dialog) {
        QCOMPARE(copyIn(data).project.ProjName, std::string("Line3"));
        // A change now is written once the dialog is closed.
        editor.project.STDMSG[0] = "CLEAR later";
        editor.window->lifecycle().SetModified(true);
        const QSignalSpy due(editor.delay(), &QTimer::timeout);
        editor.delay()->start(0);
        QTRY_VERIFY(!due.empty());
        editor.delay()->setInterval(1h);
        QCOMPARE(copyIn(data).project.STDMSG[0], std::string("CLEAR"));
        dialog->close();
    });
    editor.trigger("miHelpAbout");
    QVERIFY(allModalsServed());
    QVERIFY(editor.delay()->isActive());
    editor.keep();
    QCOMPARE(copyIn(data).project.STDMSG[0], std::string("CLEAR later"));
}

void RecoveryTest::anUnchangedCopyIsNotWrittenAgain() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.keep();
    const QString copy = copiesIn(data).value(0);
    QFile::remove(copy);
    editor.showMessage("R5"); // fills the box
    editor.keep();
    QVERIFY(!QFile::exists(copy));
    editor.applyScript("R5", "CLEAR other");
    editor.keep();
    QVERIFY(QFile::exists(copy));
}

void RecoveryTest::aCopyThatFailedIsWrittenAtTheNextChange() {
    const TemporaryFolder data;
    const std::string folder = data.file("recovery");
    writeBytes(folder, "in the way");
    EditorFixture editor;
    editor.recovery = {QString::fromStdString(folder), 1h};
    editor.startWithNewProject("Line3");
    RecoveryKeeper& keeper = editor.window->recovery().keeper();
    keeper.keepNow();
    QCOMPARE(fileBytes(folder), std::string("in the way"));
    std::filesystem::remove(systemPath(folder));
    keeper.noteChange(); // though nothing differs from what could not be written
    keeper.keepNow();
    QCOMPARE(QDir(QString::fromStdString(folder)).entryList({"*.recovery"}, QDir::Files).size(), 1);
}

void RecoveryTest::eightNamesAreToldAndTheOthersCounted() {
    const TemporaryFolder data;
    {
        Editor editor(data);
        editor.newProject("Line3");
        for (int i = 1; i <= 8; ++i)
            editor.applyScript(qPrintable(QStringLiteral("R%1").arg(i)), "CLEAR other");
        editor.trigger("miFileExit");
    }
    const QString eight = "STDMSG1, STDMSG2, STDMSG3, STDMSG4, STDMSG5, STDMSG6, STDMSG7, STDMSG8";
    {
        Editor editor(data);
        onModal("frmRestore", [&](QWidget* dialog) {
            QCOMPARE(rowsOf(dialog).value(0).section(u'|', 1), "was never saved; " + eight);
            openFirst(dialog);
        });
        editor.trigger("miToolsRestore");
        editor.applyScript("R9", "CLEAR ninth");
        editor.applyScript("R10", "CLEAR tenth");
        editor.trigger("miFileExit");
    }
    Editor next(data);
    onModal("frmRestore", [&](QWidget* dialog) {
        QCOMPARE(rowsOf(dialog).value(0).section(u'|', 1), "was never saved; " + eight + " and 2 more");
        dialog->close();
    });
    next.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
}

void RecoveryTest::saveRemovesIt() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.keep();
    QCOMPARE(copiesIn(data).size(), 1);
    editor.trigger("miFileSave");
    QVERIFY(copiesIn(data).empty());
    editor.keep();
    QVERIFY(copiesIn(data).empty());
}

void RecoveryTest::whatASaveLeavesOutIsKept() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.typeScript("R7", "CLEAR typed");
    editor.keep();
    editor.trigger("miFileSave");
    QCOMPARE(copyIn(data).notApplied.front(), (NotAppliedTexts{named("STDMSG7"), {"CLEAR typed"}}));
}

void RecoveryTest::anEditThatWasTakenBackLeavesNone() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.trigger("miFileSave");
    editor.showMessage("R7");
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    QTest::keyClicks(box, "x");
    editor.keep();
    QCOMPARE(copiesIn(data).size(), 1);
    QTest::keyClick(box, Qt::Key_Backspace);
    editor.keep();
    QVERIFY(copiesIn(data).empty());
}

void RecoveryTest::closingWithNoRemovesIt() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.keep();
    editor.messages.answers = {Answer::No};
    QVERIFY(editor.window->close());
    QVERIFY(copiesIn(data).empty());
    QVERIFY(!editor.delay()->isActive());
}

void RecoveryTest::closingWithCancelKeepsIt() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.keep();
    editor.messages.answers = {Answer::Cancel};
    QVERIFY(!editor.window->close());
    QCOMPARE(copiesIn(data).size(), 1);
}

void RecoveryTest::newWithNoRemovesIt() {
    const TemporaryFolder data;
    Editor editor(data);
    editor.newProject("Line3");
    editor.keep();
    editor.messages.answers = {Answer::No};
    editor.trigger("miFileNew"); // the dialog is cancelled
    QVERIFY(copiesIn(data).empty());
    editor.keep();
    QVERIFY(copiesIn(data).empty());
}

void RecoveryTest::exitKeepsWhatWaits() {
    const TemporaryFolder data;
    {
        Editor editor(data);
        editor.newProject("Line3");
        editor.keep();
        editor.applyScript("R7", "CLEAR at the last moment");
        editor.trigger("miFileExit");
        QCOMPARE(editor.programEnds, 1);
    }
    QCOMPARE(copyIn(data).project.STDMSG[6], std::string("CLEAR at the last moment"));
}

void RecoveryTest::restoresAProjectWithItsTexts() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    std::string folder = copyIn(data).project.ProjPath;
    onModal("frmRestore", [&folder](QWidget* dialog) {
        const QString path = QString::fromStdString(folder + PathRules::native().separator + "Line3");
        QCOMPARE(rowsOf(dialog), QStringList{path + "|was never saved; STDMSG7; not applied: ALTMSG2"});
        QCOMPARE(dialog->findChild<QLabel*>("lblRestore")->text(),
                 "Unsaved work recovered from earlier sessions:");
        dialog->findChild<QPushButton*>("btnOK")->click();
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    QCOMPARE(editor.project.ProjPath, folder);
    QCOMPARE(editor.project.STDMSG[6], std::string("CLEAR applied"));
    QCOMPARE(editor.project.ALTMSG[1], std::string("CLEAR"));
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 3);
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("ALTMSG2"));
    QCOMPARE(editor.script(), std::string("CLEAR not applied"));
    QVERIFY(editor.applyEnabled());
    QVERIFY(editor.enabled("miFileSave"));
    QVERIFY(!editor.enabled("miLinkUpload")); // as after New
    QVERIFY(editor.enabled("UPLOAD"));
    QVERIFY(editor.messages.asked.empty() && editor.messages.shown.empty());
    QVERIFY(!std::filesystem::exists(systemPath(folder))); // nothing was written there
    QCOMPARE(copiesIn(data).size(), 1);
}

void RecoveryTest::restoresAllThreePages() {
    const TemporaryFolder data;
    {
        Editor editor(data);
        editor.newProject("Line3");
        editor.project.CoilVar[3].onText = "RUN";
        editor.showVariable("B4");
        onModal("frmBoolVarEdit", [](QWidget* dialog) {
            dialog->findChild<QLineEdit*>("txtVarOFF")->setText("HALT");
            dialog->findChild<QPushButton*>("btnOK")->click();
        });
        editor.click("btnEditVariable");
        editor.showPage("C2");
        editor.type("txtNewAltAddr", "500");
        editor.type("txtNewAIAddr", "200");
        editor.type("txtNewDIAddr", "150");
        editor.type("txtNewStdAddr", "600");
        editor.typeScript("R1", "x");
        editor.find<DeviceTextEdit>("txtMsg")->clear(); // Apply would store "CLEAR"
        editor.trigger("miFileExit");
    }
    Editor editor(data);
    onModal("frmRestore", openFirst);
    editor.trigger("miToolsRestore");
    QCOMPARE(editor.script(), std::string());
    QVERIFY(editor.applyEnabled());
    editor.showPage("C3");
    QCOMPARE(editor.text("txtVarName"), QStringLiteral("CoilVar4"));
    QCOMPARE(editor.text("txtVarOnStr"), QStringLiteral("RUN"));
    QCOMPARE(editor.text("txtVarOffStr"), QStringLiteral("HALT"));
    QVERIFY(editor.applyEnabled("btnVarApply"));
    editor.showPage("C2");
    QCOMPARE(editor.text("txtNewAltAddr"), QStringLiteral("500"));
    QCOMPARE(editor.text("txtNewStdAddr"), QStringLiteral("600"));
    QCOMPARE(editor.text("txtNewAIAddr"), QStringLiteral("200"));
    QCOMPARE(editor.text("txtNewDIAddr"), QStringLiteral("150"));
    QVERIFY(editor.applyEnabled("btnModBusApply"));
    QCOMPARE(editor.project.AlertMessage, 300);
}

void RecoveryTest::restoresByKeyboardAlone() {
    const TemporaryFolder data;
    leaveWork(data, "First");
    leaveWork(data, "Second");
    for (const QString& copy : copiesIn(data)) { // written in the same second
        QFile file(copy);
        QVERIFY(file.open(QIODevice::ReadWrite));
        const int hours = RecoveryFolder::read(copy)->project.ProjName == "First" ? -2 : -1;
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(hours * 3600),
                                 QFileDevice::FileModificationTime));
    }
    Editor editor(data);
    onModal("frmRestore", [](QWidget* dialog) {
        QCOMPARE(dialog->focusWidget(), dialog->findChild<QTableView*>("tblRestore"));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Down); // to the older one
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        QCOMPARE(dialog->focusWidget(), dialog->findChild<QPushButton*>("btnOK"));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    });
    QTest::keyClick(editor.window.get(), Qt::Key_T, Qt::AltModifier);
    auto* const menu = editor.find<QMenu>("mnuTools");
    QTRY_VERIFY(menu->isVisible());
    QTest::keyClick(menu, Qt::Key_R);
    QVERIFY(allModalsServed());
    QCOMPARE(editor.project.ProjName, std::string("First"));
}

void RecoveryTest::nothingToRestoreIsSaid() {
    const TemporaryFolder data;
    Editor editor(data); // in the reset state: the entry is always enabled
    onModal("frmRestore", [](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLabel*>("lblRestore")->text(), "There is no unsaved work.");
        QVERIFY(!dialog->findChild<QPushButton*>("btnOK")->isEnabled());
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
}

void RecoveryTest::whatIsThereNeverOpensOrAsksByItself() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    QVERIFY(editor.project.ProjName.empty());
    QVERIFY(editor.messages.asked.empty() && editor.messages.shown.empty());
    QVERIFY(editor.find<QWidget>("dockPanels")->isHidden());
    editor.newProject("Line4");
    QVERIFY(editor.messages.asked.empty());
}

void RecoveryTest::theDockTellsOnceWhatIsThere() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    editor.trigger("miViewPanels");
    QVERIFY(editor.find<QLabel>("lblUnsavedWork")->isVisible());
    QCOMPARE(editor.find<QLabel>("lblUnsavedWork")->text(), "Unsaved work was found");
    onModal("frmRestore", openFirst);
    editor.click("btnUnsavedWork");
    QTRY_COMPARE(editor.project.ProjName, std::string("Line3"));
    QVERIFY(!editor.find<QLabel>("lblUnsavedWork")->isVisible());
    editor.trigger("miViewPanels");
    editor.trigger("miViewPanels");
    QVERIFY(!editor.find<QLabel>("lblUnsavedWork")->isVisible());
}

void RecoveryTest::escapeRestoresNothing() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    editor.newProject("Line4");
    onModal("frmRestore", [](QWidget* dialog) { QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape); });
    editor.trigger("miToolsRestore");
    QCOMPARE(editor.project.ProjName, std::string("Line4"));
    QCOMPARE(copiesIn(data).size(), 2);
}

void RecoveryTest::aModifiedProjectIsAskedForFirst() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    editor.newProject("Line4");
    editor.messages.answers = {Answer::Yes};
    onModal("frmRestore", openFirst);
    editor.trigger("miToolsRestore");
    QCOMPARE(editor.messages.asked,
             std::vector<std::string>{"Do you want to save current project before open new one?"});
    QVERIFY(std::filesystem::exists(systemPath(editor.projectFolder.file("Line4.orx"))));
    QCOMPARE(editor.project.ProjName, std::string("Line3"));
}

void RecoveryTest::aFailedSaveStopsTheRestore() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    editor.newProject("Line4");
    std::filesystem::remove_all(systemPath(editor.projectFolder.path()));
    editor.messages.answers = {Answer::Yes};
    onModal("frmRestore", openFirst);
    editor.trigger("miToolsRestore");
    QCOMPARE(editor.project.ProjName, std::string("Line4"));
    onModal("frmRestore", [](QWidget* dialog) {
        QCOMPARE(rowsOf(dialog).size(), 1); // it is there for the next time
        dialog->close();
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
}

void RecoveryTest::aDamagedCopyChangesNothing() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    const QString copy = copiesIn(data).value(0);
    QVERIFY(QFile::resize(copy, 100));
    Editor editor(data);
    editor.newProject("Line4");
    onModal("frmRestore", [&copy](QWidget* dialog) {
        QCOMPARE(rowsOf(dialog), QStringList{QDir::toNativeSeparators(copy) + "|cannot be read"});
        openFirst(dialog);
    });
    editor.trigger("miToolsRestore");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "Unable to open " + QDir::toNativeSeparators(copy).toStdString());
    QCOMPARE(editor.project.ProjName, std::string("Line4"));
    QVERIFY(editor.messages.asked.empty());
}

void RecoveryTest::aCopyOfANewerVersionSaysSo() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    const QString copy = copiesIn(data).value(0);
    writeBytes(copy.toStdString(), "orvista-recovery 2\n");
    Editor editor(data);
    onModal("frmRestore", [&copy](QWidget* dialog) {
        QCOMPARE(rowsOf(dialog), QStringList{QDir::toNativeSeparators(copy) +
                                             "|was written by a newer version of the program"});
        openFirst(dialog);
    });
    editor.trigger("miToolsRestore");
    QCOMPARE(editor.messages.shown.back().text, "Unable to open " +
                                                    QDir::toNativeSeparators(copy).toStdString() +
                                                    ": it was written by a newer version of the program");
    QVERIFY(QFile::exists(copy));
}

void RecoveryTest::aRowIsRemovedOnceItWasAskedFor() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    onModal("RemoveQuestion", [](QWidget* window) {
        auto* const box = qobject_cast<QMessageBox*>(window);
        QVERIFY(box->text().remove(QChar(0x200B)).endsWith("Line3? It cannot be brought back."));
        QTest::keyClick(box->button(QMessageBox::Yes), Qt::Key_Space);
    });
    onModal("frmRestore", [](QWidget* dialog) {
        auto* const remove = dialog->findChild<QPushButton*>("btnRemove");
        QTest::keyClick(remove, Qt::Key_Space);
        QCOMPARE(rowsOf(dialog), QStringList());
        QVERIFY(!remove->isEnabled());
        QCOMPARE(dialog->findChild<QLabel*>("lblRestore")->text(), "There is no unsaved work.");
        dialog->close();
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
    QCOMPARE(copiesIn(data), QStringList());
}

void RecoveryTest::removesByKeyboardAlone() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    onModal("RemoveQuestion", [](QWidget* box) {
        QTRY_VERIFY(box->isActiveWindow());
        QTest::keyClick(box, Qt::Key_Y, Qt::AltModifier);
    });
    onModal("frmRestore", [](QWidget* dialog) {
        QTRY_VERIFY(dialog->isActiveWindow());
        QTest::keyClick(dialog, Qt::Key_R, Qt::AltModifier);
        QTRY_COMPARE(rowsOf(dialog), QStringList()); // a button is shown pressed for a moment before it is
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
    QCOMPARE(copiesIn(data), QStringList());
}

void RecoveryTest::noRemovesNothing() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    onModal("RemoveQuestion", [](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });
    onModal("frmRestore", [](QWidget* dialog) {
        QTest::keyClick(dialog->findChild<QPushButton*>("btnRemove"), Qt::Key_Space);
        QCOMPARE(rowsOf(dialog).size(), 1);
        dialog->close();
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
    QCOMPARE(copiesIn(data).size(), 1);
}

void RecoveryTest::thatNoCopyCanBeKeptIsSaidOnce() {
    const TemporaryFolder data;
    const std::string folder = data.file("recovery");
    writeBytes(folder, "in the way");
    EditorFixture editor;
    editor.recovery = {QString::fromStdString(folder), 1h};
    editor.startWithNewProject("Line3");
    RecoveryKeeper& keeper = editor.window->recovery().keeper();
    keeper.keepNow();
    auto* const line = editor.find<QLabel>("lblNoCopy");
    QVERIFY(line->isVisible());
    QVERIFY(line->text().startsWith("No copy of unsaved work can be kept in "));
    editor.click("btnDismissNoCopy");
    keeper.noteChange();
    keeper.keepNow();
    QVERIFY(!line->isVisible());
}

void RecoveryTest::theCopyOfARunningEditorIsNotOffered() {
    const TemporaryFolder data;
    Editor running(data);
    running.newProject("Line3");
    running.keep();
    Editor editor(data);
    onModal("frmRestore", [](QWidget* dialog) {
        QVERIFY(rowsOf(dialog).empty());
        dialog->close();
    });
    editor.trigger("miToolsRestore");
    QVERIFY(allModalsServed());
}

void RecoveryTest::saveAfterARestoreRemovesTheCopy() {
    const TemporaryFolder data;
    leaveWork(data, "Line3");
    Editor editor(data);
    onModal("frmRestore", openFirst);
    editor.trigger("miToolsRestore");
    std::filesystem::create_directory(systemPath(editor.project.ProjPath));
    const auto gone =
        qScopeGuard([path = editor.project.ProjPath] { std::filesystem::remove_all(systemPath(path)); });
    editor.click("btnMsgApply");
    editor.trigger("miFileSave");
    QVERIFY(copiesIn(data).empty());
    QVERIFY(fileBytes(editor.project.ProjPath + "/altmsg.ilm").find("not applied") != std::string::npos);
}

QTEST_MAIN(RecoveryTest)
#include "RecoveryTest.moc"
