#include "tests/support/EditorFixture.h"

#include <QTabWidget>
#include <QTest>

using namespace orvista;
using namespace orvista::testing;

class StartUpTest : public QObject {
    Q_OBJECT
private slots:
    void theFirstActivationShowsTheStartUpDialogOnce();
    void activationWithoutAShowCountsToo();
    void cancellingLeavesTheUnnamedProject();
    void createRunsTheNewFlowWithoutQuestionOrSecondReset();
    void loadRunsTheOpenFlow();
    void aPathOpensInsteadOfTheStartUpDialog();
    void aPathThatCannotBeReadShowsItsMessageAndLeavesTheResetState();
    void theHistoryIsReadAndGetsTheUnnamedRow();
};

void StartUpTest::theFirstActivationShowsTheStartUpDialogOnce() {
    EditorFixture editor;
    editor.load();
    QCOMPARE(editor.chooser.startupsShown, 0);
    editor.start();
    editor.window->activateWindow();
    QEvent again(QEvent::WindowActivate);
    QApplication::sendEvent(editor.window.get(), &again);
    editor.window->hide();
    editor.window->show();
    QCoreApplication::processEvents();
    QCOMPARE(editor.chooser.startupsShown, 1);
}

void StartUpTest::activationWithoutAShowCountsToo() {
    EditorFixture editor;
    editor.load();
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(editor.window.get(), &activation);
    QTRY_COMPARE(editor.chooser.startupsShown, 1);
    editor.window->show();
    QCoreApplication::processEvents();
    QCOMPARE(editor.chooser.startupsShown, 1);
}

void StartUpTest::cancellingLeavesTheUnnamedProject() {
    EditorFixture editor;
    editor.start();
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor"));
    QVERIFY(editor.project.ProjName.empty());
    QCOMPARE(editor.project.ProjPath, editor.programFolder.path());
    QVERIFY(!editor.project.modified);
    QVERIFY(!editor.find<QTabWidget>("tabDetails")->isEnabled());
}

void StartUpTest::createRunsTheNewFlowWithoutQuestionOrSecondReset() {
    EditorFixture editor;
    editor.load();
    // A second reset would undo this.
    editor.project.STDMSG[0] = "kept";
    editor.chooser.atStartup = StartupChoice::CreateNew;
    editor.chooser.newProjects.push_back(editor.projectNamed("Line3"));
    editor.window->show();
    QTRY_COMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    QCOMPARE(editor.project.STDMSG[0], std::string("kept"));
    QVERIFY(editor.messages.asked.empty());
    QVERIFY(editor.find<QTabWidget>("tabDetails")->isEnabled());
}

void StartUpTest::loadRunsTheOpenFlow() {
    EditorFixture editor;
    editor.load();
    editor.chooser.atStartup = StartupChoice::LoadExisting;
    editor.chooser.existingProjects.push_back(editor.projectNamed("Gone"));
    editor.window->show();
    QTRY_COMPARE(editor.messages.shown.size(), std::size_t{1});
    QVERIFY(editor.messages.asked.empty());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor"));
}

void StartUpTest::aPathOpensInsteadOfTheStartUpDialog() {
    EditorFixture editor;
    editor.startWithNewProject("Line3");
    editor.project.STDMSG[2] = "CLEAR\r\nthird";
    editor.trigger("miFileSave");

    editor.chooser.startupsShown = 0;
    editor.load().openAtStart(editor.projectFolder.file("Line3.orx"));
    editor.project.STDMSG[2].clear();
    editor.window->show();
    QTRY_COMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR\r\nthird\r\n"));
    QCOMPARE(editor.project.ProjPath, editor.projectFolder.path());
    QCOMPARE(editor.chooser.startupsShown, 0);
}

void StartUpTest::aPathThatCannotBeReadShowsItsMessageAndLeavesTheResetState() {
    EditorFixture editor;
    const std::string path = editor.projectFolder.file("Missing.orx");
    editor.load().openAtStart(path);
    editor.window->show();
    QTRY_COMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "Unable to open " + path);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor"));
    QVERIFY(editor.project.ProjName.empty());
    QCOMPARE(editor.project.ProjPath, editor.programFolder.path());
    QVERIFY(!editor.find<QTabWidget>("tabDetails")->isEnabled());
    QCOMPARE(editor.chooser.startupsShown, 0);
}

void StartUpTest::theHistoryIsReadAndGetsTheUnnamedRow() {
    EditorFixture editor;
    const std::string separator(1, editor.environment.paths.separator);
    const std::string line3 = editor.projectFolder.path() + separator + "Line3";
    writeBytes(editor.programFolder.file("history.cache"), line3 + "\r\n");
    editor.load();
    const std::string unnamed = editor.programFolder.path() + separator;
    QCOMPARE(editor.history.rows()[0], unnamed);
    QCOMPARE(editor.history.rows()[1], line3);
    QCOMPARE(fileBytes(editor.programFolder.file("history.cache")), unnamed + "\r\n" + line3 + "\r\n");
}

QTEST_MAIN(StartUpTest)
#include "StartUpTest.moc"
