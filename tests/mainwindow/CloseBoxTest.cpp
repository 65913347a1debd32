#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"

#include "tests/support/ExpectedFiles.h"
#include "widgets/DeviceTextEdit.h"

#include <QPushButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::vector<std::string> question{"Do you want to save current project before exit?"};

void typeAddresses(const EditorFixture& editor, const QString& address) {
    editor.showPage("C2");
    for (const char* box : {"txtNewAltAddr", "txtNewAIAddr", "txtNewDIAddr"})
        editor.type(box, address);
}

bool exists(const std::string& path) {
    return std::filesystem::exists(systemPath(path));
}

} // namespace

class CloseBoxTest : public QObject {
    Q_OBJECT
private slots:
    void closesAtOnceWhenEverythingIsSaved();
    void cancelKeepsTheWindow();
    void noClosesWithoutSaving();
    void yesSaves();
    void yesAppliesWhatIsOnThePagesFirst();
    void unappliedEditsAloneAskToo();
    void aFailedSaveKeepsTheWindow();
    void aFailedDeviceFileClosesWithItsMessage();
    void anAddressThatDoesNotFitKeepsTheWindow();
    void emptiedAddressBoxesAreNotApplied();
    void theResetStateIsNotAskedFor();
    void anUnnamedProjectIsSavedAs();
};

void CloseBoxTest::closesAtOnceWhenEverythingIsSaved() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    QVERIFY(editor.window->close());
    QVERIFY(editor.messages.asked.empty());
}

void CloseBoxTest::cancelKeepsTheWindow() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.messages.answers = {Answer::Cancel};
    QVERIFY(!editor.window->close());
    QVERIFY(editor.window->isVisible());
    QCOMPARE(editor.messages.asked, question);
}

void CloseBoxTest::noClosesWithoutSaving() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.messages.answers = {Answer::No};
    QVERIFY(editor.window->close());
    QVERIFY(!exists(editor.projectFolder.file("Line3.orx")));
}

void CloseBoxTest::yesSaves() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.messages.answers = {Answer::Yes};
    QVERIFY(editor.window->close());
    QVERIFY(exists(editor.projectFolder.file("Line3.orx")));
}

void CloseBoxTest::yesAppliesWhatIsOnThePagesFirst() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R7");
    QTest::keyClicks(editor.find<DeviceTextEdit>("txtMsg"), QStringLiteral("typed "));
    typeAddresses(editor, QStringLiteral("500"));
    editor.messages.answers = {Answer::Yes};
    QVERIFY(editor.window->close());
    QCOMPARE(editor.project.STDMSG[6], std::string("typed CLEAR"));
    QCOMPARE(editor.project.AlertMessage, 500);
    QVERIFY(fileBytes(editor.projectFolder.file("stdmsg.ilm")).find("typed CLEAR") != std::string::npos);
}

void CloseBoxTest::unappliedEditsAloneAskToo() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.trigger("SAVE");
    editor.showMessage("E2");
    QTest::keyClicks(editor.find<DeviceTextEdit>("txtMsg"), QStringLiteral("typed "));
    QVERIFY(!editor.project.modified);
    editor.showPage("C1");
    editor.messages.answers = {Answer::Cancel};
    QVERIFY(!editor.window->close());
    QCOMPARE(editor.messages.asked, question);
}

void CloseBoxTest::aFailedSaveKeepsTheWindow() {
    EditorFixture editor;
    editor.startWithNewProject();
    std::filesystem::remove_all(systemPath(editor.projectFolder.path()));
    editor.messages.answers = {Answer::Yes};
    QVERIFY(!editor.window->close());
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QVERIFY(editor.project.modified);
}

void CloseBoxTest::aFailedDeviceFileClosesWithItsMessage() {
    EditorFixture editor;
    editor.startWithNewProject();
    std::filesystem::create_directory(systemPath(editor.projectFolder.file("default.pls")));
    editor.messages.answers = {Answer::Yes};
    QVERIFY(editor.window->close());
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "unable to open " + editor.projectFolder.file("default.pls"));
}

void CloseBoxTest::anAddressThatDoesNotFitKeepsTheWindow() {
    EditorFixture editor;
    editor.startWithNewProject();
    typeAddresses(editor, QStringLiteral("99999999999"));
    editor.messages.answers = {Answer::Yes};
    QVERIFY(!editor.window->close());
    QCOMPARE(editor.messages.shown[0].text, std::string("Overflow"));
    QVERIFY(!exists(editor.projectFolder.file("Line3.orx")));
}

void CloseBoxTest::emptiedAddressBoxesAreNotApplied() {
    EditorFixture editor;
    editor.startWithNewProject();
    typeAddresses(editor, QStringLiteral("500"));
    editor.click("btnRestoreDefault");
    QVERIFY(editor.find<QPushButton>("btnModBusApply")->isEnabled());
    editor.messages.answers = {Answer::Yes};
    QVERIFY(editor.window->close());
    QCOMPARE(fileBytes(editor.projectFolder.file("modbus.adr")), expectedAddressMap);
}

void CloseBoxTest::theResetStateIsNotAskedFor() {
    EditorFixture editor;
    editor.startWithNewProject();
    typeAddresses(editor, QStringLiteral("500"));
    editor.trigger("miFileSave");
    editor.trigger("miFileNew"); // the dialog is cancelled
    QVERIFY(editor.window->close());
    QVERIFY(editor.messages.asked.empty());
}

void CloseBoxTest::anUnnamedProjectIsSavedAs() {
    EditorFixture editor;
    editor.start();
    editor.window->lifecycle().SetModified(true);
    editor.messages.answers = {Answer::Yes, Answer::Yes};
    QVERIFY(!editor.window->close()); // the save dialog is cancelled
    editor.chooser.saveAsPaths.push_back(editor.projectFolder.file("Late.orx"));
    QVERIFY(editor.window->close());
    QVERIFY(exists(editor.projectFolder.file("Late.orx")));
}

QTEST_MAIN(CloseBoxTest)
#include "CloseBoxTest.moc"
