#include "tests/support/EditorFixture.h"

#include "display/forms/PreviewClock.h"
#include "mainwindow/PanelDock.h"
#include "script/forms/frmMessageEdit.h"

#include <QDockWidget>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableView>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// What a window may take of a screen of 1920 x 1080 dots at 200 %, and of usual notebooks, without its
/// frame.
constexpr QSize halvedScreen{952, 512};
constexpr QSize notebook{1358, 740};

struct PageButtons {
    const char* page;
    std::vector<const char*> buttons;
};
const std::vector<PageButtons> allButtons{
    {"C2", {"btnModBusApply"}},
    {"C3", {"btnVarApply"}},
    {"C4", {"btnEditMessage", "btnMsgApply"}},
    {"C5", {"btnEmgMsgUpdate", "btnRegMsgUpdate", "cmdUpdateCoil", "cmdUpdateReg"}}};

struct Sized : EditorFixture {
    explicit Sized(QSize size) {
        startWithNewProject();
        resizeToLetters(size);
    }
    QDockWidget* dock() const { return find<QDockWidget>("dockPanels"); }
    /// Height of the shown page beyond what it needs.
    int spare() const {
        const auto* const area = qobject_cast<QScrollArea*>(find<QTabWidget>("tabDetails")->currentWidget());
        return area->viewport()->height() - area->widget()->minimumSizeHint().height();
    }
    bool isSeen(const char* name) const {
        const auto* const button = find<QPushButton>(name);
        return button->isVisible() && button->visibleRegion() == button->rect();
    }
};

} // namespace

/// Run on small screens: see the build file.
class ScreenSizeTest : public QObject {
    Q_OBJECT
private slots:
    void theScreenIsTheSmallOne() {
        const QSize pixels =
            QGuiApplication::primaryScreen()->size() * QGuiApplication::primaryScreen()->devicePixelRatio();
        QVERIFY(qAbs(pixels.width() - 800) <= 1);
        QVERIFY(qAbs(pixels.height() - 600) <= 1);
    }

    void theWindowOpensWithinIt() {
        EditorFixture editor;
        editor.startWithNewProject();
        const QRect available = editor.window->screen()->availableGeometry();
        QVERIFY2(available.width() >= editor.window->frameGeometry().width() &&
                     available.height() >= editor.window->frameGeometry().height(),
                 qPrintable(QStringLiteral("%1 x %2")
                                .arg(editor.window->frameGeometry().width())
                                .arg(editor.window->frameGeometry().height())));
    }

    void everyButtonOfThePagesIsSeenAtTwiceTheSize() {
        const Sized editor(halvedScreen);
        for (const PageButtons& page : allButtons) {
            editor.showPage(page.page);
            for (const char* const button : page.buttons)
                QTRY_VERIFY2(editor.isSeen(button), button);
        }
    }

    void everyButtonOfThePagesIsSeenAboveThePanels() {
        for (const char* const panel : {"miToolsCheck", "miViewMessages", "miViewMonitor"}) {
            const Sized editor(notebook);
            editor.trigger(panel);
            for (const PageButtons& page : allButtons) {
                editor.showPage(page.page);
                for (const char* const button : page.buttons)
                    QTRY_VERIFY2(editor.isSeen(button), button);
            }
        }
    }

    void theDockTakesWhatThePageCanSpare() {
        const Sized editor({1008, 700});
        editor.trigger("miToolsCheck");
        editor.showPage("C4");
        editor.window->resizeDocks({editor.dock()}, {600}, Qt::Vertical);
        QTRY_COMPARE(editor.spare(), 0);
        const int high = editor.dock()->height();
        editor.showPage("C5");
        QTRY_COMPARE(editor.spare(), 0);
        QVERIFY(editor.dock()->height() < high);
        editor.showPage("C4");
        QTRY_COMPARE(editor.dock()->height(), high);
    }

    void linesBelowThePagesThatTakeSeveralRowsAreShownWhole() {
        const Sized editor(halvedScreen);
        const QString text = QStringLiteral("It is not whole: twelve messages were read. ").repeated(16);
        editor.showPage("C5");
        auto* const dock = editor.find<PanelDock>("dockPanels");
        for (const char* const name : {"One", "Other"})
            dock->offer({QString::fromLatin1(name), text, QStringLiteral("Show"), [] {}});
        // The page has nothing to spare.
        QTRY_VERIFY(editor.spare() < 0 && dock->height() == dock->widget()->minimumSizeHint().height());
        for (const char* const name : {"lblOne", "lblOther"}) {
            const auto* const line = editor.find<QLabel>(name);
            QVERIFY(line->height() > 2 * line->fontMetrics().lineSpacing());
            QCOMPARE(line->height(), line->heightForWidth(line->width()));
        }
    }

    void aLineLeavesThePanelItsFirstRow() {
        Sized editor(halvedScreen);
        editor.project.STDMSG[2] = "HELLO";
        editor.showPage("C4");
        editor.trigger("miEditNextFinding");
        const auto* const table = editor.find<QTableView>("tblFindings");
        QVERIFY(!editor.notice().isEmpty());
        QTRY_VERIFY(table->viewport()->rect().contains(table->visualRect(table->currentIndex())));
    }

    void theWizardFitsLowScreens() {
        const EditorFixture editor;
        frmMessageEdit wizard({});
        wizard.showPreview(editor.project, 128, defaultValues(editor.project));
        const QSize least = wizard.minimumSizeHint();
        // Without the frame; larger letters need a larger screen.
        const QSize low = QSize(911 - 8, 512 - 28) * std::max(1.0, wizard.fontMetrics().lineSpacing() / 14.0);
        QVERIFY2(least.width() <= low.width() && least.height() <= low.height(),
                 qPrintable(QStringLiteral("%1 x %2").arg(least.width()).arg(least.height())));
        wizard.resize(2000, 2000);
        wizard.show();
        QVERIFY(QTest::qWaitForWindowExposed(&wizard));
        auto* const panel = wizard.findChild<QWidget*>(QStringLiteral("wizardPreview"));
        QVERIFY(panel->height() >= 4 * wizard.fontMetrics().height());
        // What is only looked at gives way to what is operated.
        wizard.resize(least);
        QTRY_COMPARE(wizard.size(), least);
        for (const auto* const control : wizard.findChildren<QPushButton*>())
            QVERIFY2(control->visibleRegion() == control->rect(), qPrintable(control->objectName()));
        QVERIFY(panel->visibleRegion().isEmpty());
    }
};

QTEST_MAIN(ScreenSizeTest)
#include "ScreenSizeTest.moc"
