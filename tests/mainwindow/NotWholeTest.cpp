#include "model/ProjectFile.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ExpectedFiles.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <filesystem>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// A project file that ends behind so many closed messages.
std::string cutBehind(int messages) {
    return "[CONFIG]\r\nIP   127.0.0.1\r\n[MODBUS.ADR]\r\n" + expectedAddressMap + "[STDMSG.ILM]\r\n" +
           expectedMessages("STDMSG", messages);
}

/// In the project folder lies Whole.orx with its device files, and Cut.orx is to be written by the test.
struct Editor : EditorFixture {
    explicit Editor(const std::string& cut = cutBehind(12)) : Editor(Unstarted{}, cut) { start(); }

    struct Unstarted {};
    explicit Editor(Unstarted, const std::string& cut = cutBehind(12)) {
        const PathRules paths = PathRules::native();
        Project saved;
        saved.STDMSG.fill("TEXT former");
        DocMgrModule::SaveProject(projectFolder.path(), "Whole", saved, {paths, messages});
        writeBytes(projectFolder.file("Cut.orx"), cut);
        recovery.folder = QString::fromStdString(kept.path());
    }
    QPushButton* show() const { return window->findChild<QPushButton*>(QStringLiteral("btnShowNotWhole")); }
    QString line() const {
        const auto* const label = window->findChild<QLabel*>(QStringLiteral("lblShowNotWhole"));
        return label ? label->text() : QString();
    }
    QTableView* table() const { return find<QTableView>("tblFindings"); }
    QStringList rows() const {
        QStringList lines;
        for (int row = 0; row < table()->model()->rowCount(); ++row) {
            QStringList cells;
            for (const int column : {0, 1, 3, 4}) // severity, item, line and code
                cells << table()->model()->index(row, column).data().toString();
            lines << cells.join(u'|');
        }
        return lines;
    }
    QStringList keptFolders() const {
        return QDir(QString::fromStdString(kept.path())).entryList({"*.devicefiles"}, QDir::Dirs);
    }

    TemporaryFolder kept;
};

const QString twelveRead = QStringLiteral(
    "Cut.orx is not whole: 12 of 40 regular messages were read. Saving makes it whole as it is shown.");

} // namespace

class NotWholeTest : public QObject {
    Q_OBJECT
private slots:
    void aLineSaysSoAfterOpening();
    void theStartOfTheProgramSaysSoToo();
    void aPathOnTheCommandLineSaysSoToo();
    void reloadSaysSoToo();
    void savingAsAnotherTakesItAway();
    void aWholeProjectHasNone();
    void showListsWhatWasLost();
    void enterOnSuchARowDoesNothing();
    void savingTakesItAway();
    void anotherProjectTakesItAway();
    void whatSavingLeavesOutIsNamed();
    void theFormerDeviceFilesAreKept();
    void whatCannotBeKeptIsSaid();
    void suchAProjectIsNotComparedWith();
};

void NotWholeTest::aLineSaysSoAfterOpening() {
    Editor editor;
    editor.openProject("Cut");
    QCOMPARE(editor.line(), twelveRead);
    QVERIFY(editor.show()->isVisible());
    QVERIFY(editor.messages.shown.empty());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Cut]"));
}

void NotWholeTest::theStartOfTheProgramSaysSoToo() {
    Editor editor(Editor::Unstarted{});
    editor.chooser.atStartup = StartupChoice::LoadExisting;
    editor.chooser.existingProjects.push_back(editor.projectNamed("Cut"));
    editor.start();
    QTRY_COMPARE(editor.line(), twelveRead);
}

void NotWholeTest::aPathOnTheCommandLineSaysSoToo() {
    Editor editor(Editor::Unstarted{});
    editor.load().openAtStart(editor.projectFolder.file("Cut.orx"));
    editor.window->show();
    QTRY_COMPARE(editor.line(), twelveRead);
}

void NotWholeTest::reloadSaysSoToo() {
    Editor editor;
    editor.openProject("Whole");
    QCOMPARE(editor.line(), QString());
    writeBytes(editor.projectFolder.file("Whole.orx"), cutBehind(12));
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(editor.window.get(), &activation);
    editor.click("btnReload");
    QCOMPARE(editor.line(), QString(twelveRead).replace(QStringLiteral("Cut"), QStringLiteral("Whole")));
}

void NotWholeTest::savingAsAnotherTakesItAway() {
    Editor editor;
    editor.openProject("Cut");
    editor.show()->click();
    editor.chooser.saveAsPaths.emplace_back(editor.projectFolder.file("Other.orx"));
    editor.trigger("miFileSaveAs");
    QCOMPARE(editor.line(), QString());
    QTest::keyClick(editor.window.get(), Qt::Key_F8);
    QCOMPARE(editor.rows(), QStringList());
}

void NotWholeTest::aWholeProjectHasNone() {
    Editor editor;
    editor.openProject("Whole");
    QCOMPARE(editor.line(), QString());
    QCOMPARE(editor.keptFolders(), QStringList());
}

void NotWholeTest::showListsWhatWasLost() {
    Editor editor;
    editor.openProject("Cut");
    editor.show()->click();
    QVERIFY(editor.table()->isVisible());
    QCOMPARE(editor.rows().mid(0, 3),
             (QStringList{"error|project file||missing-section", "error|project file||missing-section",
                          "error|project file|43|cut-off"}));
}

void NotWholeTest::enterOnSuchARowDoesNothing() {
    Editor editor;
    editor.openProject("Cut");
    editor.show()->click();
    editor.showPage("C1");
    editor.table()->setCurrentIndex(editor.table()->model()->index(2, 0));
    editor.table()->setFocus();
    QTest::keyClick(editor.table(), Qt::Key_Return);
    QCOMPARE(editor.find<QTabWidget>("tabDetails")->currentIndex(), 0);
}

void NotWholeTest::savingTakesItAway() {
    Editor editor;
    editor.openProject("Cut");
    editor.show()->click();
    editor.type("txtSystemIP", QStringLiteral("127.0.0.2"));
    QCOMPARE(editor.rows().size(), 3);
    editor.trigger("miFileSave");
    QTest::keyClick(editor.window.get(), Qt::Key_F8);
    QCOMPARE(editor.rows(), QStringList());
    QCOMPARE(editor.line(), QString());
}

void NotWholeTest::anotherProjectTakesItAway() {
    Editor editor;
    editor.openProject("Cut");
    QCOMPARE(editor.line(), twelveRead);
    editor.newProject("Line3");
    QCOMPARE(editor.line(), QString());
}

void NotWholeTest::whatSavingLeavesOutIsNamed() {
    std::string text = expectedProjectFile("127.0.0.1");
    const std::string more = expectedMessages("STDMSG", 44).substr(expectedMessages("STDMSG", 40).size());
    text.insert(text.find("[ALTMSG.ILM]"), more);
    Editor editor(text);
    editor.openProject("Cut");
    QCOMPARE(editor.line(),
             QStringLiteral("Cut.orx is not whole: there are more blocks than rows. Saving leaves "
                            "out STDMSG41 and 3 more."));
}

void NotWholeTest::theFormerDeviceFilesAreKept() {
    Editor editor;
    const std::string former = fileBytes(editor.projectFolder.file("stdmsg.ilm"));
    editor.openProject("Cut");
    QVERIFY(fileBytes(editor.projectFolder.file("stdmsg.ilm")) != former);
    QCOMPARE(editor.keptFolders().size(), 1);
    const std::string folder = editor.kept.file(editor.keptFolders().front().toStdString());
    QCOMPARE(fileBytes(folder + "/stdmsg.ilm"), former);
    QCOMPARE(QDir(QString::fromStdString(folder)).entryList(QDir::Files).size(), 5);
}

void NotWholeTest::whatCannotBeKeptIsSaid() {
    Editor editor;
    std::filesystem::remove_all(systemPath(editor.kept.path()));
    writeBytes(editor.kept.path(), "a file where the folder was to be");
    editor.openProject("Cut");
    QCOMPARE(
        editor.find<QLabel>("lblNotKept")->text(),
        QStringLiteral("No copy was kept of what stood in modbus.adr, ilmvar.def, stdmsg.ilm, altmsg.ilm, "
                       "default.pls before"));
    QCOMPARE(editor.line(), twelveRead);
}

void NotWholeTest::suchAProjectIsNotComparedWith() {
    Editor editor;
    editor.openProject("Whole");
    editor.chooser.existingProjects.push_back(editor.projectNamed("Cut"));
    editor.trigger("miToolsCompareProject");
    QCOMPARE(editor.notice(), QStringLiteral("Cut.orx is not whole: 12 of 40 regular messages were read"));
    QVERIFY(!editor.window->findChild<QTableView*>(QStringLiteral("tblComparison")));
}

QTEST_MAIN(NotWholeTest)
#include "NotWholeTest.moc"
