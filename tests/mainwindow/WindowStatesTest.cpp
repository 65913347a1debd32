#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"

#include <QMenu>
#include <QWindow>

#include <algorithm>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr const char* projectCommands[] = {"miOptionSystemCfg", "miOptionModbusSetting", "miVarLst",
                                           "miOptionMsgLst"};

/// Of the Tools menu: what needs no open project.
constexpr const char* withoutProject[] = {"miToolsRestore", "miToolsTry", "miToolsPageHelp"};

bool worksWithoutProject(const QAction& entry) {
    return std::ranges::any_of(withoutProject,
                               [&](const char* name) { return entry.objectName() == QLatin1String(name); });
}

/// What is enabled, as one line: "save" stands for the menu entry, "SAVE" for the button, and so on.
QString enabledCommands(const EditorFixture& editor) {
    QStringList names;
    const auto note = [&names](bool enabled, const char* name) {
        if (enabled)
            names << QString::fromLatin1(name);
    };
    note(editor.enabled("miFileSave"), "save");
    note(editor.enabled("SAVE"), "SAVE");
    note(editor.enabled("miFileSaveAs"), "saveas");
    note(editor.enabled("miLinkUpload"), "upload");
    note(editor.enabled("UPLOAD"), "UPLOAD");
    const bool pages = editor.find<QWidget>("tabDetails")->isEnabled();
    note(pages, "pages");
    note(editor.find<QWidget>("trvSystem")->isEnabled() != pages, "tree-differs");
    for (const char* name : projectCommands)
        note(editor.enabled(name) != pages, name);
    for (const char* menu : {"mnuEdit", "mnuTools"}) {
        for (const QAction* entry : editor.find<QMenu>(menu)->actions())
            note(!entry->isSeparator() && !worksWithoutProject(*entry) && entry->isEnabled() != pages,
                 "an-entry-differs-from-the-pages");
    }
    for (const QAction* entry : editor.find<QMenu>("mnuView")->actions())
        note(!entry->isEnabled(), "a-view-is-disabled");
    for (const char* name : {"miFileNew", "miFileOpen", "miFileExit", "miLinkDownload", "miHelpContext",
                             "miHelpAbout", "NEW", "OPEN", "DOWNLOAD"})
        note(!editor.enabled(name), "always-enabled-is-disabled");
    for (const char* name : withoutProject)
        note(!editor.enabled(name), name);
    return names.join(u' ');
}

QString caption(const QString& shown) {
    return QStringLiteral("Orvista Message Editor - [%1]").arg(shown);
}

const QString plainCaption = QStringLiteral("Orvista Message Editor");

} // namespace

/// Captions and enabled commands of the real window in every state of a project's life.
class WindowStatesTest : public QObject {
    Q_OBJECT
private slots:
    void startUp();
    void newProject();
    void cancelledNewIsTheResetState();
    void cancelledOpenLosesTheProjectWhateverTheAnswer();
    void saved();
    void modifiedAfterSaving();
    void opened();
    void failedOpen();
    void savedAs();
    void savedAsFromTheUnnamedStart();
    void savedAsWithAShortNameKeepsUnappliedEdits();
    void downloaded();
    void failedSaveStaysModified();
    void newAsksAndSaves();
    void aNameThatLooksLikeAMarkIsShownAsItIs();
};

void WindowStatesTest::startUp() {
    EditorFixture editor;
    editor.start();
    QCOMPARE(enabledCommands(editor), QStringLiteral("saveas upload UPLOAD"));
    QCOMPARE(editor.title(), plainCaption);
}

void WindowStatesTest::newProject() {
    EditorFixture editor;
    editor.startWithNewProject("Plant2");
    QCOMPARE(enabledCommands(editor), QStringLiteral("save SAVE saveas UPLOAD pages"));
    QCOMPARE(editor.title(), caption("Plant2*"));
    QCOMPARE(editor.text("txtSystemName"), QStringLiteral("Plant2"));
    QVERIFY(std::filesystem::is_empty(systemPath(editor.projectFolder.path())));
}

void WindowStatesTest::cancelledNewIsTheResetState() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.messages.answers = {Answer::No};
    editor.trigger("miFileNew");
    QCOMPARE(enabledCommands(editor), QString());
    QCOMPARE(editor.title(), plainCaption);
    QCOMPARE(editor.messages.asked,
             std::vector<std::string>{"Do you want to save current project before create new one?"});
}

void WindowStatesTest::cancelledOpenLosesTheProjectWhateverTheAnswer() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[0] = "lost";
    editor.messages.answers = {Answer::No};
    editor.trigger("miFileOpen");
    QCOMPARE(editor.messages.asked,
             std::vector<std::string>{"Do you want to save current project before open new one?"});
    QCOMPARE(editor.title(), plainCaption);
    QCOMPARE(enabledCommands(editor), QString());
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR"));
}

void WindowStatesTest::saved() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("miFileSave");
    QCOMPARE(enabledCommands(editor), QStringLiteral("saveas upload UPLOAD pages"));
    QCOMPARE(editor.title(), caption("Line3"));
    for (const char* file :
         {"Line3.orx", "modbus.adr", "stdmsg.ilm", "altmsg.ilm", "ilmvar.def", "default.pls"})
        QVERIFY2(std::filesystem::exists(systemPath(editor.projectFolder.file(file))), file);
}

void WindowStatesTest::modifiedAfterSaving() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("miFileSave");
    editor.showPage("C1");
    editor.type("txtSystemIP", QStringLiteral("127.0.0.1"));
    QCOMPARE(enabledCommands(editor), QStringLiteral("save SAVE saveas upload UPLOAD pages"));
    QCOMPARE(editor.title(), caption("Line3*"));
}

void WindowStatesTest::opened() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("miFileSave");
    editor.newProject("Other");
    editor.messages.answers = {Answer::No};
    editor.openProject("Line3");
    QCOMPARE(enabledCommands(editor), QStringLiteral("saveas upload UPLOAD pages"));
    QCOMPARE(editor.title(), caption("Line3"));
}

void WindowStatesTest::failedOpen() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("miFileSave");
    editor.openProject("Gone");
    QCOMPARE(enabledCommands(editor), QString());
    QCOMPARE(editor.title(), plainCaption);
    QCOMPARE(editor.messages.shown[0].text, "Unable to open " + editor.projectFolder.file("Gone.orx"));
}

void WindowStatesTest::savedAs() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("Line4.orx"));
    editor.trigger("miFileSaveAs");
    QCOMPARE(enabledCommands(editor), QStringLiteral("saveas upload UPLOAD pages"));
    QCOMPARE(editor.title(), caption("Line4"));
    QCOMPARE(editor.text("txtSystemName"), QStringLiteral("Line4"));
    QCOMPARE(editor.chooser.proposedNames, std::vector<std::string>{"Line3"});
    QCOMPARE(editor.history.rows()[0], editor.projectFolder.file("Line4"));
}

void WindowStatesTest::savedAsFromTheUnnamedStart() {
    EditorFixture editor;
    editor.start();
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("First.orx"));
    editor.trigger("miFileSaveAs");
    QCOMPARE(enabledCommands(editor), QStringLiteral("saveas upload UPLOAD pages"));
    QCOMPARE(editor.title(), caption("First"));
}

void WindowStatesTest::savedAsWithAShortNameKeepsUnappliedEdits() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C2");
    editor.type("txtNewAltAddr", QStringLiteral("500"));
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("ab"));
    editor.trigger("miFileSaveAs");
    QVERIFY(editor.project.ProjName.empty());
    QCOMPARE(editor.title(), plainCaption);
    QCOMPARE(editor.text("txtNewAltAddr"), QStringLiteral("500"));
}

void WindowStatesTest::downloaded() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.window->lifecycle().InitProject();
    editor.window->lifecycle().adoptDownloadedProject(editor.projectNamed("Fetched"));
    QCOMPARE(enabledCommands(editor), QStringLiteral("save SAVE saveas pages"));
    QCOMPARE(editor.title(), caption("Fetched*"));
    editor.trigger("SAVE");
    QCOMPARE(enabledCommands(editor), QStringLiteral("saveas upload UPLOAD pages"));
}

void WindowStatesTest::failedSaveStaysModified() {
    EditorFixture editor;
    editor.startWithNewProject();
    std::filesystem::remove_all(systemPath(editor.projectFolder.path()));
    editor.trigger("SAVE");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "unable to open " + editor.projectFolder.file("Line3.orx"));
    QCOMPARE(editor.title(), caption("Line3*"));
    QVERIFY(editor.enabled("SAVE"));
    // The same failure stops New, and the project stays.
    editor.messages.answers = {Answer::Yes};
    editor.trigger("NEW");
    QCOMPARE(editor.title(), caption("Line3*"));
    QCOMPARE(editor.chooser.newProjectCaptions.size(), std::size_t{1});
}

void WindowStatesTest::newAsksAndSaves() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.messages.answers = {Answer::Yes};
    editor.newProject("Line4");
    QVERIFY(std::filesystem::exists(systemPath(editor.projectFolder.file("Line3.orx"))));
    QCOMPARE(editor.title(), caption("Line4*"));
}

void WindowStatesTest::aNameThatLooksLikeAMarkIsShownAsItIs() {
    EditorFixture editor;
    editor.startWithNewProject("a[");
    QCOMPARE(editor.window->windowHandle()->title(), caption("a[*"));
}

QTEST_MAIN(WindowStatesTest)
#include "WindowStatesTest.moc"
