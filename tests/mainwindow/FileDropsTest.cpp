#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"

#include <QDialog>
#include <QDropEvent>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QUrl>
#include <QWindow>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The editor on which files are dropped, with a project Other on the disk.
struct DroppedOn : EditorFixture {
    DroppedOn() {
        startWithNewProject();
        Project other;
        other.STDMSG[2] = "dropped";
        ScriptedMessages silent;
        DocMgrModule::SaveProject(projectFolder.path(), "Other", other, {environment.paths, silent});
    }
    /// Drags the files over the window at the middle of that widget, and drops them there.
    /// \returns whether the window took them
    bool drop(const std::vector<std::string>& files, const char* over = "tabDetails") const {
        QMimeData data;
        QList<QUrl> urls;
        for (const std::string& file : files)
            urls << QUrl::fromLocalFile(QString::fromStdString(file));
        data.setUrls(urls);
        return dropData(data, over);
    }
    bool dropData(QMimeData& data, const char* over) const {
        auto* const widget = find<QWidget>(over);
        const QPoint at = widget->mapTo(window.get(), widget->rect().center());
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window->windowHandle(), &enter);
        QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window->windowHandle(), &move);
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window->windowHandle(), &event);
        const bool taken = enter.isAccepted() && event.isAccepted();
        QCoreApplication::processEvents();
        return taken;
    }
    std::string other() const { return projectFolder.file("Other.orx"); }
};

} // namespace

class FileDropsTest : public QObject {
    Q_OBJECT
private slots:
    void aDroppedProjectIsOpened();
    void theOpenProjectIsAskedForFirst();
    void aProjectDroppedOnABoxIsOpenedToo();
    void aProjectThatCannotBeReadLeavesNoProject();
    void aTableOfNamesOpensTheNames();
    void otherFilesAreNotTaken();
    void textIsStillTakenByTheBox();
    void nothingIsTakenUnderADialog();
};

void FileDropsTest::aDroppedProjectIsOpened() {
    DroppedOn editor;
    editor.trigger("miFileSave");
    QVERIFY(editor.drop({editor.other()}));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Other]"));
    QCOMPARE(editor.project.STDMSG[2], std::string("dropped\r\n"));
    QCOMPARE(editor.chooser.existingAsked, 0);
}

void FileDropsTest::theOpenProjectIsAskedForFirst() {
    DroppedOn editor;
    editor.messages.answers = {Answer::Yes};
    QVERIFY(editor.drop({editor.other()}));
    QCOMPARE(editor.messages.asked,
             std::vector<std::string>{"Do you want to save current project before open new one?"});
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Other]"));
    QVERIFY(std::filesystem::exists(systemPath(editor.projectFolder.file("Line3.orx"))));
}

void FileDropsTest::aProjectDroppedOnABoxIsOpenedToo() {
    DroppedOn editor;
    editor.trigger("miFileSave");
    editor.showMessage("R3");
    QVERIFY(editor.drop({editor.other()}, "txtMsg"));
    QCOMPARE(editor.find<QPlainTextEdit>("txtMsg")->toPlainText(), QStringLiteral("dropped\n"));
}

void FileDropsTest::aProjectThatCannotBeReadLeavesNoProject() {
    DroppedOn editor;
    editor.trigger("miFileSave");
    const std::string gone = editor.projectFolder.file("Gone.ORX");
    QVERIFY(editor.drop({gone}));
    QCOMPARE(editor.messages.shown.back().text, "Unable to open " + gone);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor"));
    QVERIFY(!editor.enabled("miEditUndo"));
}

void FileDropsTest::aTableOfNamesOpensTheNames() {
    DroppedOn editor;
    const std::string table = editor.projectFolder.file("names.csv");
    writeBytes(table, "name,label\nSTDMSG3,Level\n");
    onModal(QStringLiteral("frmNames"), [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    QVERIFY(editor.drop({table}));
    QVERIFY(allModalsServed());
}

void FileDropsTest::otherFilesAreNotTaken() {
    DroppedOn editor;
    QVERIFY(!editor.drop({editor.projectFolder.file("modbus.adr")}));
    QVERIFY(!editor.drop({editor.other(), editor.other()}));
    QMimeData link;
    link.setUrls({QUrl(QStringLiteral("http://127.0.0.1/Other.orx"))});
    QVERIFY(!editor.dropData(link, "tabDetails"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
}

void FileDropsTest::textIsStillTakenByTheBox() {
    DroppedOn editor;
    editor.showMessage("R3");
    QMimeData text;
    text.setText(QStringLiteral("STILL 5"));
    QVERIFY(editor.dropData(text, "txtMsg"));
    QVERIFY(editor.find<QPlainTextEdit>("txtMsg")->toPlainText().contains(QStringLiteral("STILL 5")));
}

void FileDropsTest::nothingIsTakenUnderADialog() {
    DroppedOn editor;
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    QVERIFY(!editor.drop({editor.other()}));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
}

QTEST_MAIN(FileDropsTest)
#include "FileDropsTest.moc"
