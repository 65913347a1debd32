#include "mainwindow/EditorProgram.h"
#include "model/SystemPath.h"
#include "tests/support/ExpectedFiles.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"

#include <QAction>
#include <QDir>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
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

/// Of a history; empty while there is none.
std::string firstRow(const std::string& history) {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::path(history), error))
        return {};
    const std::string rows = fileBytes(history);
    return rows.substr(0, rows.find('\n') + 1);
}

/// Starts a copy of the executable and gives the first row of its history, once that names a project.
std::string startedIn(const std::string& workingFolder, const std::string& programFolder,
                      const QStringList& arguments) {
    const std::string program = programFolder + "/orvista-editor";
    const std::string history = programFolder + "/history.cache";
    std::filesystem::copy_file(ORVISTA_EDITOR, systemPath(program));
    QProcess editor;
    editor.setWorkingDirectory(QString::fromStdString(workingFolder));
    editor.start(QString::fromStdString(program), arguments);
    const auto namesAProject = [&] {
        return firstRow(history).size() > 2 && firstRow(history) != programFolder + "/\r\n";
    };
    const bool opened = editor.waitForStarted() && QTest::qWaitFor(namesAProject, 60'000);
    editor.kill();
    editor.waitForFinished();
    return opened ? firstRow(history) : "nothing was opened";
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
    void answersWithoutADisplay_data();
    void answersWithoutADisplay();
    void columnsAreThoseOfThePreview_data();
    void columnsAreThoseOfThePreview();
    void theExecutableOpensTheFirstPath_data();
    void theExecutableOpensTheFirstPath();
    void pathsNeedNotBeText();
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

void EditorProgramTest::answersWithoutADisplay_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("errors");
    const QString usage = QStringLiteral("^Usage: .*orvista-editor.* \\[project.orx\\]");
    QTest::newRow("--help") << QStringList{"--help"} << 0 << usage << "^$";
    QTest::newRow("-h behind an option of Qt's")
        << QStringList{"-style", "fusion", "-h"} << 0 << usage << "^$";
    QTest::newRow("--version") << QStringList{"--version"} << 0 << "^orvista-editor 1.03-2\\s$"
                               << "^$";
    QTest::newRow("-v") << QStringList{"-v"} << 0 << "^orvista-editor 1.03-2\\s$"
                        << "^$";
    QTest::newRow("a wrong option") << QStringList{"--bogus"} << 2 << "^$"
                                    << "^orvista-editor: Unknown option 'bogus'\\.\\s$";
    QTest::newRow("a wrong option with a path") << QStringList{"a.orx", "--bogus"} << 2 << "^$"
                                                << "Unknown option 'bogus'";
    QTest::newRow("an option without its value") << QStringList{"--columns"} << 2 << "^$"
                                                 << "Missing value after '--columns'";
    const QString columns =
        QStringLiteral("^orvista-editor: --columns takes a whole number from 32 to 512\\s$");
    for (const char* number : {"31", "513", "0", "-128", "+128", "128.0", "4294967424", "wide", " 64", ""})
        QTest::addRow("--columns=%s", number)
            << QStringList{"--columns=" + QString(number)} << 2 << "^$" << columns;
}

void EditorProgramTest::answersWithoutADisplay() {
    QFETCH(const QStringList, arguments);
    QFETCH(const int, exitCode);
    QFETCH(const QString, output);
    QFETCH(const QString, errors);
    QProcess editor;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    editor.setProcessEnvironment(environment);
    editor.start(ORVISTA_EDITOR, arguments);
    QVERIFY(editor.waitForFinished());
    QCOMPARE(editor.exitStatus(), QProcess::NormalExit);
    QCOMPARE(editor.exitCode(), exitCode);
    const auto holds = [](const QByteArray& text, const QString& pattern) {
        return QRegularExpression(pattern).match(QString::fromUtf8(text)).hasMatch();
    };
    const QByteArray printed = editor.readAllStandardOutput();
    const QByteArray complained = editor.readAllStandardError();
    QVERIFY2(holds(printed, output), printed);
    QVERIFY2(holds(complained, errors), complained);
}

void EditorProgramTest::columnsAreThoseOfThePreview_data() {
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<int>("columns");
    QTest::newRow("not given") << QByteArrayList{} << 128;
    QTest::newRow("the narrowest") << QByteArrayList{"--columns", "32"} << 32;
    QTest::newRow("the widest") << QByteArrayList{"--columns=512"} << 512;
    QTest::newRow("with a path") << QByteArrayList{"--columns", "64", "Line3.orx"} << 64;
}

void EditorProgramTest::columnsAreThoseOfThePreview() {
    QFETCH(QByteArrayList, arguments);
    QFETCH(const int, columns);
    arguments.prepend("orvista-editor");
    std::vector<char*> given;
    for (QByteArray& argument : arguments)
        given.push_back(argument.data());
    const EditorStart start = readCommandLine(static_cast<int>(given.size()), given.data());
    QCOMPARE(start.previewColumns, columns);
    QCOMPARE(start.project.empty(), !arguments.contains("Line3.orx"));
}

void EditorProgramTest::theExecutableOpensTheFirstPath_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("one") << QStringList{"First.orx"};
    QTest::newRow("two") << QStringList{"First.orx", "Second.orx"};
    QTest::newRow("one by a detour") << QStringList{"./nowhere/../First.orx"};
    QTest::newRow("behind an option of Qt's") << QStringList{"-style", "fusion", "First.orx"};
}

void EditorProgramTest::theExecutableOpensTheFirstPath() {
    QFETCH(const QStringList, arguments);
    const TemporaryFolder folder;
    const TemporaryFolder projects;
    for (const char* name : {"First.orx", "Second.orx"})
        writeBytes(projects.file(name), expectedProjectFile("192.168.1.20"));
    QCOMPARE(startedIn(projects.path(), folder.path(), arguments), projects.file("First") + "\r\n");
}

void EditorProgramTest::pathsNeedNotBeText() {
    // As a shell passes it; this test's own processes take text only.
    const TemporaryFolder folder;
    const std::string odd = folder.file("plant \xFF");
    std::filesystem::create_directory(std::filesystem::path(odd));
    writeBytes(odd + "/Line\xFE.orx", expectedProjectFile("192.168.1.20"));
    std::filesystem::copy_file(ORVISTA_EDITOR, std::filesystem::path(odd + "/orvista-editor"));
    QProcess shell;
    shell.setWorkingDirectory(QString::fromStdString(folder.path()));
    shell.start(
        QStringLiteral("/bin/sh"),
        {QStringLiteral("-c"), QStringLiteral("cd \"$(printf 'plant \\377')\" && "
                                              "exec ./orvista-editor \"$(printf 'Line\\376.orx')\"")});
    QVERIFY(shell.waitForStarted());
    const std::string history = odd + "/history.cache";
    QTRY_VERIFY_WITH_TIMEOUT(firstRow(history) == odd + "/Line\xFE\r\n", 60'000);
    shell.kill();
    QVERIFY(shell.waitForFinished());
}

QTEST_MAIN(EditorProgramTest)
#include "EditorProgramTest.moc"
