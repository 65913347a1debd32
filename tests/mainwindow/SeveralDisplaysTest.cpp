#include "items/NotesFile.h"
#include "tests/support/CountedMouse.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/EnvironmentSetting.h"
#include "tests/support/FreeTransferPort.h"
#include "tests/support/FtpTestServer.h"
#include "tests/support/ModalDriver.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <algorithm>
#include <array>
#include <filesystem>

using namespace orvista;
using namespace orvista::testing;

namespace {

namespace fs = std::filesystem;

constexpr int timeout = 30'000;

/// The dialog while it is open.
class Dialog {
public:
    explicit Dialog(QWidget* dialog) : dialog_(dialog) {}

    template <typename Widget>
    Widget* find(const char* name) const {
        auto* const widget = dialog_->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            throw std::logic_error(std::string("no ") + name);
        return widget;
    }
    QWidget* window() const { return dialog_; }
    QPushButton* button(const char* name) const { return find<QPushButton>(name); }
    void click(const char* name) const {
        if (!button(name)->isEnabled())
            throw std::logic_error(std::string(name) + " is disabled");
        QTest::mouseClick(button(name), Qt::LeftButton);
    }
    void paste(const QString& list) const {
        QApplication::clipboard()->setText(list);
        click("btnPaste");
    }
    /// Cells of a row, a bar between; without the project's path.
    QString row(int row) const {
        const QAbstractItemModel& model = *find<QTableView>("tblDisplays")->model();
        QStringList cells;
        for (const int column : {0, 1, 3, 4, 5})
            cells << model.index(row, column).data().toString();
        return cells.join(u'|');
    }
    /// Without the one for a new display.
    int rowCount() const {
        const QAbstractItemModel& model = *find<QTableView>("tblDisplays")->model();
        int rows = 0;
        for (int row = 0; row < model.rowCount(); ++row)
            rows += model.index(row, 3).data().toString().isEmpty() &&
                            model.index(row, 1).data().toString().isEmpty()
                        ? 0
                        : 1;
        return rows;
    }
    /// Types into a cell and leaves it by Enter. \param shown what stands there then; null for the text
    void type(int row, int column, const QString& text, const QString& shown = {}) const {
        auto* const table = find<QTableView>("tblDisplays");
        table->setCurrentIndex(table->model()->index(row, column));
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Return);
        auto* const box = table->viewport()->findChildren<QLineEdit*>().last(); // earlier ones are going
        box->selectAll();
        QTest::keyClicks(box, text);
        QTest::keyClick(box, Qt::Key_Return);
        // What was typed is told when the box is gone.
        QTRY_COMPARE(table->model()->index(row, column).data().toString(), shown.isNull() ? text : shown);
    }
    void waitForEnd() const { QTRY_VERIFY_WITH_TIMEOUT(!button("btnStop")->isEnabled(), timeout); }
    void startAndWait() const {
        click("btnStart");
        waitForEnd();
    }
    QString summary() const { return find<QLabel>("lblDisplays")->text(); }
    /// Enabled buttons in the order of the row.
    QStringList enabled() const {
        QStringList names;
        for (const char* name :
             {"btnLoad", "btnPaste", "btnStart", "btnCompare", "btnStop", "btnAgain", "btnReport"})
            if (button(name)->isEnabled())
                names << QString::fromLatin1(name);
        return names;
    }

private:
    QWidget* dialog_;
};

/// The main window beside which orvista lies, with an unsaved project.
struct Editor : EditorFixture {
    Editor() {
        fs::create_symlink(ORVISTA_PROGRAM, programFolder.file(programName));
        startWithNewProject("Plant");
        writeBytes(projectFolder.file("pump.bmp"), "BM");
    }
    static constexpr const char* programName = "orvista";

    void open(const std::function<void(const Dialog&)>& act) {
        onModal(QStringLiteral("frmSeveralDisplays"), [act](QWidget* window) {
            act(Dialog(window));
            window->close();
        });
        trigger("miToolsSeveral");
        QVERIFY(allModalsServed());
    }
};

/// The same with a master and its list of two displays, each with values of its own.
struct MasterEditor : Editor {
    MasterEditor() {
        project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"{line:3>} {tank:5}|\"\r\nACT STILL 1000";
        project.ALTMSG[1] = "CLEAR\r\nTEXT 0 0 RED BLACK \"{{ {Tank:5^}\"\r\nACT STILL 1000";
        trigger("miFileSave");
        writeBytes(projectFolder.file("Plant.notes.json"),
                   R"({"version":1,"master":{"list":"lists/displays.csv"}})");
        fs::create_directory(projectFolder.file("lists"));
        writeBytes(projectFolder.file("lists/displays.csv"),
                   "name,address,port,columns,line,tank\n"
                   "Line 1,127.0.0.1," +
                       std::to_string(first.port()) + ",,1,N\xC3\xB6rd\n" + "Line 2,127.0.0.1," +
                       std::to_string(second.port()) + ",96,-22,\"=a,b\"\n");
        openProject("Plant");
    }
    const FtpTestServer first;
    const FtpTestServer second;
};

/// A file of messages that were read from a project, an empty line after each, with one text in one of them.
std::string messagesWith(const std::string& name, std::size_t number, std::size_t count,
                         const std::string& text) {
    std::string file;
    for (std::size_t i = 1; i <= count; ++i)
        file += "DEFMSG " + name + std::to_string(i) + "\r\nCLEAR\r\n" +
                (i == number ? "TEXT 0 0 RED BLACK \"" + text + "\"\r\nACT STILL 1000\r\n" : "") +
                "\r\nENDMSG\r\n";
    return file;
}

QString row(const char* name, const FtpTestServer& server) {
    return QStringLiteral("%1,127.0.0.1,%2,\n").arg(QString::fromLatin1(name)).arg(server.port());
}

const QString head = QStringLiteral("name,address,port,project\n");

QString address(const FtpTestServer& server) {
    return QStringLiteral("127.0.0.1:%1").arg(server.port());
}

constexpr const char* markName = "ORVISTA_SEVERAL_DISPLAYS_TEST";

/// Processes of orvista that this test has started, directly or through one of them: they inherit its mark,
/// and other tests run the same program beside it.
int transfers() {
    int count = 0;
    std::error_code gone;
    const fs::path program = fs::canonical(ORVISTA_PROGRAM);
    const QByteArray mark = QByteArray(markName) + '=' + qgetenv(markName);
    for (const auto& entry : fs::directory_iterator("/proc")) {
        if (fs::read_symlink(entry.path() / "exe", gone) != program)
            continue;
        QFile environment(QString::fromStdString((entry.path() / "environ").string()));
        if (environment.open(QIODevice::ReadOnly) && environment.readAll().split('\0').contains(mark))
            ++count;
    }
    return count;
}

/// A table of all regular messages, ten of which leave too few blanks for their value.
std::string fortyMessages() {
    std::string table = "message,script\r\n";
    for (std::size_t i = 1; i <= regularMessageCount; ++i)
        table += "STDMSG" + std::to_string(i) + ",\"CLEAR\r\nTEXT 0 0 RED BLACK \"\"Level " +
                 std::string(i <= 10 ? 2 : 7, ' ') +
                 "m\"\"\r\nDISPVAR 48 0 RED BLACK RegVar1\r\nACT STILL 3000\"\r\n";
    return table;
}

/// Answers the next file dialog with one click on Open or Save. \param path none for the proposed one
void answerFileDialog(CountedMouse& mouse, const std::string& path = {}) {
    onModal(QStringLiteral("comdlg"), [&mouse, path](QWidget* window) {
        auto* const files = qobject_cast<QFileDialog*>(window);
        if (!path.empty()) {
            ++mouse.clicks; // on the file
            files->selectFile(QString::fromStdString(path));
        }
        ++mouse.clicks;
        QMetaObject::invokeMethod(files, "accept");
    });
}

void answerDialog(CountedMouse& mouse, const char* name) {
    onModal(QString::fromLatin1(name), [&mouse](QWidget* dialog) {
        mouse.click(dialog->findChild<QPushButton*>(QStringLiteral("btnOK")));
    });
}

void importMessages(CountedMouse& mouse, const std::string& table) {
    answerFileDialog(mouse, table);
    answerDialog(mouse, "frmSheetImport");
    mouse.choose("mnuTools", "miToolsImportMessages");
    QVERIFY(allModalsServed());
}

void fixAll(CountedMouse& mouse, QTableView* findings) {
    answerDialog(mouse, "frmFixes");
    QTimer::singleShot(0, findings, [&mouse] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu);
        mouse.click(menu, menu->actionGeometry(menu->actions().last()).center());
    });
    const QPoint first = findings->visualRect(findings->model()->index(0, 0)).center();
    mouse.click(findings->viewport(), first); // its other button, which also opens the menu
    emit findings->customContextMenuRequested(first);
    QVERIFY(allModalsServed());
}

void saveAddressList(CountedMouse& mouse) {
    onModal(QStringLiteral("frmAddressList"), [&mouse](QWidget* dialog) {
        mouse.click(dialog->findChild<QPushButton*>(QStringLiteral("btnOK")));
    });
    answerFileDialog(mouse);
    mouse.choose("mnuTools", "miToolsExportAddresses");
    QVERIFY(allModalsServed());
}

} // namespace

class SeveralDisplaysTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        qputenv(markName, QByteArray::number(QCoreApplication::applicationPid()));
    }
    void cleanup() { QVERIFY(allModalsServed()); }
    void savesFirstAndSendsWhatWasSaved();
    void sendsToTheFailedOnesAgain();
    void skipsEqualOnes();
    void rowsAreTypedInPlace();
    void whatCannotBeADisplayIsRefusedAsItIsTyped();
    void delTakesRowsAway();
    void checksAndVerifiesOnDemand();
    void theCheckTakesTheColumnsThatAreNoted();
    void comparesAndSendsNothing();
    void displaysOfAMasterGetTheirOwnValues();
    void aTypedDisplayOfAMasterHasNoValues();
    void aMasterWhoseNotesCannotBeReadIsNotSent();
    void verifyingTwentyDisplaysTakesAtMostSixClicks();
    void anEngineersJobTakesAtMostTwentyClicks();
    void theProjectsPathLeavesRoomForTheReason();
    void whatWasDoneStaysDoneWhenOrvistaIsKilled();
    void stopNamesWhatIsHalfDone();
    void closingEndsTheTransfers();
    void aListThatCannotBeUsedIsSaidAndChangesNothing();
    void loadsAListAndSavesTheReport();
    void worksByKeyboardAlone();
    void tellsWhereOrvistaIsMissing();
    void worksOnAProjectOnly();
    void opensNothingWhereTheProjectCannotBeSaved();
};

void SeveralDisplaysTest::savesFirstAndSendsWhatWasSaved() {
    Editor editor;
    const FtpTestServer first;
    const FtpTestServer second;
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Plant*]"));
    editor.open([&](const Dialog& dialog) {
        QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Plant]"));
        QCOMPARE(dialog.enabled(), (QStringList{"btnLoad", "btnPaste"}));
        dialog.paste(head + row("first", first) + row("second", second));
        QCOMPARE(dialog.rowCount(), 2);
        QCOMPARE(dialog.row(0), "first|" + address(first) + "|||");
        QCOMPARE(dialog.summary(), QStringLiteral("2 displays"));
        QCOMPARE(dialog.enabled(), (QStringList{"btnLoad", "btnPaste", "btnStart", "btnCompare"}));
        dialog.click("btnStart");
        QCOMPARE(dialog.enabled(), QStringList{"btnStop"});
        QVERIFY(!dialog.find<QCheckBox>("chkSkipEqual")->isEnabled());
        dialog.waitForEnd();
        QCOMPARE(dialog.row(0), "first|" + address(first) + "|done|6 of 6|");
        QCOMPARE(dialog.row(1), "second|" + address(second) + "|done|6 of 6|");
        QCOMPARE(dialog.summary(), QStringLiteral("2 of 2 displays: 2 done"));
        QCOMPARE(dialog.enabled(),
                 (QStringList{"btnLoad", "btnPaste", "btnStart", "btnCompare", "btnReport"}));
    });
    QVERIFY(editor.messages.shown.empty());
    for (const char* name : {"modbus.adr", "ilmvar.def", "default.pls", "pump.bmp"})
        QCOMPARE(second.bytes(name), fileBytes(editor.projectFolder.file(name)));
}

void SeveralDisplaysTest::sendsToTheFailedOnesAgain() {
    Editor editor;
    const FtpTestServer good;
    const FtpTestServer full({"--fault", "full", "--files-served", "2"});
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("good", good) + row("full", full));
        dialog.startAndWait();
        QCOMPARE(dialog.row(1), "full|" + address(full) +
                                    "|half|2 of 6|stdmsg.ilm was not taken: 452 Insufficient storage "
                                    "space.; arrived: modbus.adr, ilmvar.def");
        QCOMPARE(dialog.summary(), QStringLiteral("2 of 2 displays: 1 done, 1 half"));
        const auto commands = good.commands().size();
        dialog.click("btnAgain");
        dialog.waitForEnd();
        QCOMPARE(dialog.row(1),
                 "full|" + address(full) +
                     "|failed|0 of 6|modbus.adr was not taken: 452 Insufficient storage space.");
        QVERIFY(dialog.row(0).contains(QStringLiteral("|done|")));
        QCOMPARE(good.commands().size(), commands);
        QVERIFY(dialog.button("btnAgain")->isEnabled());
    });
}

void SeveralDisplaysTest::skipsEqualOnes() {
    Editor editor;
    const FtpTestServer server;
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("pump", server));
        dialog.startAndWait();
        QTest::mouseClick(dialog.find<QCheckBox>("chkSkipEqual"), Qt::LeftButton, {},
                          QPoint(8, dialog.find<QCheckBox>("chkSkipEqual")->height() / 2));
        dialog.startAndWait();
        QVERIFY2(dialog.row(0).contains(QStringLiteral("|equal||")), qPrintable(dialog.row(0)));
        QVERIFY(!dialog.button("btnAgain")->isEnabled());
    });
}

void SeveralDisplaysTest::rowsAreTypedInPlace() {
    Editor editor;
    const FtpTestServer first;
    const FtpTestServer second;
    editor.open([&](const Dialog& dialog) {
        dialog.type(0, 0, QStringLiteral("pump"));
        QCOMPARE(dialog.rowCount(), 0);
        QVERIFY(!dialog.button("btnStart")->isEnabled());
        dialog.type(0, 1, address(first));
        QCOMPARE(dialog.row(0), "pump|" + address(first) + "|||");
        // Without a name it is called as its address, and a row can be changed.
        dialog.type(1, 1, QStringLiteral("127.0.0.7"));
        QCOMPARE(dialog.row(1), QStringLiteral("127.0.0.7|127.0.0.7|||"));
        dialog.type(1, 1, address(second));
        dialog.startAndWait();
        QCOMPARE(dialog.row(0), "pump|" + address(first) + "|done|6 of 6|");
        QCOMPARE(dialog.row(1), "127.0.0.7|" + address(second) + "|done|6 of 6|");
    });
    QVERIFY(editor.messages.shown.empty());
}

void SeveralDisplaysTest::whatCannotBeADisplayIsRefusedAsItIsTyped() {
    Editor editor;
    editor.open([&](const Dialog& dialog) {
        dialog.type(0, 1, QStringLiteral("127.0.0.7"));
        dialog.type(1, 1, QStringLiteral("127.0.0.7:7000"));
        QTRY_COMPARE(editor.messages.shown.size(), std::size_t{1});
        QCOMPARE(editor.messages.shown[0].text, std::string("the same name stands in row 1 already"));
        dialog.type(0, 0, QStringLiteral("a/b"), QStringLiteral("127.0.0.7"));
        QTRY_COMPARE(editor.messages.shown.size(), std::size_t{2});
        QCOMPARE(dialog.row(0), QStringLiteral("127.0.0.7|127.0.0.7|||"));
    });
}

void SeveralDisplaysTest::delTakesRowsAway() {
    Editor editor;
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + QStringLiteral("a,127.0.0.1,7001,\nb,127.0.0.1,7002,\nc,127.0.0.1,7003,\n"));
        auto* const table = dialog.find<QTableView>("tblDisplays");
        table->selectRow(1);
        QTest::keyClick(table, Qt::Key_Delete);
        QCOMPARE(dialog.rowCount(), 2);
        QCOMPARE(dialog.row(1), QStringLiteral("c|127.0.0.1:7003|||"));
    });
}

void SeveralDisplaysTest::checksAndVerifiesOnDemand() {
    Editor editor;
    editor.project.STDMSG[0] = "CLEAR\r\nNONSENSE";
    const FtpTestServer server;
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("pump", server));
        dialog.find<QCheckBox>("chkCheckFirst")->setChecked(true);
        dialog.startAndWait();
        QVERIFY2(dialog.row(0).contains(QStringLiteral("|refused|")), qPrintable(dialog.row(0)));
        QVERIFY(server.commands().empty());
        dialog.find<QCheckBox>("chkCheckFirst")->setChecked(false);
        dialog.find<QCheckBox>("chkVerify")->setChecked(true);
        dialog.startAndWait();
        QVERIFY2(dialog.row(0).contains(QStringLiteral("|done|")), qPrintable(dialog.row(0)));
    });
    const auto commands = server.commands();
    const auto isFetch = [](const std::string& command) { return command.starts_with("RETR"); };
    QVERIFY(std::ranges::count_if(commands, isFetch) >= 6);
}

void SeveralDisplaysTest::theCheckTakesTheColumnsThatAreNoted() {
    MasterEditor editor;
    // Keeps what it is given, and then does as it is told.
    const std::string given = editor.projectFolder.file("given");
    fs::remove(editor.programFolder.file(Editor::programName));
    writeBytes(editor.programFolder.file(Editor::programName), "#!/bin/sh\nrm -rf '" + given +
                                                                   "'\ncp -R \"${3%/*}\" '" + given +
                                                                   "'\nexec " ORVISTA_PROGRAM " \"$@\"\n");
    fs::permissions(editor.programFolder.file(Editor::programName), fs::perms::owner_all);
    const auto givenNotes = [&](const std::string& notes) {
        writeBytes(editor.projectFolder.file("Plant.notes.json"), notes);
        editor.openProject("Plant");
        editor.open([&](const Dialog& dialog) {
            dialog.paste(head + row("one", editor.first));
            dialog.find<QCheckBox>("chkCheckFirst")->setChecked(true);
            dialog.startAndWait();
        });
        return readNotesFile(given + "/project/Plant.notes.json").notes;
    };
    const ProjectNotes ofProject = givenNotes(R"({"version":1,"display":{"columns":48}})");
    QCOMPARE(ofProject.columns, std::optional(48));
    QVERIFY(!ofProject.masterList);
    const ProjectNotes ofMaster =
        givenNotes(R"({"version":1,"display":{"columns":64},"master":{"list":"lists/displays.csv"}})");
    QCOMPARE(ofMaster.columns, std::optional(64));
    QVERIFY(ofMaster.masterList);
    QCOMPARE(givenNotes(R"({"version":1})").columns, std::optional<int>());
}

void SeveralDisplaysTest::comparesAndSendsNothing() {
    Editor editor;
    const FtpTestServer same;
    const FtpTestServer other;
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("same", same));
        dialog.startAndWait();
        other.putDeviceFiles();
        dialog.paste(head + row("same", same) + row("other", other));
        dialog.click("btnCompare");
        dialog.waitForEnd();
        QVERIFY2(dialog.row(0).contains(QStringLiteral("|equal||")), qPrintable(dialog.row(0)));
        QVERIFY2(dialog.row(1).contains(QStringLiteral("|different||")), qPrintable(dialog.row(1)));
        QVERIFY(!dialog.button("btnAgain")->isEnabled());
    });
    QCOMPARE(other.bytes("stdmsg.ilm"), std::string("remote stdmsg.ilm"));
}

void SeveralDisplaysTest::displaysOfAMasterGetTheirOwnValues() {
    MasterEditor editor;
    editor.open([&](const Dialog& dialog) {
        QCOMPARE(dialog.rowCount(), 2);
        QCOMPARE(dialog.row(0), "Line 1|" + address(editor.first) + "|||");
        dialog.startAndWait();
        QCOMPARE(dialog.row(0), "Line 1|" + address(editor.first) + "|done|6 of 6|");
        QCOMPARE(dialog.row(1), "Line 2|" + address(editor.second) + "|done|6 of 6|");
        dialog.click("btnCompare");
        dialog.waitForEnd();
        QCOMPARE(dialog.summary(), QStringLiteral("2 of 2 displays: 2 equal"));
        editor.second.put("stdmsg.ilm", editor.first.bytes("stdmsg.ilm"));
        dialog.click("btnCompare");
        dialog.waitForEnd();
        QCOMPARE(dialog.summary(), QStringLiteral("2 of 2 displays: 1 equal, 1 different"));
        dialog.startAndWait();
    });
    QVERIFY(editor.messages.shown.empty());
    const auto regular = [](const char* text) {
        return messagesWith("STDMSG", 1, regularMessageCount, text);
    };
    const auto emergency = [](const char* text) {
        return messagesWith("ALTMSG", 2, emergencyMessageCount, text);
    };
    QCOMPARE(editor.first.bytes("stdmsg.ilm"), regular("  1 N\xF6rd |"));
    QCOMPARE(editor.second.bytes("stdmsg.ilm"), regular("-22 =a,b |"));
    QCOMPARE(editor.first.bytes("altmsg.ilm"), emergency("{ N\xF6rd "));
    QCOMPARE(editor.second.bytes("altmsg.ilm"), emergency("{ =a,b "));
    QVERIFY(fileBytes(editor.projectFolder.file("stdmsg.ilm")).find("{tank:5}|") != std::string::npos);
}

void SeveralDisplaysTest::aMasterWhoseNotesCannotBeReadIsNotSent() {
    MasterEditor editor;
    const std::string notes = editor.projectFolder.file("Plant.notes.json");
    const std::string whole = fileBytes(notes);
    const std::string refusal = editor.projectFolder.file("Plant.orx") +
                                " may be a master: its messages have places such as {line}, and its notes "
                                "cannot be read; mend them first";
    const std::string broken = R"({"version":1,"master":{"list":"lists/displays.csv")";
    for (const std::string& bytes : {broken, std::string(R"({"version":1,"master":{"list":5}})")}) {
        writeBytes(notes, bytes);
        editor.trigger("miToolsSeveral");
        QCOMPARE(editor.messages.shown.size(), std::size_t{1});
        QCOMPARE(editor.messages.shown.front().text, refusal);
        editor.messages.shown.clear();
    }
    // As soon as they are mended it is the master again.
    writeBytes(notes, whole);
    editor.open([](const Dialog& dialog) { QCOMPARE(dialog.rowCount(), 2); });
    QVERIFY(editor.messages.shown.empty());
}

void SeveralDisplaysTest::aTypedDisplayOfAMasterHasNoValues() {
    MasterEditor editor;
    const FtpTestServer third;
    editor.open([&](const Dialog& dialog) {
        dialog.type(2, 1, address(third));
        dialog.type(0, 0, QStringLiteral("Renamed"));
        dialog.startAndWait();
        QCOMPARE(dialog.row(0), "Renamed|" + address(editor.first) + "|done|6 of 6|");
        QCOMPARE(dialog.row(2),
                 "127.0.0.1|" + address(third) + "|refused||3 errors, the first: " +
                     QString::fromStdString(editor.projectFolder.file("Plant.orx")) +
                     " (127.0.0.1):STDMSG1:2:21: error: the value of 'line' is empty [place-width]");
    });
    QVERIFY(editor.first.bytes("stdmsg.ilm").find("\"  1 N\xF6rd |\"") != std::string::npos);
    QVERIFY(third.commands().empty());
}

void SeveralDisplaysTest::verifyingTwentyDisplaysTakesAtMostSixClicks() {
    Editor editor;
    editor.trigger("miFileSave");
    std::array<FtpTestServer, 20> displays;
    QString list = head;
    for (const FtpTestServer& display : displays) {
        list += row(qPrintable(QStringLiteral("display%1").arg(display.port())), display);
        for (const char* name :
             {"modbus.adr", "ilmvar.def", "stdmsg.ilm", "altmsg.ilm", "default.pls", "pump.bmp"})
            display.put(name, fileBytes(editor.projectFolder.file(name)));
    }
    QApplication::clipboard()->setText(list);
    CountedMouse mouse(editor);
    onModal(QStringLiteral("frmSeveralDisplays"), [&](QWidget* window) {
        const Dialog dialog(window);
        mouse.click(dialog.button("btnPaste"));
        mouse.click(dialog.button("btnCompare"));
        dialog.waitForEnd();
        QCOMPARE(dialog.summary(), QStringLiteral("20 of 20 displays: 20 equal"));
        mouse.click(dialog.button("btnCancel"));
    });
    mouse.choose("mnuTools", "miToolsSeveral");
    QVERIFY(allModalsServed());
    QVERIFY2(mouse.clicks <= 6, qPrintable(QString::number(mouse.clicks)));
}

void SeveralDisplaysTest::anEngineersJobTakesAtMostTwentyClicks() {
    Editor editor;
    const std::array<FtpTestServer, 19> displays;
    QString list = head + QStringLiteral("dead,127.0.0.1,%1,\n").arg(freeTransferPort());
    for (const FtpTestServer& display : displays)
        list += row(qPrintable(QStringLiteral("display%1").arg(display.port())), display);
    QApplication::clipboard()->setText(list);
    const TemporaryFolder desk;
    writeBytes(desk.file("messages.csv"), fortyMessages());

    CountedMouse mouse(editor);
    importMessages(mouse, desk.file("messages.csv"));
    mouse.choose("mnuTools", "miToolsCheck");
    auto* const findings = editor.find<QTableView>("tblFindings");
    QCOMPARE(findings->model()->rowCount(), 10);
    fixAll(mouse, findings);
    QCOMPARE(findings->model()->rowCount(), 0);
    saveAddressList(mouse);
    onModal(QStringLiteral("frmSeveralDisplays"), [&](QWidget* window) {
        const Dialog dialog(window);
        mouse.click(dialog.button("btnPaste"));
        auto* const verify = dialog.find<QCheckBox>("chkVerify");
        mouse.click(verify, {8, verify->height() / 2});
        QVERIFY(verify->isChecked());
        mouse.click(dialog.button("btnStart"));
        dialog.waitForEnd();
        QVERIFY2(dialog.row(0).startsWith(QStringLiteral("dead|")), qPrintable(dialog.row(0)));
        QCOMPARE(dialog.summary(), QStringLiteral("20 of 20 displays: 19 done, 1 failed"));
        mouse.click(dialog.button("btnCancel"));
    });
    mouse.choose("mnuTools", "miToolsSeveral");
    QVERIFY(allModalsServed());
    QVERIFY(fs::exists(editor.projectFolder.file("Plant addresses.csv")));
    QVERIFY(displays[18]
                .bytes("stdmsg.ilm")
                .starts_with("DEFMSG STDMSG1\r\nCLEAR\r\nTEXT 0 0 RED BLACK \"Level        m\"\r\n"));
    QVERIFY2(mouse.clicks <= 20, qPrintable(QString::number(mouse.clicks)));
}

void SeveralDisplaysTest::theProjectsPathLeavesRoomForTheReason() {
    Editor editor;
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + QStringLiteral("a,127.0.0.1,7001,\n"));
        const QModelIndex project = dialog.find<QTableView>("tblDisplays")->model()->index(0, 2);
        QCOMPARE(project.data().toString(), QStringLiteral("Plant.orx"));
        QCOMPARE(project.data(Qt::ToolTipRole).toString(),
                 QString::fromStdString(editor.projectFolder.file("Plant.orx")));
    });
}

void SeveralDisplaysTest::whatWasDoneStaysDoneWhenOrvistaIsKilled() {
    Editor editor;
    const FtpTestServer good;
    const FtpTestServer silent({"--fault", "silent-store", "--files-served", "2"});
    const TemporaryFolder scratch; // what is killed tidies nothing up
    const EnvironmentSetting setting("TMPDIR", scratch.path());
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("good", good) + row("silent", silent));
        dialog.click("btnStart");
        QTRY_VERIFY_WITH_TIMEOUT(dialog.row(0).contains(QStringLiteral("|done|")), timeout);
        QTRY_VERIFY_WITH_TIMEOUT(dialog.row(1).contains(QStringLiteral("|2 of 6|")), timeout);
        dialog.window()->findChild<QProcess*>()->kill();
        dialog.waitForEnd();
        QCOMPARE(dialog.row(0), "good|" + address(good) + "|done|6 of 6|");
        QVERIFY2(dialog.row(1).startsWith("silent|" + address(silent) + "|half|2 of 6|"),
                 qPrintable(dialog.row(1)));
        QCOMPARE(dialog.summary(), QStringLiteral("2 of 2 displays: 1 done, 1 half"));
    });
    QTRY_COMPARE(transfers(), 0);
}

void SeveralDisplaysTest::stopNamesWhatIsHalfDone() {
    Editor editor;
    const FtpTestServer silent({"--fault", "silent-store", "--files-served", "2"});
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("silent", silent));
        dialog.click("btnStart");
        const QString waiting = "silent|" + address(silent) + "|sending stdmsg.ilm|2 of 6|";
        QTRY_COMPARE_WITH_TIMEOUT(dialog.row(0), waiting, timeout);
        dialog.click("btnStop");
        dialog.waitForEnd();
        QTRY_VERIFY(dialog.button("btnStart")->isEnabled());
        QCOMPARE(dialog.row(0),
                 "silent|" + address(silent) +
                     "|half|2 of 6|interrupted while stdmsg.ilm was sent; arrived: modbus.adr, "
                     "ilmvar.def");
    });
    QCOMPARE(transfers(), 0);
}

void SeveralDisplaysTest::closingEndsTheTransfers() {
    Editor editor;
    const FtpTestServer silent({"--fault", "silent-store"});
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + row("silent", silent));
        dialog.click("btnStart");
        QTRY_VERIFY_WITH_TIMEOUT(dialog.row(0).contains(QStringLiteral("sending modbus.adr")), timeout);
        QCOMPARE(transfers(), 2);
        QTest::keyClick(dialog.window(), Qt::Key_Escape);
    });
    QCOMPARE(transfers(), 0);
}

void SeveralDisplaysTest::aListThatCannotBeUsedIsSaidAndChangesNothing() {
    Editor editor;
    editor.open([&](const Dialog& dialog) {
        dialog.paste(head + QStringLiteral("a,127.0.0.1,7001,\n"));
        dialog.paste(head + QStringLiteral("b,127.0.0.1,7001,\nB,127.0.0.1,7002,\na/b,127.0.0.1,7003,\n"));
        QCOMPARE(dialog.rowCount(), 1);
        QCOMPARE(editor.messages.shown.size(), std::size_t{1});
        QCOMPARE(editor.messages.shown[0].text,
                 std::string("The clipboard\nrow 3, name: the same name stands in row 2 already\n"
                             "row 4, name: a name holds none of / \\ : * ? \" < > | and no line end"));
    });
}

void SeveralDisplaysTest::loadsAListAndSavesTheReport() {
    Editor editor;
    const FtpTestServer server;
    const TemporaryFolder folder;
    writeBytes(folder.file("list.csv"), (head + row("=pump", server)).toStdString());
    editor.open([&](const Dialog& dialog) {
        const auto choose = [&](const char* name) {
            onModal(QStringLiteral("comdlg"), [&, name](QWidget* window) {
                auto* const files = qobject_cast<QFileDialog*>(window);
                if (files->acceptMode() == QFileDialog::AcceptSave)
                    QCOMPARE(files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
                             QStringLiteral("report.csv"));
                files->selectFile(QString::fromStdString(folder.file(name)));
                QMetaObject::invokeMethod(files, "accept");
            });
        };
        choose("list.csv");
        dialog.click("btnLoad");
        QCOMPARE(dialog.rowCount(), 1);
        dialog.startAndWait();
        choose("results.csv");
        dialog.click("btnReport");
    });
    const std::string report = fileBytes(folder.file("results.csv"));
    const std::string expected = "\xEF\xBB\xBFname,address,result,reason,files,seconds\r\n'=pump," +
                                 address(server).toStdString() + ",done,,6,";
    QCOMPARE(report.substr(0, expected.size()), expected);
}

void SeveralDisplaysTest::worksByKeyboardAlone() {
    Editor editor;
    const FtpTestServer server;
    editor.open([&](const Dialog& dialog) {
        QApplication::clipboard()->setText(head + row("pump", server));
        const auto alt = [&](Qt::Key key) { QTest::keyClick(dialog.window(), key, Qt::AltModifier); };
        QTRY_VERIFY(dialog.window()->isActiveWindow());
        // A button is shown pressed for a moment before it is.
        alt(Qt::Key_P);
        QTRY_COMPARE(dialog.rowCount(), 1);
        QVERIFY(dialog.button("btnStart")->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QVERIFY(dialog.button("btnStop")->hasFocus());
        dialog.waitForEnd();
        QVERIFY(dialog.row(0).contains(QStringLiteral("|done|")));
        QVERIFY(QApplication::focusWidget() != nullptr);
        for (const auto& [key, box] :
             {std::pair(Qt::Key_H, "chkCheckFirst"), std::pair(Qt::Key_K, "chkSkipEqual")}) {
            alt(key);
            QTRY_VERIFY(dialog.find<QCheckBox>(box)->isChecked());
        }
        alt(Qt::Key_S);
        QTRY_VERIFY_WITH_TIMEOUT(dialog.row(0).contains(QStringLiteral("|equal||")), timeout);
        dialog.waitForEnd();
        server.put("stdmsg.ilm", "other");
        alt(Qt::Key_C);
        QTRY_VERIFY_WITH_TIMEOUT(dialog.row(0).contains(QStringLiteral("|different||")), timeout);
        dialog.waitForEnd();
        alt(Qt::Key_V);
        QTRY_VERIFY(dialog.find<QCheckBox>("chkVerify")->isChecked());
        alt(Qt::Key_S);
        QTRY_VERIFY_WITH_TIMEOUT(dialog.row(0).contains(QStringLiteral("|done|")), timeout);
        dialog.waitForEnd();
        QTest::keyClick(dialog.window(), Qt::Key_Escape);
        QVERIFY(!dialog.window()->isVisible());
    });
}

void SeveralDisplaysTest::tellsWhereOrvistaIsMissing() {
    Editor editor;
    fs::remove(editor.programFolder.file("orvista"));
    editor.trigger("miToolsSeveral");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.messages.shown[0].text, editor.programFolder.file("orvista") + " is missing");
}

void SeveralDisplaysTest::worksOnAProjectOnly() {
    EditorFixture editor;
    editor.start();
    QVERIFY(!editor.enabled("miToolsSeveral"));
    editor.newProject("Line3");
    QVERIFY(editor.enabled("miToolsSeveral"));
}

void SeveralDisplaysTest::opensNothingWhereTheProjectCannotBeSaved() {
    Editor editor;
    fs::create_directory(editor.projectFolder.file("Plant.orx"));
    editor.trigger("miToolsSeveral");
    QCOMPARE(editor.messages.shown.size(), std::size_t{1});
    QCOMPARE(editor.title(), QStringLiteral("Orvista Message Editor - [Plant*]"));
}

QTEST_MAIN(SeveralDisplaysTest)
#include "SeveralDisplaysTest.moc"
