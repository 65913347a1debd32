#include "mainwindow/EditorProgram.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr int givenUp = 99;

void press(QWidget* dialog, const char* button) {
    QTest::mouseClick(dialog->findChild<QAbstractButton*>(QString::fromLatin1(button)), Qt::LeftButton, {},
                      {5, 5});
}

/// Goes through the real start-up and new-project dialogs.
void createProject(EditorProgram& editor, const QString& name, const QString& folder) {
    onModal(QStringLiteral("frmStartup"), [](QWidget* dialog) {
        press(dialog, "optCreateNew");
        press(dialog, "btnStartupOK");
    });
    onModal(QStringLiteral("frmNewProject"), [name, folder](QWidget* dialog) {
        dialog->findChild<QLineEdit*>("txtLocation")->setText(folder);
        QTest::keyClicks(dialog->findChild<QLineEdit*>("txtProjName"), name);
        press(dialog, "btnOK");
    });
    editor.window().show();
    QTRY_VERIFY(allModalsServed());
}

QAction* action(EditorProgram& editor, const char* name) {
    return editor.window().findChild<QAction*>(QString::fromLatin1(name));
}

} // namespace

/// The editor with its real dialogs, and the executable itself.
class EditorProgramTest : public QObject {
    Q_OBJECT
private slots:
    void createsAProjectThroughItsDialogs();
    void exitLeavesAtOnceWithoutAQuestion();
    void theCloseBoxAsks();
    void theAboutBoxOpens();
    void dialogsBelongToTheMainWindow();
    void theExecutableKeepsItsHistoryBesideItselfAlsoThroughALink();
};

void EditorProgramTest::createsAProjectThroughItsDialogs() {
    const TemporaryFolder folder;
    EditorProgram editor(folder.path());
    createProject(editor, QStringLiteral("Line3"), QString::fromStdString(folder.path()));
    QCOMPARE(editor.window().windowTitle(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    action(editor, "miFileSave")->trigger();
    QVERIFY(std::filesystem::exists(systemPath(folder.file("Line3.orx"))));
    QVERIFY(std::filesystem::exists(systemPath(folder.file("history.cache"))));
}

void EditorProgramTest::exitLeavesAtOnceWithoutAQuestion() {
    const TemporaryFolder folder;
    EditorProgram editor(folder.path());
    createProject(editor, QStringLiteral("Line3"), QString::fromStdString(folder.path()));
    QTimer::singleShot(0, action(editor, "miFileExit"), &QAction::trigger);
    QTimer watch;
    connect(&watch, &QTimer::timeout, &watch, [] { QCoreApplication::exit(givenUp); });
    watch.start(10'000);
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!editor.window().isVisible());
    QVERIFY(!std::filesystem::exists(systemPath(folder.file("Line3.orx"))));
}

void EditorProgramTest::theCloseBoxAsks() {
    const TemporaryFolder folder;
    EditorProgram editor(folder.path());
    createProject(editor, QStringLiteral("Line3"), QString::fromStdString(folder.path()));
    bool asked = false;
    QTimer watch;
    connect(&watch, &QTimer::timeout, &watch, [&asked] {
        if (QWidget* const question = QApplication::activeModalWidget()) {
            asked = true;
            QTest::keyClick(question, Qt::Key_Escape);
        }
    });
    watch.start(1);
    QVERIFY(!editor.window().close());
    QVERIFY(asked);
    QVERIFY(editor.window().isVisible());
}

void EditorProgramTest::theAboutBoxOpens() {
    const TemporaryFolder folder;
    EditorProgram editor(folder.path());
    createProject(editor, QStringLiteral("Line3"), QString::fromStdString(folder.path()));
    QString caption;
    onModal(QStringLiteral("frmLic"), [&caption](QWidget* dialog) {
        caption = dialog->windowTitle();
        press(dialog, "cmdOK");
    });
    action(editor, "miHelpAbout")->trigger();
    QVERIFY(allModalsServed());
    QCOMPARE(caption, QStringLiteral("About Quillmark Corp."));
}

void EditorProgramTest::dialogsBelongToTheMainWindow() {
    const TemporaryFolder folder;
    EditorProgram editor(folder.path());
    const QWidget* parent = nullptr;
    onModal(QStringLiteral("frmStartup"), [&parent](QWidget* dialog) {
        parent = dialog->parentWidget();
        dialog->close();
    });
    editor.window().show();
    QTRY_VERIFY(allModalsServed());
    QCOMPARE(parent, &editor.window());
    QCOMPARE(editor.window().windowTitle(), QStringLiteral("Orvista Message Editor"));
}

void EditorProgramTest::theExecutableKeepsItsHistoryBesideItselfAlsoThroughALink() {
    const TemporaryFolder folder;
    const TemporaryFolder linkFolder;
    const std::string program = folder.file("orvista-editor");
    const std::string link = linkFolder.file("editor-link");
    std::filesystem::copy_file(ORVISTA_EDITOR, systemPath(program));
    std::filesystem::create_symlink(systemPath(program), systemPath(link));

    QProcess editor;
    editor.setWorkingDirectory(QString::fromStdString(linkFolder.path()));
    editor.start(QString::fromStdString(link), {});
    QVERIFY(editor.waitForStarted());
    const std::string history = folder.file("history.cache");
    const std::string expected = folder.path() + "/\r\n";
    QTRY_VERIFY_WITH_TIMEOUT(std::filesystem::exists(systemPath(history)) && fileBytes(history) == expected,
                             60'000);
    QVERIFY(!std::filesystem::exists(systemPath(linkFolder.file("history.cache"))));
    editor.kill();
    QVERIFY(editor.waitForFinished());
}

QTEST_MAIN(EditorProgramTest)
#include "EditorProgramTest.moc"
