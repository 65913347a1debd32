#include "display/forms/DisplayPreview.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/PanelView.h"

#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTextBlock>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string twoPages = "CLEAR\r\nTEXT 0 0 RED BLACK \"One\"\r\nACT STILL 1000\r\n"
                             "CLEAR\r\nTEXT 0 0 RED BLACK \"Two\"\r\nACT STILL 1000";

QString read(const EditorFixture& editor) {
    return editor.find<PanelView>("panelPreview")->accessibleDescription();
}

} // namespace

/// The preview in its place on the Message List page.
class MessagePreviewTest : public QObject {
    Q_OBJECT
private slots:
    void isShownAtTheStart();
    void showsTheFirstPageOfAClickedMessage();
    void changesNothingOfThePage();
    void theViewMenuHidesAndShowsIt();
    void showsVariablesAsApplied();
    void showsTheBitmapsOfTheFolderThatTheProjectIsSavedIn();
    void leavesTheBoxSixLinesInTheSmallestWindow();
    void leavesTheButtonsWholeAboveThePanels();
    void whatDoesNotFitIsSaidWithoutMovingThePage();
    void theWizardPreviewsForTheSameColumns();
    void underlinesChangeNothingOfThePage();
};

void MessagePreviewTest::isShownAtTheStart() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showPage("C4");
    QVERIFY(editor.find<DisplayPreview>("displayPreview")->isVisible());
    QVERIFY(editor.find<QAction>("miViewPreview")->isChecked());
    QCOMPARE(editor.find<PanelView>("panelPreview")->shown(), LedRaster({128}));
    QVERIFY(!editor.find<QWidget>("btnPreviewPlay")->isEnabled());
}

void MessagePreviewTest::showsTheFirstPageOfAClickedMessage() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[6] = twoPages;
    editor.project.ALTMSG[1] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Fire\"\r\nACT STILL 1000";
    editor.showMessage("R7");
    QCOMPARE(read(editor), "One");
    editor.find<DeviceTextEdit>("txtMsg")->moveCursor(QTextCursor::End);
    QCOMPARE(read(editor), "Two");
    editor.showMessage("E2");
    QCOMPARE(read(editor), "Fire");
    editor.showMessage("R7");
    QCOMPARE(read(editor), "One");
    QCOMPARE(editor.find<QLabel>("lblPreviewPage")->text(), "1 of 2");
    editor.clickNode("trvMsg", "REGULAR");
    QCOMPARE(read(editor), QString());
    QVERIFY(!editor.find<QWidget>("btnPreviewPlay")->isEnabled());
}

void MessagePreviewTest::changesNothingOfThePage() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.STDMSG[6] = twoPages;
    editor.showMessage("R7");
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    box->setFocus();
    for (const char* name : {"btnPreviewPlay", "btnPreviewPlay", "btnPreviewForward", "btnPreviewBack"}) {
        editor.click(name);
        QVERIFY2(box->hasFocus(), name);
    }
    editor.find<QSpinBox>("spnPreviewColumns")->setValue(200);
    QVERIFY(!editor.find<QPushButton>("btnMsgApply")->isEnabled());
    QVERIFY(!box->document()->isUndoAvailable());
    QCOMPARE(box->bytes(), twoPages);
    QCOMPARE(editor.notAppliedMark(), QString());
}

void MessagePreviewTest::theViewMenuHidesAndShowsIt() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R7");
    auto* const preview = editor.find<DisplayPreview>("displayPreview");
    editor.trigger("miViewPreview");
    QVERIFY(!preview->isVisible());
    QVERIFY(!editor.find<QAction>("miViewPreview")->isChecked());
    editor.trigger("miViewPreview");
    QVERIFY(preview->isVisible());
    QVERIFY(editor.find<QAction>("miViewPreview")->isChecked());
}

void MessagePreviewTest::showsVariablesAsApplied() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.project.CoilVar[0].onText = "ON";
    editor.project.CoilVar[0].offText = "OFF";
    editor.project.STDMSG[6] = "CLEAR\r\nDISPVAR 0 0 RED BLACK CoilVar1\r\nACT STILL 1000";
    editor.showMessage("R7");
    QCOMPARE(read(editor), "OFF");
    editor.showPage("C3");
    editor.project.CoilVar[0].offText = "STOP";
    editor.showPage("C4");
    QCOMPARE(read(editor), "STOP");
}

void MessagePreviewTest::showsTheBitmapsOfTheFolderThatTheProjectIsSavedIn() {
    EditorFixture editor;
    editor.startWithNewProject();
    const TemporaryFolder other;
    QImage picture(4, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(QString::fromStdString(other.file("pump.bmp")), "BMP"));
    editor.project.STDMSG[6] = "CLEAR\r\nIMG 0 0 RED BLACK pump.bmp\r\nACT STILL 1000";
    editor.showMessage("R7");
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    QTRY_COMPARE(box->extraSelections().size(), 1); // missing
    LedRaster expected({128});
    expected.fill(0, 0, 4, 2, Led::Red);
    QVERIFY(editor.find<PanelView>("panelPreview")->shown() != expected);
    editor.chooser.saveAsPaths.push_back(other.file("Line4.orx"));
    editor.trigger("miFileSaveAs");
    QCOMPARE(editor.find<PanelView>("panelPreview")->shown(), expected);
    QTRY_COMPARE(box->extraSelections().size(), 0);
}

void MessagePreviewTest::leavesTheBoxSixLinesInTheSmallestWindow() {
    EditorFixture editor;
    editor.startWithNewProject();
    std::string lines;
    for (int line = 1; line < 20; ++line)
        lines += "TEXT\r\n";
    editor.project.STDMSG[6] = lines;
    editor.showMessage("R7");
    editor.window->resize(1, 1);
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    QTRY_COMPARE(editor.window->height(), editor.window->minimumSizeHint().height());
    const int last = box->cursorForPosition({5, box->viewport()->height() - 1}).blockNumber();
    const QRect sixth = box->cursorRect(QTextCursor(box->document()->findBlockByNumber(5)));
    QVERIFY2(last >= 5 && sixth.bottom() < box->viewport()->height(), qPrintable(QString::number(last)));
    QVERIFY(editor.find<PanelView>("panelPreview")->height() > 20);
}

void MessagePreviewTest::leavesTheButtonsWholeAboveThePanels() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.resizeToLetters({800, 600});
    editor.showMessage("R7");
    editor.trigger("miToolsCheck");
    QTest::keyClicks(editor.find<DeviceTextEdit>("txtMsg"), QStringLiteral("x"));
    for (const char* name : {"btnEditMessage", "btnMsgApply"}) {
        const auto* const button = editor.find<QPushButton>(name);
        QTRY_VERIFY2(button->isVisible() && button->visibleRegion() == button->rect(), name);
    }
}

void MessagePreviewTest::whatDoesNotFitIsSaidWithoutMovingThePage() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R7");
    const auto* const fit = editor.find<QLabel>("lblPreviewFit");
    // Where the row asked for more room, the page would take it from the tree beside it.
    const auto leastWidth = [fit] { return fit->parentWidget()->minimumSizeHint().width(); };
    const int before = leastWidth();
    editor.find<DeviceTextEdit>("txtMsg")->setPlainText("TEXT 0 0 RED BLACK \"Emergency stop pump\"");
    QCOMPARE(fit->text(), "3 characters do not fit");
    QCOMPARE(fit->toolTip(), fit->text());
    QCOMPARE(leastWidth(), before);
    // There is room for all of it in a wide window.
    editor.resizeToLetters({1200, 600});
    QTRY_VERIFY(fit->width() >= fit->fontMetrics().horizontalAdvance(fit->text()));
}

void MessagePreviewTest::theWizardPreviewsForTheSameColumns() {
    EditorFixture editor;
    editor.startWithNewProject();
    editor.showMessage("R7");
    editor.find<QSpinBox>("spnPreviewColumns")->setValue(64);
    QString fit;
    LedRaster shown({1});
    onModal(QStringLiteral("frmMessageEdit"), [&](QWidget* wizard) {
        QTest::keyClicks(wizard->findChild<QLineEdit*>("txtText"), QStringLiteral("Pump station"));
        fit = wizard->findChild<QLabel*>("lblWizardFit")->text();
        shown = wizard->findChild<PanelView*>("wizardPreview")->shown();
        QTest::mouseClick(wizard->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
    });
    editor.click("btnEditMessage");
    QVERIFY(allModalsServed());
    QCOMPARE(fit, "passes whole, 4 characters at a time beyond the edge");
    QCOMPARE(shown.columns(), 64);
    QCOMPARE(editor.find<PanelView>("panelPreview")->shown(), shown);
}

void MessagePreviewTest::underlinesChangeNothingOfThePage() {
    EditorFixture editor;
    editor.startWithNewProject();
    const std::string wrong = "CLEAR\nTXET 0 0 RED BLACK \"One\"\r\rTEXT 0 0 PINK BLACK \"\x80\"";
    editor.project.STDMSG[6] = wrong;
    editor.project.STDMSG[7] = twoPages;
    auto* const box = editor.find<DeviceTextEdit>("txtMsg");
    const auto isUntouched = [&](const std::string& script) {
        return !editor.find<QPushButton>("btnMsgApply")->isEnabled() && !box->document()->isUndoAvailable() &&
               !box->document()->isRedoAvailable() && box->bytes() == script &&
               editor.notAppliedMark().isEmpty();
    };
    editor.showMessage("R7");
    QTRY_COMPARE(box->extraSelections().size(), 2);
    QVERIFY(isUntouched(wrong));
    editor.window->RefreshViews();
    QVERIFY(isUntouched(wrong));
    QTRY_COMPARE(box->extraSelections().size(), 2);
    QVERIFY(isUntouched(wrong));
    // To a message in which nothing is found, and back.
    editor.showMessage("R8");
    QTRY_COMPARE(box->extraSelections().size(), 0);
    QVERIFY(isUntouched(twoPages));
    editor.showMessage("R7");
    QTRY_COMPARE(box->extraSelections().size(), 2);
    editor.trigger("miToolsCheck");
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, Qt::black);
    box->setPalette(palette);
    QCoreApplication::processEvents();
    QVERIFY(isUntouched(wrong));
    QCOMPARE(box->extraSelections().size(), 2);
}

QTEST_MAIN(MessagePreviewTest)
#include "MessagePreviewTest.moc"
