#include "mainwindow/PanelDock.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"

#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

#include <chrono>
#include <filesystem>

using namespace orvista;
using namespace orvista::testing;
namespace fs = std::filesystem;

namespace {

/// The editor with a saved project, beside somebody who saves the same project.
struct Shared : EditorFixture {
    Shared() {
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
    QString line() const {
        const auto* const label = window->findChild<QLabel*>(QStringLiteral("lblReload"));
        return label && label->isVisible() ? label->text() : QString();
    }
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
    void reloadingAsksForChangesFirst();
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

void ReloadOfferTest::reloadingAsksForChangesFirst() {
    Shared editor;
    editor.saveElsewhere("x");
    editor.comeBack();
    editor.type("txtSystemIP", QStringLiteral("127.0.0.9"));
    editor.messages.answers = {Answer::No};
    editor.click("btnReload");
    QCOMPARE(editor.messages.asked,
             std::vector<std::string>{"Do you want to save current project before open new one?"});
    QCOMPARE(editor.project.STDMSG[2], std::string("x\r\n"));
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
