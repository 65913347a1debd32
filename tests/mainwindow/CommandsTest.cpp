#include "link/TransferCommands.h"
#include "model/Numbers.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QToolBar>

using namespace orvista;
using namespace orvista::testing;

namespace {

class RecordedTransfer final : public TransferCommands {
public:
    void upload() override { calls << QStringLiteral("upload"); }
    FetchedDisplay download() override {
        calls << QStringLiteral("download");
        return {};
    }
    FetchedDisplay fetch(const std::string&, const std::string&) override { return {}; }
    QStringList calls;
};

class OverflowingTransfer final : public TransferCommands {
public:
    void upload() override { throw Overflow(); }
    FetchedDisplay download() override { throw Overflow(); }
    FetchedDisplay fetch(const std::string&, const std::string&) override { throw Overflow(); }
};

QStringList captions(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions())
        texts << action->objectName() + u'=' + action->text();
    return texts;
}

} // namespace

class CommandsTest : public QObject {
    Q_OBJECT
private slots:
    void menusHoldTheirEntries();
    void everyViewHasALetterOfItsOwn();
    void toolbarButtonsHaveTheirTexts();
    void menuAndToolbarAreSeparateActions();
    void shortcutsWork();
    void everyToolbarKeyRunsItsCommand();
    void anUnknownToolbarKeyDoesNothing();
    void linkEntriesRunTheTransfer();
    void overflowInACommandEndsInOneBox();
    void exitEndsTheProgramWithoutAQuestion();
    void helpOpensTheFileBesideTheProgram();
    void theStatusBarShowsModelDateAndTime();
    void hintsDoNotReachTheStatusBar();
    void noMenuOffersToHideTheToolbar();
};

void CommandsTest::menusHoldTheirEntries() {
    EditorFixture editor;
    editor.load();
    QStringList menus;
    for (const QAction* action : editor.window->menuBar()->actions())
        menus << action->menu()->objectName() + u'=' + action->text();
    QCOMPARE(menus, (QStringList{"mnuFile=&File", "mnuLink=&Link", "mnuOption=&Option", "mnuEdit=&Edit",
                                 "mnuView=&View", "mnuTools=&Tools", "mnuHelp=&Help"}));
    QCOMPARE(captions(*editor.find<QMenu>("mnuFile")),
             (QStringList{"miFileNew=&New", "miFileOpen=&Open", "miFileSave=Save", "miFileSaveAs=Save as",
                          "miFileExit=Exit"}));
    QCOMPARE(
        captions(*editor.find<QMenu>("mnuLink")),
        (QStringList{"miLinkUpload=Upload Project to Ulvo", "miLinkDownload=Download Project from Ulvo"}));
    QCOMPARE(captions(*editor.find<QMenu>("mnuOption")),
             (QStringList{"miOptionSystemCfg=System", "miOptionModbusSetting=Modbus Setting",
                          "miVarLst=Variable List", "miOptionMsgLst=Message List"}));
    QCOMPARE(captions(*editor.find<QMenu>("mnuHelp")),
             (QStringList{"miHelpContext=Context", "miHelpAbout=About Quillmark"}));
}

void CommandsTest::toolbarButtonsHaveTheirTexts() {
    EditorFixture editor;
    editor.load();
    QStringList rows;
    for (const QAction* action : editor.find<QToolBar>("ToolbarMain")->actions()) {
        rows << QStringList{action->text(), action->objectName(), action->toolTip(), action->whatsThis()}
                    .join(u'|');
        QVERIFY(!action->icon().isNull());
    }
    QCOMPARE(rows,
             (QStringList{"New|NEW|Create New Orvista Project|New Project Files",
                          "Open|OPEN|Open Existing Orvista Project|Open Project Files",
                          "Save|SAVE|Save Current Orvista Project|Save Project Files",
                          "Upload|UPLOAD|Upload Project Files|Upload Setting to Ulvo LX400D",
                          "Download|DOWNLOAD|Download Project Files|Download Setting from Ulvo LX400D"}));
}

void CommandsTest::menuAndToolbarAreSeparateActions() {
    EditorFixture editor;
    editor.startWithNewProject();
    QVERIFY(editor.enabled("UPLOAD"));
    QVERIFY(!editor.enabled("miLinkUpload"));
}

void CommandsTest::shortcutsWork() {
    EditorFixture editor;
    editor.start();
    editor.chooser.newProjects.push_back(editor.projectNamed("Line3"));
    QTest::keyClick(editor.window.get(), Qt::Key_N, Qt::ControlModifier);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    QTest::keyClick(editor.window.get(), Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("Line4.orx"));
    QTest::keyClick(editor.window.get(), Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line4]"));
    editor.chooser.existingProjects.push_back(editor.projectNamed("Line3"));
    QTest::keyClick(editor.window.get(), Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    QTest::keyClick(editor.window.get(), Qt::Key_F1);
    QCOMPARE(editor.help.opened.size(), std::size_t{1});
}

void CommandsTest::everyToolbarKeyRunsItsCommand() {
    EditorFixture editor;
    RecordedTransfer transfer;
    editor.start().useTransfer(transfer);
    editor.chooser.newProjects.push_back(editor.projectNamed("Line3"));
    editor.trigger("NEW");
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
    editor.trigger("SAVE");
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3]"));
    QVERIFY(editor.chooser.proposedNames.empty());
    editor.trigger("OPEN");
    QCOMPARE(editor.chooser.existingAsked, 1);
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor"));
    editor.trigger("DOWNLOAD");
    editor.newProject("Line5");
    editor.trigger("UPLOAD");
    QCOMPARE(transfer.calls, (QStringList{"download", "upload"}));
}

void CommandsTest::anUnknownToolbarKeyDoesNothing() {
    EditorFixture editor;
    editor.startWithNewProject();
    auto* const toolbar = editor.find<QToolBar>("ToolbarMain");
    for (const char* key : {"new", "PRINT", ""}) {
        QAction* const action = toolbar->addAction(QStringLiteral("Other"));
        action->setObjectName(QString::fromLatin1(key));
        action->trigger();
    }
    QCOMPARE(editor.chooser.newProjectCaptions.size(), std::size_t{1});
    QVERIFY(editor.messages.asked.empty());
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
}

void CommandsTest::linkEntriesRunTheTransfer() {
    EditorFixture editor;
    RecordedTransfer transfer;
    editor.startWithNewProject().useTransfer(transfer);
    editor.trigger("miFileSave");
    editor.trigger("miLinkUpload");
    editor.trigger("miLinkDownload");
    QCOMPARE(transfer.calls, (QStringList{"upload", "download"}));
}

void CommandsTest::overflowInACommandEndsInOneBox() {
    EditorFixture editor;
    OverflowingTransfer transfer;
    editor.startWithNewProject().useTransfer(transfer);
    editor.trigger("UPLOAD");
    editor.trigger("miLinkDownload");
    QCOMPARE(editor.messages.shown.size(), std::size_t{2});
    for (const auto& box : editor.messages.shown)
        QCOMPARE(box.text, std::string("Overflow"));
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Line3*]"));
}

void CommandsTest::exitEndsTheProgramWithoutAQuestion() {
    EditorFixture editor;
    editor.startWithNewProject();
    QVERIFY(editor.project.modified);
    editor.trigger("miFileExit");
    QCOMPARE(editor.programEnds, 1);
    QVERIFY(editor.messages.asked.empty());
    QVERIFY(!std::filesystem::exists(systemPath(editor.projectFolder.file("Line3.orx"))));
}

void CommandsTest::helpOpensTheFileBesideTheProgram() {
    EditorFixture editor;
    editor.start();
    editor.trigger("miHelpContext");
    QCOMPARE(editor.help.opened, std::vector<std::string>{editor.programFolder.file("OR102.chm")});
    QVERIFY(editor.messages.shown.empty());
}

void CommandsTest::theStatusBarShowsModelDateAndTime() {
    EditorFixture editor;
    editor.start();
    auto* const bar = editor.find<QStatusBar>("StatusBarMain");
    QCOMPARE(bar->findChild<QLabel*>("panelModel")->text(), QStringLiteral("LX-400D"));
    auto* const date = bar->findChild<QLabel*>("panelDate");
    auto* const time = bar->findChild<QLabel*>("panelTime");
    QTRY_COMPARE(date->text(), QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
    QCOMPARE(time->toolTip(), QStringLiteral("Current Date/Time"));
    QVERIFY(date->toolTip().isEmpty());
    // The bar's own clock brings back what was wiped out.
    time->clear();
    QTRY_COMPARE(time->text(), QLocale().toString(QTime::currentTime(), QLocale::ShortFormat));
}

void CommandsTest::hintsDoNotReachTheStatusBar() {
    EditorFixture editor;
    editor.start();
    auto* const bar = editor.find<QStatusBar>("StatusBarMain");
    QStatusTipEvent hint(QStringLiteral("New Project Files"));
    QApplication::sendEvent(editor.window.get(), &hint);
    QVERIFY(bar->currentMessage().isEmpty());
    for (QAction* action : editor.window->findChildren<QAction*>())
        action->hover();
    QVERIFY(bar->currentMessage().isEmpty());
    QVERIFY(bar->findChild<QLabel*>("panelModel")->isVisible());
}

void CommandsTest::noMenuOffersToHideTheToolbar() {
    EditorFixture editor;
    editor.start();
    for (QWidget* const place : {static_cast<QWidget*>(editor.window->menuBar()),
                                 static_cast<QWidget*>(editor.find<QToolBar>("ToolbarMain")),
                                 static_cast<QWidget*>(editor.find<QStatusBar>("StatusBarMain"))}) {
        const QPoint at(place->width() - 2, place->height() / 2);
        QContextMenuEvent click(QContextMenuEvent::Mouse, at, place->mapToGlobal(at));
        QApplication::sendEvent(place, &click);
        QVERIFY(!QApplication::activePopupWidget());
    }
}

void CommandsTest::everyViewHasALetterOfItsOwn() {
    EditorFixture editor;
    editor.load();
    QStringList letters;
    for (const QAction* const entry : editor.find<QMenu>("mnuView")->actions()) {
        if (entry->isSeparator())
            continue;
        const QString caption = entry->text().toUpper();
        const auto mark = caption.indexOf(u'&');
        QVERIFY2(mark >= 0, qPrintable(caption));
        const QString letter = caption.sliced(mark + 1, 1);
        QVERIFY2(!letters.contains(letter), qPrintable(caption));
        letters << letter;
    }
    QVERIFY(letters.size() >= 5);
}

QTEST_MAIN(CommandsTest)
#include "CommandsTest.moc"
