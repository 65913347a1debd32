#include "mainwindow/PanelDock.h"
#include "tests/support/EditorFixture.h"

#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QToolButton>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The editor with a dock of two panels, each a box to write in.
struct Docked : EditorFixture {
    Docked() {
        startWithNewProject();
        dock = find<PanelDock>("dockPanels");
        for (const char* name : {"first", "second"})
            dock->addPanel({name, QString::fromLatin1(name), [this, name] {
                                made << QString::fromLatin1(name);
                                auto* const box = new QLineEdit;
                                box->setObjectName(QString::fromLatin1(name));
                                return box;
                            }});
    }
    PanelDock* dock;
    QStringList made;
};

} // namespace

class PanelDockTest : public QObject {
    Q_OBJECT
private slots:
    void isHiddenAndEmptyAtStart();
    void aPanelIsBuiltWhenItIsOpened();
    void neitherFloatsNorMovesNorHasAContextMenu();
    void leavesTheFocusToThePage();
    void escapeReturnsTheFocusToThePage();
    void escapeLeadsToThePageThatIsInFrontNow();
    void hidingReturnsTheFocusToThePage();
    void aNoticeStandsInALineOfItsOwn();
    void aLineOpensTheDockAndClosesItAgain();
    void aLineLeavesADockOpenThatWasOpen();
    void anOfferRunsByItsButtonOnce();
    void anOfferRunsByTheKeyboardAlone();
    void anOfferOfTheSameNameReplacesTheFirst();
    void anOfferDoesNothingUnderAModalDialog();
};

void PanelDockTest::isHiddenAndEmptyAtStart() {
    Docked editor;
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(!editor.dock->widget());
    editor.dock->showNotice({});
    editor.dock->withdraw(QStringLiteral("Reload"));
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(!editor.dock->widget());
    QVERIFY(editor.made.isEmpty());
}

void PanelDockTest::aPanelIsBuiltWhenItIsOpened() {
    Docked editor;
    editor.dock->open("second");
    QVERIFY(editor.dock->isVisible());
    auto* const tabs = editor.find<QTabWidget>("tabPanels");
    QCOMPARE(editor.made, QStringList{"second"});
    QCOMPARE(editor.dock->windowTitle(), QStringLiteral("second"));
    editor.dock->open("first");
    QCOMPARE(tabs->tabText(0), QStringLiteral("first"));
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(editor.dock->windowTitle(), QStringLiteral("first"));
    editor.dock->open("second");
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(editor.made, (QStringList{"second", "first"}));
}

void PanelDockTest::neitherFloatsNorMovesNorHasAContextMenu() {
    Docked editor;
    editor.dock->open("first");
    QCOMPARE(editor.dock->features(), QDockWidget::DockWidgetClosable);
    QCOMPARE(editor.dock->allowedAreas(), Qt::DockWidgetAreas(Qt::BottomDockWidgetArea));
    for (QWidget* const widget :
         {static_cast<QWidget*>(editor.dock), static_cast<QWidget*>(editor.window->menuBar()),
          static_cast<QWidget*>(editor.window.get())}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, widget->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(widget, &event);
        QVERIFY(!QApplication::activePopupWidget());
    }
}

void PanelDockTest::leavesTheFocusToThePage() {
    Docked editor;
    editor.showMessage("R3");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    editor.dock->open("first");
    QCoreApplication::processEvents();
    QVERIFY(box->hasFocus());
    editor.dock->hide();
    QVERIFY(box->hasFocus());
}

void PanelDockTest::escapeReturnsTheFocusToThePage() {
    Docked editor;
    editor.showMessage("R3");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    editor.dock->open("first");
    auto* const panel = editor.find<QLineEdit>("first");
    panel->setFocus();
    QVERIFY(panel->hasFocus());
    QTest::keyClick(panel, Qt::Key_Escape);
    QVERIFY(box->hasFocus());
    QVERIFY(editor.dock->isVisible());
}

void PanelDockTest::escapeLeadsToThePageThatIsInFrontNow() {
    Docked editor;
    editor.showMessage("R3");
    editor.find<QPlainTextEdit>("txtMsg")->setFocus();
    editor.dock->open("first");
    auto* const panel = editor.find<QLineEdit>("first");
    panel->setFocus();
    editor.trigger("miVarLst");
    QVERIFY(panel->hasFocus());
    QTest::keyClick(panel, Qt::Key_Escape);
    auto* const pages = editor.find<QTabWidget>("tabDetails");
    QVERIFY(QApplication::focusWidget());
    QVERIFY(pages->isAncestorOf(QApplication::focusWidget()));
    QVERIFY(QApplication::focusWidget()->isVisible());
}

void PanelDockTest::hidingReturnsTheFocusToThePage() {
    Docked editor;
    editor.showMessage("R3");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    editor.dock->open("first");
    editor.find<QLineEdit>("first")->setFocus();
    auto* const close = editor.find<QToolButton>("btnClosePanels");
    QTest::mouseClick(close, Qt::LeftButton);
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(box->hasFocus());
    editor.dock->open("first");
    close->setFocus(Qt::TabFocusReason);
    QTest::keyClick(close, Qt::Key_Return);
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(box->hasFocus());
}

void PanelDockTest::aNoticeStandsInALineOfItsOwn() {
    Docked editor;
    editor.dock->open("first");
    auto* const notice = editor.find<QLabel>("lblNotice");
    QVERIFY(!notice->isVisible());
    editor.dock->showNotice(QStringLiteral("<b>once more</b>"));
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("<b>once more</b>"));
    QCOMPARE(notice->textFormat(), Qt::PlainText);
    editor.dock->showNotice({});
    QVERIFY(!notice->isVisible());
}

void PanelDockTest::aLineOpensTheDockAndClosesItAgain() {
    Docked editor;
    editor.showMessage("R3");
    auto* const box = editor.find<QPlainTextEdit>("txtMsg");
    box->setFocus();
    editor.dock->showNotice(QStringLiteral("first this"));
    QVERIFY(editor.dock->isVisible());
    QVERIFY(box->hasFocus());
    QVERIFY(!editor.find<QTabWidget>("tabPanels")->isVisible());
    QVERIFY(editor.made.isEmpty());
    editor.dock->offer(
        {QStringLiteral("Reload"), QStringLiteral("It changed"), QStringLiteral("Reload"), [] {}});
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
    auto* const dismiss = editor.find<QToolButton>("btnDismissReload");
    dismiss->setFocus(Qt::TabFocusReason);
    QTest::keyClick(dismiss, Qt::Key_Return);
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(box->hasFocus());
}

void PanelDockTest::aLineLeavesADockOpenThatWasOpen() {
    Docked editor;
    editor.dock->open("first");
    editor.dock->showNotice(QStringLiteral("first this"));
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
    // A panel that is opened while the line is there keeps the dock, too.
    editor.dock->hide();
    editor.dock->showNotice(QStringLiteral("first this"));
    editor.dock->open("second");
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
}

void PanelDockTest::anOfferRunsByItsButtonOnce() {
    Docked editor;
    int runs = 0;
    editor.dock->offer(
        {QStringLiteral("Reload"), QStringLiteral("It changed"), QStringLiteral("Reload"), [&] { ++runs; }});
    QCOMPARE(editor.find<QLabel>("lblReload")->text(), QStringLiteral("It changed"));
    auto* const button = editor.find<QPushButton>("btnReload");
    QCOMPARE(button->text(), QStringLiteral("Reload"));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(runs, 1);
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(!editor.find<QLabel>("lblReload")->isVisible());
    // A line without a button.
    editor.dock->offer({QStringLiteral("Reload"), QStringLiteral("It is gone"), {}, nullptr});
    QVERIFY(!button->isVisible());
}

void PanelDockTest::anOfferRunsByTheKeyboardAlone() {
    Docked editor;
    editor.dock->open("first");
    int runs = 0;
    editor.dock->offer(
        {QStringLiteral("Reload"), QStringLiteral("It changed"), QStringLiteral("Reload"), [&] { ++runs; }});
    auto* const box = editor.find<QLineEdit>("first");
    box->setFocus();
    const QWidget* const button = editor.find<QPushButton>("btnReload");
    for (int i = 0; i < 5 && !button->hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(button->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QCOMPARE(runs, 1);
}

void PanelDockTest::anOfferOfTheSameNameReplacesTheFirst() {
    Docked editor;
    QStringList runs;
    for (const char* word : {"one", "two"})
        editor.dock->offer({QStringLiteral("Copy"), QString::fromLatin1(word), QString::fromLatin1(word),
                            [&runs, word] { runs << QString::fromLatin1(word); }});
    QCOMPARE(editor.window->findChildren<QLabel*>(QStringLiteral("lblCopy")).size(), 1);
    QCOMPARE(editor.find<QLabel>("lblCopy")->text(), QStringLiteral("two"));
    QTest::mouseClick(editor.find<QPushButton>("btnCopy"), Qt::LeftButton);
    QCOMPARE(runs, QStringList{"two"});
    editor.dock->offer({QStringLiteral("Copy"), QStringLiteral("three"), QStringLiteral("three"), [] {}});
    editor.dock->withdraw(QStringLiteral("Copy"));
    QVERIFY(!editor.dock->isVisible());
}

void PanelDockTest::anOfferDoesNothingUnderAModalDialog() {
    Docked editor;
    int runs = 0;
    editor.dock->offer(
        {QStringLiteral("Reload"), QStringLiteral("It changed"), QStringLiteral("Reload"), [&] { ++runs; }});
    QDialog dialog(editor.window.get());
    dialog.setModal(true);
    dialog.show();
    editor.find<QPushButton>("btnReload")->click();
    QCOMPARE(runs, 0);
    dialog.hide();
    editor.find<QPushButton>("btnReload")->click();
    QCOMPARE(runs, 1);
}

QTEST_MAIN(PanelDockTest)
#include "PanelDockTest.moc"
