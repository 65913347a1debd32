#include "compare/DisplayContents.h"
#include "link/TransferControls.h"
#include "link/forms/DeviceTransfer.h"
#include "model/ProjectFile.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/FtpTestServer.h"
#include "tests/support/ModalDriver.h"
#include "widgets/PanelView.h"

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableView>

#include <filesystem>
#include <map>
#include <optional>

using namespace orvista;
using namespace orvista::testing;

namespace {

constexpr int labelColumn = 1;

/// The user leaves the connection dialog with Connect, after typing this port.
void connectTo(const FtpTestServer& server) {
    onModal(QStringLiteral("frmConnection"), [port = QString::number(server.port())](QWidget* dialog) {
        auto* const box = dialog->findChild<QLineEdit*>(QStringLiteral("txtPort"));
        QCOMPARE(dialog->findChild<QLineEdit*>(QStringLiteral("txtIP"))->text(), QStringLiteral("127.0.0.1"));
        box->selectAll();
        QTest::keyClicks(box, port);
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("btnOK")), Qt::LeftButton);
    });
}

const QString nothingYet = QStringLiteral("Nothing to compare yet. Use Tools > Compare.");

QString fingerprintOf(const Project& project) {
    return QString::fromStdString(fingerprint(DisplayContents::ofProject(project)));
}

/// The real main window with the real transfer, and another project to compare with.
struct ComparingEditor : EditorFixture {
    ComparingEditor() {
        startWithNewProject("Plant");
        type("txtSystemIP", QStringLiteral("127.0.0.1"));
        transfer.emplace(project, window->lifecycle(), chooser, messages, *window, &makeTransferControl);
        window->useTransfer(*transfer);
    }
    ~ComparingEditor() { window.reset(); }

    void saveAs(const TemporaryFolder& folder, const Project& other) {
        const PathRules paths = PathRules::native();
        QCOMPARE(DocMgrModule::SaveProject(folder.path(), "Other", other, {paths, messages}),
                 DocMgrModule::SaveOutcome::Saved);
    }
    /// Compares with the project in that folder through the menu.
    void compareWith(const TemporaryFolder& folder) {
        chooser.existingProjects.push_back({folder.path(), "Other"});
        trigger("miToolsCompareProject");
    }

    /// Saves the project, and opens it again as the master of these displays.
    void makeMaster(const QString& rows) {
        trigger("miFileSave");
        writeBytes(projectFolder.file("displays.csv"), ("name,address,port,line\n" + rows).toStdString());
        writeBytes(projectFolder.file("Plant.notes.json"),
                   R"({"version":1,"master":{"list":"displays.csv"}})");
        openProject("Plant");
    }

    /// Save, and an upload to that display.
    void saveAndUpload(const FtpTestServer& server) {
        trigger("miFileSave");
        connectTo(server);
        trigger("miLinkUpload");
        messages.shown.clear();
    }
    /// A download into a folder of its own.
    void downloadFrom(const FtpTestServer& server) {
        chooser.newProjects.push_back({fetched.path(), "Fetched"});
        connectTo(server);
        trigger("miLinkDownload");
    }

    QTableView* table() const { return find<QTableView>("tblComparison"); }
    /// Without the fingerprints behind it.
    QString summary() const {
        const QString text = find<QLabel>("lblComparison")->text();
        return text.left(text.lastIndexOf(QStringLiteral(" (fingerprint")));
    }
    QStringList rows() const {
        QStringList lines;
        const QAbstractItemModel& model = *table()->model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column)
                if (column != labelColumn)
                    cells << model.index(row, column).data().toString();
            lines << cells.join(u'|');
        }
        return lines;
    }
    void select(int row) const { table()->selectRow(row); }
    QPushButton* takeTheirs() const { return find<QPushButton>("btnTakeTheirs"); }

    std::optional<DeviceTransfer> transfer;
    TemporaryFolder other;
    TemporaryFolder fetched;
};

/// Every file below a folder with its bytes.
std::map<std::string, std::string> filesBelow(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(systemPath(folder)))
        if (entry.is_regular_file())
            files[utf8Path(entry.path())] = fileBytes(utf8Path(entry.path()));
    return files;
}

/// A project that differs in an address, a variable and two lines of a message.
Project otherProject() {
    Project project;
    project.DigitalInput = 150;
    project.CoilVar[4].onText = "L\xE4uft";
    project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nACT STILL 2000";
    return project;
}

const QStringList otherRows{
    QStringLiteral("address map|DigitalInput|100|150"), QStringLiteral("CoilVar5|on|ON|L\u00E4uft"),
    QStringLiteral("STDMSG3|||TEXT 0 0 RED BLACK \"Level\""), QStringLiteral("STDMSG3|||ACT STILL 2000")};

} // namespace

class ComparisonTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }
    void listsWhatAnotherProjectHasOtherwise();
    void saysThatNothingDiffers();
    void changesNothingOnEitherSide();
    void namesBitmapsThatDiffer();
    void aRowLeadsToItsLine();
    void takesTheSelectedRowsOverInOneStep();
    void thePicturesFollowColumnsAndValuesOfThePreview();
    void takesOverByKeyboardAlone();
    void takesNothingWhereAnEditIsNotApplied();
    void followsTheProject();
    void anotherProjectHasNothingToBeComparedWith();
    void rowsOfAnItemThatIsNotAppliedSaySo();
    void comparesWithADisplay();
    void comparesWithTheDisplaysOwnProjectOfAMaster();
    void aDisplayThatAMastersListHasNotIsSaid();
    void aCancelledConnectionOpensNothing();
    void aDisplayThatRefusesIsSaidInTheBoxOfDownload();
    void aProjectThatCannotBeReadIsSaidInTheReadersOwnWords();
    void verifiesEveryByteThatUploadSends();
    void verifiesWhatASaveWouldWriteWhereTheProjectIsModified();
    void verifyNamesEveryFileThatIsOtherwise();
    void verifyNamesAMissingFile();
    void verifyTakesAnotherSpellingForTheSame();
    void comparesTheFolderOfAnUnmodifiedProject();
    void comparesTheProjectInMemoryWithItsOwnFile();
    void aFileWithoutADifferentItemIsNamed();
    void aFileThatTheDisplayLacksIsNamedBesideTheBox();
    void aDownloadNamesWhatTheDisplayLacks();
    void aDownloadThatHoldsNoProjectSaysSo();
    void aDownloadOfAFileThatIsNotWholeSaysSo();
    void anEarlierAnswerGoesWhereANewComparisonFails();
    void aCancelledQuestionKeepsTheAnswer();
    void theLineHoldsTheFingerprints();
    void worksOnAProjectOnly();
};

void ComparisonTest::listsWhatAnotherProjectHasOtherwise() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    QVERIFY(!editor.find<QWidget>("dockPanels")->isVisible());
    editor.compareWith(editor.other);
    QCOMPARE(editor.chooser.existingProjectCaptions.back(), std::string("Compare with Project"));
    QVERIFY(editor.table()->isVisible());
    QCOMPARE(editor.find<QTabWidget>("tabPanels")->tabText(0), QStringLiteral("Comparison"));
    QCOMPARE(editor.rows(), otherRows);
    QCOMPARE(editor.summary(), QStringLiteral("4 differences between this project and ") +
                                   QString::fromStdString(editor.other.file("Other.orx")));
    QVERIFY(editor.messages.shown.empty());
}

void ComparisonTest::saysThatNothingDiffers() {
    ComparingEditor editor;
    editor.saveAs(editor.other, editor.project);
    editor.compareWith(editor.other);
    QCOMPARE(editor.rows(), QStringList());
    QVERIFY(editor.summary().startsWith(QStringLiteral("No differences")));
    QVERIFY(!editor.takeTheirs()->isEnabled());
}

void ComparisonTest::changesNothingOnEitherSide() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    std::filesystem::remove(systemPath(editor.other.file("default.pls")));
    editor.trigger("miFileSave");
    const auto mine = filesBelow(editor.projectFolder.path());
    const auto theirs = filesBelow(editor.other.path());
    editor.compareWith(editor.other);
    QCOMPARE(filesBelow(editor.projectFolder.path()), mine);
    QCOMPARE(filesBelow(editor.other.path()), theirs);
    QVERIFY(!editor.project.modified);
}

void ComparisonTest::namesBitmapsThatDiffer() {
    ComparingEditor editor;
    editor.project.STDMSG[0] = "IMG 0 0 RED BLACK A.bmp\r\nIMG 0 0 RED BLACK B.bmp";
    editor.saveAs(editor.other, editor.project);
    writeBytes(editor.projectFolder.file("a.bmp"), "same");
    writeBytes(editor.other.file("A.BMP"), "same");
    writeBytes(editor.projectFolder.file("b.bmp"), "here");
    writeBytes(editor.other.file("b.bmp"), "heres");
    writeBytes(editor.other.file("c.bmp"), "there");
    editor.compareWith(editor.other);
    QCOMPARE(editor.rows(), (QStringList{"b.bmp||4 bytes|5 bytes, differs from byte 5 onwards",
                                         "c.bmp|shown by no message|not there|5 bytes"}));
    QVERIFY(editor.summary().startsWith(QStringLiteral("1 difference ")));
    editor.table()->selectAll();
    QVERIFY(!editor.takeTheirs()->isEnabled());
}

void ComparisonTest::aRowLeadsToItsLine() {
    ComparingEditor editor;
    editor.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Level\"\r\nACT STILL 1000";
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    QCOMPARE(editor.rows().back(), QStringLiteral("STDMSG3|3|ACT STILL 1000|ACT STILL 2000"));
    editor.select(2);
    editor.table()->setFocus();
    QTest::keyClick(editor.table(), Qt::Key_Return);
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    QVERIFY(box->hasFocus());
    QCOMPARE(editor.text("txtMsgName"), QStringLiteral("STDMSG3"));
    QCOMPARE(box->textCursor().selectedText(), QStringLiteral("ACT STILL 1000"));
}

void ComparisonTest::takesTheSelectedRowsOverInOneStep() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.trigger("miFileSave");
    editor.compareWith(editor.other);
    editor.table()->selectAll();
    editor.click("btnTakeTheirs");
    QCOMPARE(editor.project.DigitalInput, 150);
    QCOMPARE(editor.project.CoilVar[4].onText, std::string("L\xE4uft"));
    QCOMPARE(editor.project.STDMSG[2], otherProject().STDMSG[2] + "\r\n");
    QVERIFY(editor.project.modified);
    QCOMPARE(editor.rows(), QStringList());
    QVERIFY(editor.summary().startsWith(QStringLiteral("No differences")));
    QCOMPARE(editor.find<QAction>("miEditUndo")->text(), QStringLiteral("Undo Take Theirs"));
    editor.trigger("miEditUndo");
    QCOMPARE(editor.project.DigitalInput, 100);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.rows(), otherRows);
}

void ComparisonTest::thePicturesFollowColumnsAndValuesOfThePreview() {
    ComparingEditor editor;
    Project theirs;
    theirs.STDMSG[2] = "DISPVAR 0 0 RED BLACK RegVar1\r\nACT STILL 1000";
    editor.saveAs(editor.other, theirs);
    editor.compareWith(editor.other);
    editor.select(0);
    const auto* const panel = editor.find<PanelView>("panelAfter");
    QTRY_VERIFY(panel->isVisible());
    QCOMPARE(panel->accessibleDescription(), QStringLiteral("0.000"));
    QTest::keyClick(editor.find<QComboBox>("cboPreviewValues"), Qt::Key_Down); // Widest
    QCOMPARE(panel->accessibleDescription(), QStringLiteral("-99.999"));
    editor.find<QSpinBox>("spnPreviewColumns")->setValue(96);
    QCOMPARE(panel->shown().size().columns, 96);
}

void ComparisonTest::takesOverByKeyboardAlone() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    editor.table()->setFocus();
    QTest::keyClick(editor.table(), Qt::Key_Down);
    QTest::keyClick(editor.table(), Qt::Key_Up);
    QVERIFY(editor.takeTheirs()->isEnabled());
    QTest::keyClick(editor.table(), Qt::Key_Backtab, Qt::ShiftModifier);
    QVERIFY(editor.takeTheirs()->hasFocus());
    QTest::keyClick(editor.takeTheirs(), Qt::Key_Return);
    QCOMPARE(editor.project.DigitalInput, 150);
    QCOMPARE(editor.rows(), otherRows.mid(1));
    // The row that came in its place is selected.
    QTest::keyClick(editor.takeTheirs(), Qt::Key_Return);
    QCOMPARE(editor.rows(), otherRows.mid(2));
}

void ComparisonTest::takesNothingWhereAnEditIsNotApplied() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("X"));
    editor.compareWith(editor.other);
    editor.table()->selectAll();
    editor.click("btnTakeTheirs");
    QCOMPARE(editor.project.DigitalInput, 100);
    QCOMPARE(editor.project.STDMSG[2], std::string("CLEAR"));
    QCOMPARE(editor.notice(), QStringLiteral("Not done: apply or discard the edit of STDMSG3 first."));
}

void ComparisonTest::followsTheProject() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    editor.showMessage("R3");
    editor.find<QPlainTextEdit>("txtMsg")->setPlainText(QStringLiteral("CLEAR\nACT STILL 2000"));
    QCOMPARE(editor.rows().size(), 4);
    editor.click("btnMsgApply");
    QCOMPARE(editor.rows().size(), 3);
    editor.find<QWidget>("dockPanels")->hide();
    editor.trigger("miEditUndo");
    editor.trigger("miViewPanels");
    QCOMPARE(editor.rows().size(), 4);
}

void ComparisonTest::anotherProjectHasNothingToBeComparedWith() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    editor.messages.answers.push_back(Answer::No);
    editor.newProject("Next");
    QCOMPARE(editor.rows(), QStringList());
    QCOMPARE(editor.summary(), nothingYet);
}

void ComparisonTest::rowsOfAnItemThatIsNotAppliedSaySo() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    editor.showMessage("R3");
    QTest::keyClicks(editor.find<QPlainTextEdit>("txtMsg"), QStringLiteral("X"));
    QCOMPARE(editor.rows().back(), otherRows.back() + QStringLiteral(" (not applied)"));
    QCOMPARE(editor.rows().front(), otherRows.front());
}

void ComparisonTest::comparesWithADisplay() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    for (const char* const name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"})
        server.put(name, fileBytes(editor.other.file(name)));
    server.put("only.bmp", "there");
    const auto mine = filesBelow(editor.projectFolder.path());
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    QCOMPARE(editor.rows(), otherRows + QStringList{"only.bmp|shown by no message|not there|5 bytes"});
    QCOMPARE(editor.summary(),
             QStringLiteral("4 differences between this project and 127.0.0.1:%1").arg(server.port()));
    QVERIFY(editor.messages.shown.empty());
    QCOMPARE(filesBelow(editor.projectFolder.path()), mine);
}

void ComparisonTest::comparesWithTheDisplaysOwnProjectOfAMaster() {
    const FtpTestServer server;
    ComparingEditor editor;
    Project own = otherProject();
    own.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Line 17 \"\r\nACT STILL 2000\r\n";
    editor.saveAs(editor.other, own);
    for (const char* const name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"})
        server.put(name, fileBytes(editor.other.file(name)));
    editor.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Line {line:3}\"\r\nACT STILL 1000\r\n";
    editor.makeMaster(QStringLiteral("Line 17,127.0.0.1,%1,17\nLine 18,127.0.0.1,%2,18\n")
                          .arg(server.port())
                          .arg(server.port() - 1));
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    QCOMPARE(editor.rows(), (otherRows.first(2) + QStringList{"STDMSG3|3|ACT STILL 1000|ACT STILL 2000"}));
    QCOMPARE(editor.summary(), "3 differences between this project and Line 17");
    editor.select(2);
    QVERIFY(!editor.takeTheirs()->isEnabled());
    editor.select(1);
    QTest::mouseClick(editor.takeTheirs(), Qt::LeftButton);
    QCOMPARE(editor.project.CoilVar[4].onText, "L\xE4uft");
    QCOMPARE(editor.rows(), (otherRows.first(1) + QStringList{"STDMSG3|3|ACT STILL 1000|ACT STILL 2000"}));
}

void ComparisonTest::aDisplayThatAMastersListHasNotIsSaid() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    for (const char* const name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls"})
        server.put(name, fileBytes(editor.other.file(name)));
    editor.makeMaster(QStringLiteral("Line 18,127.0.0.1,%1,18\n").arg(server.port() - 1));
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    QCOMPARE(editor.notice(),
             QStringLiteral("The list of displays has no display at 127.0.0.1:%1").arg(server.port()));
}

void ComparisonTest::aCancelledConnectionOpensNothing() {
    ComparingEditor editor;
    const std::pair<const char*, QString> dialogs[] = {
        {"miToolsCompareDisplay", QStringLiteral("Compare with Display")},
        {"miToolsVerify", QStringLiteral("Verify Display")}};
    for (const auto& [entry, title] : dialogs) {
        onModal(QStringLiteral("frmConnection"), [&title = title](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), title);
            dialog->close();
        });
        editor.trigger(entry);
        QVERIFY(!editor.find<QWidget>("dockPanels")->isVisible());
    }
    editor.trigger("miToolsCompareProject");
    QVERIFY(!editor.find<QWidget>("dockPanels")->isVisible());
    QVERIFY(editor.messages.shown.empty());
}

void ComparisonTest::aDisplayThatRefusesIsSaidInTheBoxOfDownload() {
    const FtpTestServer server; // holds no files
    ComparingEditor editor;
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, std::string("Download Fail!"));
    QCOMPARE(editor.notice(),
             QStringLiteral("modbus.adr, ilmvar.def, stdmsg.ilm, altmsg.ilm, default.pls are not there"));
    QVERIFY(!editor.window->findChild<QTableView*>(QStringLiteral("tblComparison")));
}

void ComparisonTest::aProjectThatCannotBeReadIsSaidInTheReadersOwnWords() {
    ComparingEditor editor;
    editor.compareWith(editor.other);
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, "Unable to open " + editor.other.file("Other.orx"));
    QVERIFY(!editor.find<QWidget>("dockPanels")->isVisible());
}

void ComparisonTest::verifiesEveryByteThatUploadSends() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.project.STDMSG[2] = "CLEAR\r\n\r\nSTILL 5";
    writeBytes(editor.projectFolder.file("a.bmp"), "picture");
    editor.trigger("miFileSave");
    // What lies in the folder is what goes, whoever wrote it.
    writeBytes(editor.projectFolder.file("default.pls"), "DISPMSG STDMSG1\r\n");
    connectTo(server);
    editor.trigger("miLinkUpload");
    editor.messages.shown.clear();
    server.put("more.bmp", "of another project");
    const auto mine = filesBelow(editor.projectFolder.path());
    connectTo(server);
    editor.trigger("miToolsVerify");
    QCOMPARE(editor.rows(), QStringList());
    QCOMPARE(editor.summary(),
             QStringLiteral("127.0.0.1:%1 holds every byte that an upload sends").arg(server.port()));
    QVERIFY(editor.messages.shown.empty());
    QCOMPARE(filesBelow(editor.projectFolder.path()), mine);
}

void ComparisonTest::verifiesWhatASaveWouldWriteWhereTheProjectIsModified() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.trigger("miFileSave");
    connectTo(server);
    editor.trigger("miLinkUpload");
    editor.showMessage("R3");
    editor.find<QPlainTextEdit>("txtMsg")->setPlainText(QStringLiteral("CLEAR\nSTILL 5"));
    editor.click("btnMsgApply");
    const auto mine = filesBelow(editor.projectFolder.path());
    const std::string held = server.bytes("stdmsg.ilm");
    connectTo(server);
    editor.trigger("miToolsVerify");
    // In the third block, after "CLEAR": STILL instead of ENDMSG.
    const std::size_t byte = held.find("DEFMSG STDMSG3\r\nCLEAR\r\n") + 24;
    QCOMPARE(editor.rows(),
             (QStringList{QStringLiteral("STDMSG3|2|STILL 5|"),
                          QStringLiteral("stdmsg.ilm||%1 bytes|%2 bytes, differs from byte %3 onwards")
                              .arg(QLocale().toString(held.size() + 9), QLocale().toString(held.size()),
                                   QLocale().toString(byte))}));
    QCOMPARE(editor.summary(),
             QStringLiteral("127.0.0.1:%1 does not hold what an upload sends: stdmsg.ilm (STDMSG3)")
                 .arg(server.port()));
    QCOMPARE(filesBelow(editor.projectFolder.path()), mine);
    QVERIFY(editor.project.modified);
}

void ComparisonTest::verifyNamesEveryFileThatIsOtherwise() {
    const FtpTestServer server;
    ComparingEditor editor;
    writeBytes(editor.projectFolder.file("a.bmp"), "picture");
    writeBytes(editor.projectFolder.file("b.bmp"), "picture");
    editor.trigger("miFileSave");
    connectTo(server);
    editor.trigger("miLinkUpload");
    server.put("a.bmp", "picturE");
    std::filesystem::remove(server.file("b.bmp"));
    server.put("default.pls", "");
    connectTo(server);
    editor.trigger("miToolsVerify");
    QCOMPARE(editor.rows().size(), 3);
    QVERIFY(editor.rows()[0].startsWith(QStringLiteral("default.pls||")));
    QCOMPARE(editor.rows()[1],
             QStringLiteral("a.bmp|shown by no message|7 bytes|7 bytes, differs from byte 7 onwards"));
    QCOMPARE(editor.rows()[2], QStringLiteral("b.bmp|shown by no message|7 bytes|not there"));
    QCOMPARE(editor.summary(), QStringLiteral("127.0.0.1:%1 does not hold what an upload sends: default.pls; "
                                              "a.bmp; b.bmp is not there")
                                   .arg(server.port()));
    editor.table()->selectAll();
    QVERIFY(!editor.takeTheirs()->isEnabled());
}

void ComparisonTest::verifyNamesAMissingFile() {
    const FtpTestServer server;
    server.putDeviceFiles();
    ComparingEditor editor;
    editor.trigger("miFileSave");
    editor.messages.shown.clear();
    std::filesystem::remove(systemPath(editor.projectFolder.file("altmsg.ilm")));
    connectTo(server);
    editor.trigger("miToolsVerify");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QVERIFY(editor.messages.shown[0].text.find(editor.projectFolder.file("altmsg.ilm")) != std::string::npos);
}

void ComparisonTest::verifyTakesAnotherSpellingForTheSame() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAndUpload(server);
    const std::string held = server.bytes("stdmsg.ilm");
    server.put("stdmsg.ilm", "\r\n" + held);
    connectTo(server);
    editor.trigger("miToolsVerify");
    QCOMPARE(
        editor.rows(),
        QStringList{
            QStringLiteral("stdmsg.ilm||%1 bytes|%2 bytes, the same, written differently from byte 1 onwards")
                .arg(QLocale().toString(held.size()), QLocale().toString(held.size() + 2))});
    QCOMPARE(
        editor.summary(),
        QStringLiteral("127.0.0.1:%1 holds the same, written differently: stdmsg.ilm").arg(server.port()));
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    QCOMPARE(editor.rows(), QStringList());
}

void ComparisonTest::comparesTheFolderOfAnUnmodifiedProject() {
    ComparingEditor editor;
    editor.saveAs(editor.other, editor.project);
    editor.trigger("miFileSave");
    std::string bytes = fileBytes(editor.projectFolder.file("stdmsg.ilm"));
    writeBytes(editor.projectFolder.file("stdmsg.ilm"), bytes.insert(bytes.find("ENDMSG"), "STILL 7\r\n"));
    editor.compareWith(editor.other);
    QCOMPARE(editor.rows(), QStringList{"STDMSG1|2|STILL 7|"}); // that is what an upload sends
    editor.select(0);
    editor.click("btnTakeTheirs"); // and the project itself holds theirs already
    QVERIFY(!editor.project.modified);
    editor.project.modified = true;
    editor.compareWith(editor.other);
    QCOMPARE(editor.rows(), QStringList());
}

void ComparisonTest::comparesTheProjectInMemoryWithItsOwnFile() {
    ComparingEditor editor;
    editor.trigger("miFileSave");
    Project changed = editor.project;
    changed.STDMSG[0] = "CLEAR\r\nSTILL 7";
    const PathRules paths = PathRules::native();
    QCOMPARE(
        DocMgrModule::SaveProject(editor.projectFolder.path(), "Plant", changed, {paths, editor.messages}),
        DocMgrModule::SaveOutcome::Saved);
    editor.chooser.existingProjects.push_back(editor.projectNamed("Plant"));
    editor.trigger("miToolsCompareProject");
    QCOMPARE(editor.rows(), QStringList{"STDMSG1|||STILL 7"});
}

void ComparisonTest::aFileWithoutADifferentItemIsNamed() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAndUpload(server);
    const std::string held = server.bytes("ilmvar.def");
    server.put("ilmvar.def", "stray\r\n" + held);
    server.put("stdmsg.ilm",
               "DEFMSG STDMSG1\r\nSTILL 7\r\nENDMSG\r\n" + server.bytes("stdmsg.ilm").substr(31));
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    QVERIFY(editor.rows()[0].startsWith(QStringLiteral("STDMSG1|")));
    QCOMPARE(editor.rows().filter(QStringLiteral("stdmsg.ilm")), QStringList());
    QCOMPARE(editor.rows().back(),
             QStringLiteral("ilmvar.def||%1 bytes|%2 bytes, differs from byte 1 onwards")
                 .arg(QLocale().toString(held.size()), QLocale().toString(held.size() + 7)));
}

void ComparisonTest::aFileThatTheDisplayLacksIsNamedBesideTheBox() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAndUpload(server);
    connectTo(server);
    editor.trigger("miToolsCompareDisplay");
    std::filesystem::remove(server.file("stdmsg.ilm"));
    for (const char* const entry : {"miToolsCompareDisplay", "miToolsVerify"}) {
        connectTo(server);
        editor.trigger(entry);
        QCOMPARE(editor.messages.shown.back().text, std::string("Download Fail!"));
        QCOMPARE(editor.notice(), QStringLiteral("stdmsg.ilm is not there"));
        QCOMPARE(editor.summary(), nothingYet);
    }
    QCOMPARE(editor.messages.shown.size(), std::size_t{2});
}

void ComparisonTest::aDownloadNamesWhatTheDisplayLacks() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAndUpload(server);
    std::filesystem::remove(server.file("altmsg.ilm"));
    editor.downloadFrom(server);
    QCOMPARE(editor.messages.shown.back().text, std::string("Download Fail!"));
    QCOMPARE(editor.notice(), QStringLiteral("altmsg.ilm is not there"));
    QCOMPARE(editor.project.ProjName, std::string("Plant"));
}

void ComparisonTest::aDownloadThatHoldsNoProjectSaysSo() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAndUpload(server);
    for (const char* const name : {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm"})
        server.put(name, "");
    editor.downloadFrom(server);
    QCOMPARE(editor.notice(),
             QStringLiteral("127.0.0.1:%1 holds no project: its files say nothing").arg(server.port()));
}

void ComparisonTest::aDownloadOfAFileThatIsNotWholeSaysSo() {
    const FtpTestServer server;
    ComparingEditor editor;
    editor.saveAndUpload(server);
    const std::string held = server.bytes("stdmsg.ilm");
    server.put("stdmsg.ilm", held.substr(0, held.find("DEFMSG STDMSG13") + 20));
    editor.downloadFrom(server);
    QCOMPARE(editor.find<QLabel>("lblShowNotWhole")->text(),
             QStringLiteral("stdmsg.ilm is not whole: 12 of 40 regular messages were read. "
                            "Saving makes it whole as it is shown."));
    editor.click("btnShowNotWhole");
    const QAbstractItemModel& findings = *editor.find<QTableView>("tblFindings")->model();
    QCOMPARE(findings.index(0, 1).data().toString(), QStringLiteral("stdmsg.ilm"));
}

void ComparisonTest::anEarlierAnswerGoesWhereANewComparisonFails() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    std::filesystem::remove(systemPath(editor.other.file("Other.orx")));
    editor.compareWith(editor.other);
    QCOMPARE(editor.rows(), QStringList());
    QCOMPARE(editor.summary(), nothingYet);
}

void ComparisonTest::aCancelledQuestionKeepsTheAnswer() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    for (const char* const entry : {"miToolsCompareDisplay", "miToolsVerify"}) {
        onModal(QStringLiteral("frmConnection"), [](QWidget* dialog) { dialog->close(); });
        editor.trigger(entry);
        QCOMPARE(editor.rows(), otherRows);
    }
    editor.trigger("miToolsCompareProject");
    QCOMPARE(editor.rows(), otherRows);
}

void ComparisonTest::theLineHoldsTheFingerprints() {
    ComparingEditor editor;
    editor.saveAs(editor.other, otherProject());
    editor.compareWith(editor.other);
    const auto line = [&editor] { return editor.find<QLabel>("lblComparison")->text(); };
    const QString ours = fingerprintOf(editor.project);
    QVERIFY(line().endsWith(" (fingerprints " + ours + " and " + fingerprintOf(otherProject()) + ")"));
    editor.saveAs(editor.other, editor.project);
    editor.compareWith(editor.other);
    QVERIFY(line().endsWith(" (fingerprint " + ours + ")"));
}

void ComparisonTest::worksOnAProjectOnly() {
    EditorFixture editor;
    editor.start();
    for (const char* const entry : {"miToolsCompareDisplay", "miToolsCompareProject", "miToolsVerify"})
        QVERIFY(!editor.enabled(entry));
    editor.newProject("Plant");
    for (const char* const entry : {"miToolsCompareDisplay", "miToolsCompareProject", "miToolsVerify"})
        QVERIFY(editor.enabled(entry));
    editor.trigger("miToolsCompareDisplay"); // without a transfer there is nothing to ask
    QVERIFY(!editor.find<QWidget>("dockPanels")->isVisible());
}

QTEST_MAIN(ComparisonTest)
#include "ComparisonTest.moc"
