#include "mainwindow/PanelDock.h"
#include "tests/support/EditorFixture.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
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
};

void PanelDockTest::isHiddenAndEmptyAtStart() {
    Docked editor;
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(!editor.dock->widget());
    editor.dock->showNotice(QStringLiteral("nobody sees this"));
    QVERIFY(!editor.dock->isVisible());
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

QTEST_MAIN(PanelDockTest)
#include "PanelDockTest.moc"
