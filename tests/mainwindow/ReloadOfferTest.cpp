#include "mainwindow/PanelDock.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"

#include <QDialog>
#include <QDirIterator>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>

#include <chrono>
#include <filesystem>

using namespace orvista;
using namespace orvista::testing;
namespace fs = std::filesystem;

namespace {

/// The editor with a saved project, beside somebody who saves the same project.
struct Shared : EditorFixture {
    Shared() {
        recovery = {QString::fromStdString(kept.path()), std::chrono::hours(1)};
        startWithNewProject();
        trigger("miFileSave");
    }
    std::string file() const { return projectFolder.file("Line3.orx"); }
    /// Another program saves the project with this script, later than the editor did.
    void saveElsewhere(const std::string& script) {
        Project other;
        other.STDMSG[2] = script;
        ScriptedMessages silent;
        DocMgrModule::SaveProject(projectFolder.path(), "Line3", other, {environment.paths, silent});
        changed += std::chrono::seconds(1);
        fs::last_write_time(systemPath(file()), changed);
    }
    /// The user comes back to the window from another program.
    void comeBack() const {
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(window.get(), &activation);
    }
    /// Another program saves while the user has changes.
    void changeBeside(const std::string& script) {
        type("txtSystemIP", QStringLiteral("127.0.0.9"));
        saveElsewhere(script);
        comeBack();
    }
    /// Presses Reload and answers the question that it has to ask.
    void answer(const std::function<void(QMessageBox*)>& act) const {
        onModal(QStringLiteral("ReloadQuestion"),
                [act](QWidget* box) { act(qobject_cast<QMessageBox*>(box)); });
        click("btnReload");
        QVERIFY(allModalsServed());
    }
    QString line(const char* label = "lblReload") const {
        const auto* const found = window->findChild<QLabel*>(QLatin1String(label));
        return found && found->isVisible() ? found->text().remove(QChar(0x200B)) : QString();
    }
    QStringList keptFiles() const {
        QStringList paths;
        QDirIterator files(QString::fromStdString(kept.path()), {"*.orx"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            paths << files.next();
        return paths;
    }
    TemporaryFolder kept;
    fs::file_time_type changed = fs::file_time_type::clock::now();
};

const QString changedLine = QStringLiteral("Line3.orx was changed on the disk since it was read or written");

} // namespace

class ReloadOfferTest : public QObject {
    Q_OBJECT
private slots:
    void saysSoWhenSomebodyElseSavedTheProject();
    void saysNothingOfWhatTheEditorItselfWrote();
    void reloadingOpensTheFile();
    void aReloadAsksBeforeItDiscardsChanges();
    void noLeavesEverythingAsItIs_data();
    void noLeavesEverythingAsItIs();
    void textsThatAreNotAppliedAreChanges();
    void compareShowsWhatTheDiskHas();
    void aFileThatCannotBeReadChangesNothing();
    void aSaveKeepsWhatAnotherProgramWrote();
    void aSaveGoesOnWhereNothingCanBeKept();
    void aSaveOfItsOwnFileKeepsNothing();
    void whatIsSavedUnderAnotherNameReplacesNothingOfOthers();
    void saysSoOnceForEachState();
    void goesWithASaveAndWithTheProject();
    void goesWhenTheFileIsAsItWas();
    void aFileThatIsGoneIsNotOffered();
    void aProjectWithoutAFileIsNotLookedFor();
    void leavesAllElseAlone();
    void doesNotLookUnderADialog();
};

void ReloadOfferTest::saysSoWhenSomebodyElseSavedTheProject() {
    Shared editor;
    editor.saveElsewhere("x");
    QCOMPARE(editor.line(), QString());
    editor.comeBack();
    QCOMPARE(editor.line(), changedLine);
    QCOMPARE(editor.find<QPushButton>("btnReload")->text(), QStringLiteral("Reload"));
    QVERIFY(editor.messages.asked.empty());
    QVERIFY(editor.messages.shown.empty());
}

void ReloadOfferTest::saysNothingOfWhatTheEditorItselfWrote() {
    Shared editor;
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    editor.click("btnMsgApply");
    editor.trigger("miFileSave");
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
    editor.openProject("Line3");
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
    QVERIFY(!editor.find<PanelDock>("dockPanels")->isVisible());
}

void ReloadOfferTest::reloadingOpensTheFile() {
    Shared editor;
    editor.saveElsewhere("x");
    editor.comeBack();
    editor.click("btnReload");
    QCOMPARE(editor.project.STDMSG[2], std::string("x\r\n"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    QCOMPARE(editor.chooser.existingAsked, 0);
    QVERIFY(!editor.find<PanelDock>("dockPanels")->isVisible());
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
}

void ReloadOfferTest::aReloadAsksBeforeItDiscardsChanges() {
    Shared editor;
    editor.changeBeside("x");
    const std::string theirs = fileBytes(editor.file());
    editor.answer([](QMessageBox* box) {
        QCOMPARE(box->text(), QStringLiteral("Discard your changes and read Line3.orx again?"));
        QTest::keyClick(box->button(QMessageBox::Yes), Qt::Key_Space);
    });
    QCOMPARE(editor.project.STDMSG[2], std::string("x\r\n"));
    QCOMPARE(fileBytes(editor.file()), theirs);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    QCOMPARE(editor.line(), QString());
    QVERIFY(editor.messages.asked.empty());
}

void ReloadOfferTest::noLeavesEverythingAsItIs_data() {
    QTest::addColumn<int>("key");
    QTest::newRow("Enter presses No") << static_cast<int>(Qt::Key_Return);
    QTest::newRow("Esc is No") << static_cast<int>(Qt::Key_Escape);
}

void ReloadOfferTest::noLeavesEverythingAsItIs() {
    QFETCH(const int, key);
    Shared editor;
    editor.changeBeside("x");
    editor.answer([key](QMessageBox* box) { QTest::keyClick(box, static_cast<Qt::Key>(key)); });
    QCOMPARE(editor.project.IP, std::string("127.0.0.9"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    QCOMPARE(editor.line(), changedLine);
}

void ReloadOfferTest::textsThatAreNotAppliedAreChanges() {
    Shared editor;
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("typed"));
    editor.saveElsewhere("x");
    editor.comeBack();
    editor.answer([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void ReloadOfferTest::compareShowsWhatTheDiskHas() {
    Shared editor;
    editor.changeBeside("x");
    editor.answer([](QMessageBox* box) {
        QTRY_VERIFY(box->isActiveWindow());
        QTest::keyClick(box, Qt::Key_C, Qt::AltModifier);
    });
    const auto* const rows = editor.find<QTableView>("tblComparison")->model();
    QStringList differing;
    for (int row = 0; row < rows->rowCount(); ++row)
        differing << rows->index(row, 0).data().toString();
    QVERIFY2(differing.contains(QStringLiteral("STDMSG3")), qPrintable(differing.join(u' ')));
    QVERIFY(editor.line("lblComparison").endsWith(QStringLiteral("; its System page says 192.168.1.100")));
    QCOMPARE(editor.project.IP, std::string("127.0.0.9"));
    QCOMPARE(editor.line(), changedLine);
    editor.type("txtSystemIP", QStringLiteral("192.168.1.100"));
    QVERIFY(editor.line("lblComparison").endsWith(QLatin1Char(')')));
}

void ReloadOfferTest::aFileThatCannotBeReadChangesNothing() {
    Shared editor;
    editor.saveElsewhere("x");
    editor.comeBack();
    fs::remove(systemPath(editor.file()));
    editor.click("btnReload");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "Unable to open " + editor.file());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void ReloadOfferTest::aSaveKeepsWhatAnotherProgramWrote() {
    Shared editor;
    editor.changeBeside("x");
    const std::string theirs = fileBytes(editor.file());
    editor.trigger("miFileSave");
    const QStringList kept = editor.keptFiles();
    QCOMPARE(kept.size(), 1);
    QVERIFY(kept.front().endsWith(QStringLiteral("/Line3.orx")));
    QCOMPARE(fileBytes(kept.front().toStdString()), theirs);
    QCOMPARE(editor.line("lblOverwritten"),
             "What another program had written to Line3.orx was kept as " + kept.front());
    QVERIFY(fileBytes(editor.file()) != theirs);
}

void ReloadOfferTest::aSaveGoesOnWhereNothingCanBeKept() {
    Shared editor;
    editor.changeBeside("x");
    fs::remove_all(systemPath(editor.kept.path()));
    writeBytes(editor.kept.path(), "a file where the folder was to be");
    editor.trigger("miFileSave");
    QCOMPARE(editor.line("lblOverwritten"),
             QStringLiteral("No copy was kept of what another program had written to Line3.orx"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
}

void ReloadOfferTest::aSaveOfItsOwnFileKeepsNothing() {
    Shared editor;
    editor.type("txtSystemIP", QStringLiteral("127.0.0.9"));
    editor.trigger("miFileSave");
    editor.saveElsewhere("x");
    fs::remove(systemPath(editor.file()));
    editor.type("txtSystemIP", QStringLiteral("127.0.0.8"));
    editor.trigger("miFileSave");
    QCOMPARE(editor.keptFiles(), QStringList());
    QCOMPARE(editor.line("lblOverwritten"), QString());
}

void ReloadOfferTest::whatIsSavedUnderAnotherNameReplacesNothingOfOthers() {
    Shared editor;
    editor.changeBeside("x");
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("Line4.orx"));
    editor.trigger("miFileSaveAs");
    QCOMPARE(editor.keptFiles(), QStringList());
}

void ReloadOfferTest::saysSoOnceForEachState() {
    Shared editor;
    editor.saveElsewhere("x");
    editor.comeBack();
    editor.click("btnDismissReload");
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
    editor.saveElsewhere("y");
    editor.comeBack();
    QCOMPARE(editor.line(), changedLine);
}

void ReloadOfferTest::goesWithASaveAndWithTheProject() {
    Shared editor;
    editor.saveElsewhere("x");
    editor.comeBack();
    editor.type("txtSystemIP", QStringLiteral("127.0.0.9"));
    editor.trigger("miFileSave");
    QCOMPARE(editor.line(), QString());
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
    editor.saveElsewhere("y");
    editor.comeBack();
    QVERIFY(!editor.line().isEmpty());
    editor.newProject("Line4");
    QCOMPARE(editor.line(), QString());
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
}

void ReloadOfferTest::goesWhenTheFileIsAsItWas() {
    Shared editor;
    const auto before = fs::last_write_time(systemPath(editor.file()));
    fs::last_write_time(systemPath(editor.file()), before + std::chrono::seconds(5));
    editor.comeBack();
    QCOMPARE(editor.line(), changedLine);
    fs::last_write_time(systemPath(editor.file()), before);
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
}

void ReloadOfferTest::aFileThatIsGoneIsNotOffered() {
    Shared editor;
    fs::remove(systemPath(editor.file()));
    editor.comeBack();
    QCOMPARE(editor.line(), QStringLiteral("Line3.orx is no longer on the disk"));
    QVERIFY(!editor.find<QPushButton>("btnReload")->isVisible());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
}

void ReloadOfferTest::aProjectWithoutAFileIsNotLookedFor() {
    EditorFixture editor;
    editor.startWithNewProject();
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(editor.window.get(), &activation);
    QVERIFY(!editor.window->findChild<QLabel*>(QStringLiteral("lblReload")));
}

void ReloadOfferTest::leavesAllElseAlone() {
    Shared editor;
    editor.showMessage("R3");
    auto* const script = editor.find<QPlainTextEdit>("txtMsg");
    script->setFocus();
    QTest::keyClicks(script, QStringLiteral("typed"));
    editor.saveElsewhere("x");
    editor.comeBack();
    QVERIFY(!editor.line().isEmpty());
    QVERIFY(script->hasFocus());
    QCOMPARE(script->toPlainText(), QStringLiteral("typedCLEAR"));
    QVERIFY(!editor.project.modified);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
}

void ReloadOfferTest::doesNotLookUnderADialog() {
    Shared editor;
    editor.saveElsewhere("x");
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.comeBack();
    QCOMPARE(editor.line(), QString());
    dialog.hide();
    editor.comeBack();
    QCOMPARE(editor.line(), changedLine);
}

QTEST_MAIN(ReloadOfferTest)
#include "ReloadOfferTest.moc"
