#include "mainwindow/PanelDock.h"
#include "tests/support/NamedItem.h"
#include "widgets/ProjectPanel.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include <stdexcept>

using namespace orvista;

namespace {

/// A panel that is a box to write in.
class BoxPanel : public ProjectPanel {
    Q_OBJECT
public:
    explicit BoxPanel(const char* name) {
        box->setObjectName(QString::fromLatin1(name));
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(box);
    }
    void follow() override { ++follows; }
    void markNotApplied() override { ++marks; }

    QLineEdit* box = new QLineEdit;
    int follows = 0;
    int marks = 0;
};

class FirstPanel final : public BoxPanel {
    Q_OBJECT
public:
    FirstPanel() : BoxPanel("first") {}
};

class SecondPanel final : public BoxPanel {
    Q_OBJECT
public:
    SecondPanel() : BoxPanel("second") {}
};

class UnknownPanel final : public BoxPanel {
    Q_OBJECT
public:
    UnknownPanel() : BoxPanel("unknown") {}
};

/// A window with a page of two boxes and a dock of two panels.
struct Docked {
    Docked() {
        auto* const page = new QWidget;
        auto* const layout = new QVBoxLayout(page);
        layout->addWidget(box);
        pages->addTab(page, QStringLiteral("Page"));
        pages->addTab(new QLineEdit, QStringLiteral("Other Page"));
        window.setCentralWidget(new QWidget);
        auto* const content = new QVBoxLayout(window.centralWidget());
        content->addWidget(pages);
        window.menuBar();
        dock->addPanel({&FirstPanel::staticMetaObject, QStringLiteral("first"), [this] {
                            made << QStringLiteral("first");
                            return new FirstPanel;
                        }});
        dock->addPanel({&SecondPanel::staticMetaObject, QStringLiteral("second"), [this] {
                            made << QStringLiteral("second");
                            return new SecondPanel;
                        }});
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            throw std::logic_error("the window does not show");
        box->setFocus();
    }
    template <typename Widget>
    Widget* find(const char* name) const {
        auto* const widget = window.findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            throw std::logic_error(std::string("no ") + name);
        return widget;
    }

    QMainWindow window;
    QTabWidget* pages = new QTabWidget;
    QPlainTextEdit* box = new QPlainTextEdit;
    PanelDock* dock = new PanelDock(window);
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
    void aLongWordInALineDoesNotWidenTheWindow();
    void aLineOpensTheDockAndClosesItAgain();
    void aLineLeavesADockOpenThatWasOpen();
    void aLineLeavesAPanelOpenThatTheUserWentTo();
    void panelsHearWhatHappens();
    void rowsOfAPanelLeadThroughTheDock();
    void anUnknownPanelIsRefused();
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
    editor.dock->open<SecondPanel>();
    QVERIFY(editor.dock->isVisible());
    auto* const tabs = editor.find<QTabWidget>("tabPanels");
    QCOMPARE(editor.made, QStringList{"second"});
    QCOMPARE(editor.dock->windowTitle(), QStringLiteral("second"));
    editor.dock->open<FirstPanel>();
    QCOMPARE(tabs->tabText(0), QStringLiteral("first"));
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(editor.dock->windowTitle(), QStringLiteral("first"));
    editor.dock->open<SecondPanel>();
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->currentIndex(), 1);
    QCOMPARE(editor.made, (QStringList{"second", "first"}));
}

void PanelDockTest::neitherFloatsNorMovesNorHasAContextMenu() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    QCOMPARE(editor.dock->features(), QDockWidget::DockWidgetClosable);
    QCOMPARE(editor.dock->allowedAreas(), Qt::DockWidgetAreas(Qt::BottomDockWidgetArea));
    for (QWidget* const widget :
         {static_cast<QWidget*>(editor.dock), static_cast<QWidget*>(editor.window.menuBar()),
          static_cast<QWidget*>(&editor.window)}) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, widget->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(widget, &event);
        QVERIFY(!QApplication::activePopupWidget());
    }
}

void PanelDockTest::leavesTheFocusToThePage() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    QCoreApplication::processEvents();
    QVERIFY(editor.box->hasFocus());
    editor.dock->hide();
    QVERIFY(editor.box->hasFocus());
}

void PanelDockTest::escapeReturnsTheFocusToThePage() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    auto* const panel = editor.find<QLineEdit>("first");
    panel->setFocus();
    QVERIFY(panel->hasFocus());
    QTest::keyClick(panel, Qt::Key_Escape);
    QVERIFY(editor.box->hasFocus());
    QVERIFY(editor.dock->isVisible());
}

void PanelDockTest::escapeLeadsToThePageThatIsInFrontNow() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    auto* const panel = editor.find<QLineEdit>("first");
    panel->setFocus();
    editor.pages->setCurrentIndex(1);
    QVERIFY(panel->hasFocus());
    QTest::keyClick(panel, Qt::Key_Escape);
    QVERIFY(QApplication::focusWidget());
    QVERIFY(editor.pages->isAncestorOf(QApplication::focusWidget()));
    QVERIFY(QApplication::focusWidget()->isVisible());
}

void PanelDockTest::hidingReturnsTheFocusToThePage() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    editor.find<QLineEdit>("first")->setFocus();
    auto* const close = editor.find<QToolButton>("btnClosePanels");
    QTest::mouseClick(close, Qt::LeftButton);
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(editor.box->hasFocus());
    editor.dock->open<FirstPanel>();
    close->setFocus(Qt::TabFocusReason);
    QTest::keyClick(close, Qt::Key_Return);
    QVERIFY(!editor.dock->isVisible());
    QVERIFY(editor.box->hasFocus());
}

void PanelDockTest::aNoticeStandsInALineOfItsOwn() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    auto* const notice = editor.find<QLabel>("lblNotice");
    QVERIFY(!notice->isVisible());
    editor.dock->showNotice(QStringLiteral("<b>once more</b>"));
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), QStringLiteral("<b>once more</b>"));
    QCOMPARE(notice->textFormat(), Qt::PlainText);
    editor.dock->showNotice({});
    QVERIFY(!notice->isVisible());
}

void PanelDockTest::aLongWordInALineDoesNotWidenTheWindow() {
    Docked editor;
    const QString name(180, u'W');
    editor.dock->showNotice(name + QStringLiteral(" was changed on the disk"));
    auto* const notice = editor.find<QLabel>("lblNotice");
    const int line = notice->fontMetrics().horizontalAdvance(name.left(60));
    QVERIFY(editor.window.minimumSizeHint().width() < line);
    editor.window.resize(line, editor.window.height());
    QTRY_COMPARE(editor.window.width(), line);
    // All of it is there, in several lines.
    QVERIFY(notice->heightForWidth(notice->width()) >= 3 * notice->fontMetrics().lineSpacing());
    QCOMPARE(notice->text().remove(QChar(0x200B)), name + QStringLiteral(" was changed on the disk"));
}

void PanelDockTest::aLineOpensTheDockAndClosesItAgain() {
    Docked editor;
    editor.dock->showNotice(QStringLiteral("first this"));
    QVERIFY(editor.dock->isVisible());
    QVERIFY(editor.box->hasFocus());
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
    QVERIFY(editor.box->hasFocus());
}

void PanelDockTest::aLineLeavesADockOpenThatWasOpen() {
    Docked editor;
    editor.dock->open<FirstPanel>();
    editor.dock->showNotice(QStringLiteral("first this"));
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
    // A panel that is opened while the line is there keeps the dock, too.
    editor.dock->hide();
    editor.dock->showNotice(QStringLiteral("first this"));
    editor.dock->open<SecondPanel>();
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
}

void PanelDockTest::aLineLeavesAPanelOpenThatTheUserWentTo() {
    Docked editor;
    auto& first = editor.dock->open<FirstPanel>();
    editor.dock->open<SecondPanel>();
    auto* const tabs = editor.find<QTabWidget>("tabPanels");
    const auto openByALine = [&] {
        editor.dock->hide();
        editor.dock->showNotice(QStringLiteral("first this"));
        QVERIFY(first.parentWidget()->isVisible());
    };
    // The user clicks into a panel that the line brought along, and works there.
    tabs->setCurrentWidget(&first);
    openByALine();
    QTest::mouseClick(first.box, Qt::LeftButton);
    QVERIFY(first.box->hasFocus());
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
    QVERIFY(first.box->hasFocus());
    // So it is with one that was chosen by its tab, though the keyboard stays on the page.
    editor.box->setFocus();
    openByALine();
    QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(1).center());
    QVERIFY(editor.box->hasFocus());
    editor.dock->showNotice({});
    QVERIFY(editor.dock->isVisible());
    // Panels that nobody went to go with the line.
    openByALine();
    editor.dock->showNotice({});
    QVERIFY(!editor.dock->isVisible());
}

void PanelDockTest::panelsHearWhatHappens() {
    Docked editor;
    editor.dock->followProject();
    editor.dock->markNotApplied();
    auto& second = editor.dock->open<SecondPanel>();
    QCOMPARE(editor.dock->shownPanel(), &second);
    QCOMPARE(second.follows, 0);
    editor.dock->followProject();
    editor.dock->markNotApplied();
    editor.dock->markNotApplied();
    QCOMPARE(second.follows, 1);
    QCOMPARE(second.marks, 2);
    editor.dock->setPanelsEnabled(false);
    QVERIFY(!second.isEnabled());
    QVERIFY(!editor.dock->open<FirstPanel>().isEnabled());
    editor.dock->hide();
    QCOMPARE(editor.dock->shownPanel(), nullptr);
    QCOMPARE(editor.made, (QStringList{"second", "first"}));
}

void PanelDockTest::rowsOfAPanelLeadThroughTheDock() {
    Docked editor;
    QSignalSpy chosen(editor.dock, &PanelDock::placeChosen);
    QSignalSpy left(editor.dock, &PanelDock::rowLeft);
    auto& second = editor.dock->open<SecondPanel>();
    emit second.placeChosen({named("STDMSG3"), 2});
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.front().front().value<Place>(), (Place{named("STDMSG3"), 2}));
    emit second.rowLeft();
    QCOMPARE(left.size(), 1);
}

void PanelDockTest::anUnknownPanelIsRefused() {
    Docked editor;
    QVERIFY_THROWS_EXCEPTION(std::out_of_range, editor.dock->open<UnknownPanel>());
    QVERIFY(!editor.dock->isVisible());
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
    editor.dock->open<FirstPanel>();
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
    QCOMPARE(editor.window.findChildren<QLabel*>(QStringLiteral("lblCopy")).size(), 1);
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
    QDialog dialog(&editor.window);
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
