#include "display/forms/DisplayPreview.h"
#include "link/TransferCommands.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"
#include "widgets/RowsTable.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QToolTip>

#include <filesystem>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string list = "name,address,columns,line,tank\n"
                         "Line 1,10.0.0.1,,1,Nord\n"
                         "Line 2,10.0.0.2,96,2,S\xC3\xBC"
                         "d\n"
                         "Line 3,10.0.0.3,,3,Winter\n";
const std::string script = "CLEAR\r\nTEXT 0 0 RED BLACK \"Line {line:3>} {tank:4}\"\r\nACT STILL 1000";

/// A master that was opened with its list, its message 1 on the page.
struct MasterDesk : EditorFixture {
    explicit MasterDesk(bool isMaster = true) {
        startWithNewProject();
        project.STDMSG[0] = script;
        trigger("miFileSave");
        if (isMaster)
            writeBytes(projectFolder.file("Line3.notes.json"),
                       R"({"version":1,"master":{"list":"displays.csv"}})");
        writeBytes(listFile(), list);
        openProject("Line3");
        showPage("C4");
        showMessage("R1");
    }
    std::string listFile() const { return projectFolder.file("displays.csv"); }
    QComboBox& displays() const { return *find<QComboBox>("cboPreviewDisplay"); }
    QString preview() const { return find<PanelView>("panelPreview")->accessibleDescription(); }
    DeviceTextEdit& box() const { return *find<DeviceTextEdit>("txtMsg"); }
    QStringList underlined() const {
        QStringList texts;
        for (const auto& selection : box().extraSelections())
            texts << selection.cursor.selectedText();
        return texts;
    }
    /// What stands in a line of the dock, without its places to break at; empty where there is none.
    QString line(const char* label) const {
        const auto* const text = window->findChild<QLabel*>(QString::fromLatin1(label));
        return text && text->isVisible() ? text->text().remove(QChar(0x200B)) : QString();
    }
    QStringList cells(const char* table, int column) const {
        const auto* const model = find<RowsTable>(table)->model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, column).data().toString();
        return texts;
    }
};

constexpr int sentenceColumn = 6;

} // namespace

/// What the window shows of a master.
class MasterWindowTest : public QObject {
    Q_OBJECT
private slots:
    void otherProjectsHaveNothingToChoose();
    void thePreviewShowsTheChosenDisplaysValues();
    void theWidthIsThatOfTheDisplay();
    void whatDoesNotFitIsReadInANarrowWindow();
    void whatDoesNotFitIsNotSaidOfAHiddenPreview();
    void whatIsTypedIsShownWithValuesAtOnce();
    void theWizardsStripShowsThem();
    void theWizardPutsFieldsBehindThePlaces();
    void whatHasPlacesIsNotMended();
    void messagesShowThem();
    void findingsShowThem();
    void allDisplaysAreOneRowForTheSame();
    void manyFindingsOfAllDisplaysComeBitByBit();
    void allDisplaysAreCheckedByKeyboardAlone();
    void whatIsGoneMeanwhileIsNotMended();
    void placesAreUnderlinedAndTellTheirValues();
    void theListIsReadAgainWhenItChanges();
    void aListThatCannotBeReadIsToldInALine();
    void anotherProjectForgetsTheList();
    void uploadSaysThatThereArePlaces();
};

void MasterWindowTest::otherProjectsHaveNothingToChoose() {
    const MasterDesk desk(false);
    QVERIFY(!desk.displays().isVisible());
    QCOMPARE(desk.preview(), "Line {line:3>} {tank:4}");
    QTest::qWait(0);
    desk.trigger("miToolsCheck");
    QVERIFY(!desk.find<QCheckBox>("chkFindingsAllDisplays")->isVisible());
    QCOMPARE(desk.underlined(), QStringList());
}

void MasterWindowTest::thePreviewShowsTheChosenDisplaysValues() {
    const MasterDesk desk;
    QVERIFY(desk.displays().isVisible());
    QCOMPARE(desk.displays().count(), 4);
    QCOMPARE(desk.displays().currentText(), "as typed");
    QCOMPARE(desk.displays().itemText(3), "Line 3");
    QCOMPARE(desk.preview(), "Line lin tank");
    desk.displays().setFocus();
    QTest::keyClick(&desk.displays(), Qt::Key_Down);
    QCOMPARE(desk.preview(), "Line 1 Nord");
    QTest::keyClick(&desk.displays(), Qt::Key_Down);
    QCOMPARE(desk.preview(), QString("Line 2 S\u00FCd"));
    QTest::keyClick(&desk.displays(), Qt::Key_Home);
    QCOMPARE(desk.preview(), "Line lin tank");
    QCOMPARE(desk.box().bytes(), desk.project.STDMSG[0]);
    QVERIFY(!desk.project.modified);
}

void MasterWindowTest::theWidthIsThatOfTheDisplay() {
    const MasterDesk desk;
    desk.displays().setCurrentIndex(2);
    QCOMPARE(desk.find<QSpinBox>("spnPreviewColumns")->value(), 96);
    QCOMPARE(desk.find<PanelView>("panelPreview")->shown().columns(), 96);
}

void MasterWindowTest::whatDoesNotFitIsReadInANarrowWindow() {
    MasterDesk desk;
    desk.resizeToLetters({960, 540});
    desk.box().setPlainText("TEXT 0 0 RED BLACK \"Emergency stop pump\"");
    const auto* const fit = desk.find<QLabel>("lblPreviewFit");
    QTRY_COMPARE(fit->text(), "3 characters do not fit");
    QTRY_VERIFY(fit->width() >= fit->fontMetrics().horizontalAdvance(fit->text()));
    desk.newProject("Other");
    desk.box().setPlainText("TEXT 0 0 RED BLACK \"Emergency stop pump\"");
    QTRY_COMPARE(fit->parentWidget(), desk.displays().parentWidget());
}

void MasterWindowTest::whatDoesNotFitIsNotSaidOfAHiddenPreview() {
    const MasterDesk desk;
    const auto* const fit = desk.find<QLabel>("lblPreviewFit");
    QVERIFY(fit->isVisible());
    desk.trigger("miViewPreview");
    QVERIFY(!fit->isVisible());
    desk.trigger("miViewPreview");
    QVERIFY(fit->isVisible());
}

void MasterWindowTest::whatIsTypedIsShownWithValuesAtOnce() {
    const MasterDesk desk;
    desk.displays().setCurrentIndex(1);
    desk.box().moveCursor(QTextCursor::Start);
    desk.box().moveCursor(QTextCursor::Down);
    desk.box().moveCursor(QTextCursor::EndOfLine);
    desk.box().moveCursor(QTextCursor::Left);
    QTest::keyClicks(&desk.box(), "/{line:1}");
    QCOMPARE(desk.preview(), "Line 1 Nord/1");
}

void MasterWindowTest::theWizardsStripShowsThem() {
    const MasterDesk desk;
    desk.displays().setCurrentIndex(1);
    QString shown;
    onModal(QStringLiteral("frmMessageEdit"), [&shown](QWidget* wizard) {
        wizard->findChild<QLineEdit*>(QStringLiteral("txtText"))->setText(QStringLiteral("Tank {tank:8}"));
        shown = wizard->findChild<PanelView*>(QStringLiteral("wizardPreview"))->accessibleDescription();
        wizard->close();
    });
    desk.click("btnEditMessage");
    QVERIFY(allModalsServed());
    QCOMPARE(shown, "Tank Nord");
}

void MasterWindowTest::theWizardPutsFieldsBehindThePlaces() {
    const auto composed = [](bool isMaster) {
        const MasterDesk desk(isMaster);
        desk.box().setPlainText("CLEAR");
        onModal(QStringLiteral("frmMessageEdit"), [](QWidget* wizard) {
            wizard->findChild<QLineEdit*>(QStringLiteral("txtText"))
                ->setText(QStringLiteral("{tank:4}: %4v"));
            wizard->findChild<QPushButton*>(QStringLiteral("btnOK"))->click();
        });
        desk.click("btnEditMessage");
        return desk.box().toPlainText().section(u'\n', 2, 2).section(u' ', 1, 1);
    };
    QCOMPARE(composed(true), "48");
    QCOMPARE(composed(false), "80");
    QVERIFY(allModalsServed());
}

void MasterWindowTest::whatHasPlacesIsNotMended() {
    MasterDesk desk;
    const std::string wide = "CLEAR\r\nTEXT 0 0 RED BLACK \"{tank:4} is far too full\"\r\nACT STILL 1000";
    desk.project.STDMSG[0] = wide;
    desk.project.STDMSG[1] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Emergency stop pump\"\r\nACT STILL 1000";
    desk.displays().setCurrentIndex(1);
    desk.trigger("miToolsCheck");
    auto* const table = desk.find<RowsTable>("tblFindings");
    QTRY_COMPARE(table->model()->rowCount(), 2);
    for (int row = 0; row < 2; ++row) {
        table->selectRow(row == 0 ? 0 : table->model()->rowCount() - 1);
        table->setFocus();
        QTest::keyClick(table, Qt::Key_Return, Qt::AltModifier);
    }
    QCOMPARE(desk.project.STDMSG[0], wide);
    QCOMPARE(desk.project.STDMSG[1],
             "CLEAR\r\nTEXT 0 0 RED BLACK \"Emergency stop pump\"\r\nACT STILL 1000\r\n"
             "OUT GO-LEFT 1 50");
}

void MasterWindowTest::messagesShowThem() {
    const MasterDesk desk;
    desk.trigger("miViewMessages");
    constexpr int textColumn = 6;
    QCOMPARE(desk.cells("tblMessages", textColumn).front(), "Line lin tank");
    desk.displays().setCurrentIndex(2);
    QCOMPARE(desk.cells("tblMessages", textColumn).front(), QString("Line   2 S\u00FCd "));
}

void MasterWindowTest::findingsShowThem() {
    const MasterDesk desk;
    desk.trigger("miToolsCheck");
    QCOMPARE(desk.cells("tblFindings", sentenceColumn), QStringList());
    desk.displays().setCurrentIndex(3);
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn), QStringList{"'Winter' is 6 wide, its place 4"});
}

void MasterWindowTest::allDisplaysAreOneRowForTheSame() {
    const MasterDesk desk;
    writeBytes(desk.listFile(), list + "Line 4,10.0.0.4,,4,Winter\nLine 5,10.0.0.5,,5,Winter\n");
    QTRY_COMPARE(desk.displays().count(), 6);
    desk.trigger("miToolsCheck");
    auto* const all = desk.find<QCheckBox>("chkFindingsAllDisplays");
    QVERIFY(all->isVisible());
    QTest::mouseClick(all, Qt::LeftButton);
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn),
                 QStringList{"Line 3 and 2 more: 'Winter' is 6 wide, its place 4"});
    QCOMPARE(desk.find<QLabel>("lblFindings")->text(), "1 error");
    QTest::mouseClick(all, Qt::LeftButton);
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn), QStringList());
}

void MasterWindowTest::manyFindingsOfAllDisplaysComeBitByBit() {
    MasterDesk desk;
    const auto wideFrom = [&](std::size_t first) {
        for (std::size_t i = 1; i < 30; ++i)
            desk.project.STDMSG[i] =
                i < first ? "" : "CLEAR\r\nTEXT 0 0 RED BLACK \"{tank:4}\"\r\nACT STILL 1";
    };
    wideFrom(1);
    desk.trigger("miToolsCheck");
    auto* const table = desk.find<RowsTable>("tblFindings");
    QTest::mouseClick(desk.find<QCheckBox>("chkFindingsAllDisplays"), Qt::LeftButton);
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn),
                 QStringList(30, "Line 3: 'Winter' is 6 wide, its place 4"));
    table->selectRow(20);
    const QString selected = table->model()->index(20, 1).data().toString();
    QCOMPARE(selected, "STDMSG21");
    wideFrom(5);
    desk.trigger("miToolsCheck");
    QStringList left{"STDMSG1"};
    for (int number = 6; number <= 30; ++number)
        left << QStringLiteral("STDMSG%1").arg(number);
    QTRY_COMPARE(desk.cells("tblFindings", 1), left);
    QTRY_COMPARE(table->currentIndex().siblingAtColumn(1).data().toString(), selected);
    QTest::keyClick(table, Qt::Key_F4);
    QCOMPARE(desk.find<QLabel>("lblNotice")->text(), "STDMSG22: 'Winter' is 6 wide, its place 4");
}

void MasterWindowTest::allDisplaysAreCheckedByKeyboardAlone() {
    const MasterDesk desk;
    const QStringList found{"Line 3: 'Winter' is 6 wide, its place 4"};
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    desk.box().setFocus();
    press(Qt::Key_F8);
    auto* const all = desk.find<QCheckBox>("chkFindingsAllDisplays");
    QVERIFY(all->isVisible());
    press(Qt::Key_D, Qt::AltModifier);
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn), found);
    QTRY_VERIFY(all->isChecked() && all->hasFocus());
    press(Qt::Key_Space);
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn), QStringList());
    // By the tab key, too, on the way from the list.
    desk.find<RowsTable>("tblFindings")->setFocus();
    for (int way = 0; way < 4 && !all->hasFocus(); ++way)
        press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Space);
    QVERIFY(all->isChecked());
    QTRY_COMPARE(desk.cells("tblFindings", sentenceColumn), found);
    press(Qt::Key_F4);
    QVERIFY(desk.box().hasFocus());
    QCOMPARE(desk.box().textCursor().selectedText(),
             QString("TEXT 0 0 RED BLACK \"Line {line:3>} {tank:4}\""));
}

/// The check of all displays may not have come round to what is in the message now.
void MasterWindowTest::whatIsGoneMeanwhileIsNotMended() {
    MasterDesk desk;
    desk.project.STDMSG[1] = "CLEAR\r\nTEXT 0 0 RDE BLACK \"a\"";
    desk.trigger("miToolsCheck");
    QTest::mouseClick(desk.find<QCheckBox>("chkFindingsAllDisplays"), Qt::LeftButton);
    auto* const table = desk.find<RowsTable>("tblFindings");
    QTRY_COMPARE(table->model()->rowCount(), 2);
    table->selectRow(1);
    table->setFocus();
    desk.project.STDMSG[1] = "X";
    QTest::keyClick(table, Qt::Key_Return, Qt::AltModifier);
    QCOMPARE(desk.project.STDMSG[1], std::string("X"));
    QCOMPARE(desk.line("lblNotice"),
             "No fix is known that mends this finding and leaves the others as they are");
}

void MasterWindowTest::placesAreUnderlinedAndTellTheirValues() {
    const MasterDesk desk;
    QTRY_COMPARE(desk.underlined(), (QStringList{"{line:3>}", "{tank:4}"}));
    const auto selections = desk.box().extraSelections();
    QCOMPARE(selections.front().format.underlineStyle(), QTextCharFormat::DotLine);
    QCOMPARE(selections.back().format.toolTip(),
             QString("{tank}: Line 1: Nord, Line 2: S\u00FCd, Line 3: Winter"));
    QCOMPARE(desk.box().bytes(), desk.project.STDMSG[0]);
    desk.displays().setCurrentIndex(3);
    QTRY_COMPARE(desk.underlined(), (QStringList{"{line:3>}", "{tank:4}", "{tank:4}"}));
    QCOMPARE(desk.box().extraSelections().back().format.underlineStyle(), QTextCharFormat::WaveUnderline);
}

void MasterWindowTest::theListIsReadAgainWhenItChanges() {
    const MasterDesk desk;
    desk.displays().setCurrentIndex(1);
    writeBytes(desk.listFile(), "name,address,line,tank\nLine 1,10.0.0.1,7,West\n");
    QTRY_COMPARE(desk.preview(), "Line 7 West");
    QCOMPARE(desk.displays().count(), 2);
    QCOMPARE(desk.displays().currentText(), "Line 1");
}

void MasterWindowTest::aListThatCannotBeReadIsToldInALine() {
    const MasterDesk desk;
    desk.displays().setCurrentIndex(1);
    std::filesystem::remove(desk.listFile());
    QTRY_COMPARE(desk.line("lblMasterList"), "The list of displays displays.csv: No such file or directory");
    QCOMPARE(desk.displays().currentText(), "as typed");
    QCOMPARE(desk.preview(), "Line lin tank");
    writeBytes(desk.listFile(), "name,address,line\nLine 1,10.0.0.1,1\nline 1,10.0.0.2,2\n");
    QTRY_VERIFY(desk.line("lblMasterList").startsWith("The list of displays displays.csv: row 3, name: "));
    writeBytes(desk.listFile(), list);
    QTRY_COMPARE(desk.line("lblMasterList"), QString());
    QCOMPARE(desk.preview(), "Line 1 Nord");
}

void MasterWindowTest::anotherProjectForgetsTheList() {
    MasterDesk desk;
    desk.displays().setCurrentIndex(1);
    desk.newProject("Other");
    desk.trigger("miFileSave");
    QVERIFY(!desk.displays().isVisible());
    desk.openProject("Line3");
    QVERIFY(desk.displays().isVisible());
    QCOMPARE(desk.displays().currentText(), "as typed");
}

void MasterWindowTest::uploadSaysThatThereArePlaces() {
    /// Notes what the line says when an upload begins.
    struct NotingTransfer final : TransferCommands {
        explicit NotingTransfer(EditorFixture& editor) : editor_(editor) {}
        void upload() override { said << editor_.notice(); }
        FetchedDisplay download() override { return {}; }
        FetchedDisplay fetch(const std::string&, const std::string&) override { return {}; }
        QStringList said;

    private:
        EditorFixture& editor_;
    };
    MasterDesk desk;
    NotingTransfer transfer(desk);
    desk.window->useTransfer(transfer);
    desk.trigger("miLinkUpload");
    MasterDesk plain(false);
    NotingTransfer other(plain);
    plain.window->useTransfer(other);
    plain.trigger("miLinkUpload");
    QCOMPARE(transfer.said,
             QStringList{"The messages have places such as {line}; use Upload to Several Displays"});
    QCOMPARE(other.said, QStringList{QString()});
    desk.window.reset();
    plain.window.reset();
}

QTEST_MAIN(MasterWindowTest)
#include "MasterWindowTest.moc"
