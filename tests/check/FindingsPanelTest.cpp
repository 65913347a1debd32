#include "check/forms/FindingsPanel.h"

#include "model/Project.h"
#include "tests/support/NamedItem.h"
#include "widgets/RowsTable.h"

#include <QLabel>
#include <QSignalSpy>
#include <QTest>

using namespace orvista;

namespace {

/// The panel by itself, on a project whose message 12 has an unknown command in its second line.
struct Shown {
    Shown() {
        project.STDMSG[11] = "CLEAR\r\nNONSENSE\r\n";
        panel.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel));
        panel.check();
    }
    ~Shown() { panel.hide(); } // the focus leaves the table while the panel is whole
    RowsTable& table() const { return *panel.findChild<RowsTable*>(QStringLiteral("tblFindings")); }
    int count() const { return table().model()->rowCount(); }
    void choose(int row) const { table().setCurrentIndex(table().model()->index(row, 0)); }
    /// Gives a regular message a script, and checks.
    void change(std::size_t index, const char* script) {
        project.STDMSG[index] = script;
        panel.check();
    }
    /// The items of the selected rows.
    QStringList selected() const {
        QStringList items;
        for (const int row : table().selectedRows())
            items << table().model()->index(row, 1).data().toString();
        return items;
    }
    QString current() const { return table().currentIndex().siblingAtColumn(1).data().toString(); }
    QString cell(int column) const { return table().model()->index(0, column).data().toString(); }

    Project project;
    FolderCheck folderCheck;
    std::vector<Item> notApplied;
    FileRemarks fileRemarks;
    FindingsPanel panel{project,
                        fileRemarks,
                        folderCheck,
                        128,
                        [this] { return notApplied; },
                        [this] {
                            return PreviewSetting{128, defaultValues(project)};
                        }};
};

enum Column { SeverityColumn, ItemColumn, LabelColumn, LineColumn, CodeColumn, FixColumn, SentenceColumn };

} // namespace

class FindingsPanelTest : public QObject {
    Q_OBJECT
private slots:
    void listsWhatTheCheckFinds();
    void followsTheProject();
    void marksWhatIsNotApplied();
    void enterOnARowNamesItsPlace();
    void theSelectedRowsStayWithWhatTheyAreAbout();
    void whatIsGoneLeavesItsPlaceToTheNext();
    void aRowStaysSelectedWhereErrorsComeFirst();
    void theCodeIsExplainedInItsToolTip();
    void isEmptyWhileItIsDisabled();
};

void FindingsPanelTest::listsWhatTheCheckFinds() {
    const Shown shown;
    QCOMPARE(shown.count(), 1);
    QCOMPARE(shown.cell(SeverityColumn), QStringLiteral("error"));
    QCOMPARE(shown.cell(ItemColumn), QStringLiteral("STDMSG12"));
    QCOMPARE(shown.cell(LineColumn), QStringLiteral("2"));
    QCOMPARE(shown.cell(CodeColumn), QStringLiteral("unknown-command"));
}

void FindingsPanelTest::followsTheProject() {
    Shown shown;
    shown.project.STDMSG[11] = "CLEAR\r\n";
    shown.panel.follow();
    QTRY_COMPARE(shown.count(), 0);
    QCOMPARE(shown.panel.findChild<QLabel*>(QStringLiteral("lblFindings"))->text(),
             QStringLiteral("No findings"));
}

void FindingsPanelTest::marksWhatIsNotApplied() {
    Shown shown;
    QVERIFY(!shown.cell(SentenceColumn).endsWith(QStringLiteral(" (not applied)")));
    shown.notApplied = {named("STDMSG12")};
    shown.panel.markNotApplied();
    QVERIFY(shown.cell(SentenceColumn).endsWith(QStringLiteral(" (not applied)")));
}

void FindingsPanelTest::enterOnARowNamesItsPlace() {
    Shown shown;
    QSignalSpy chosen(&shown.panel, &ProjectPanel::placeChosen);
    QSignalSpy left(&shown.panel, &ProjectPanel::rowLeft);
    shown.table().setFocus();
    shown.table().setCurrentIndex(shown.table().model()->index(0, 0));
    QTest::keyClick(&shown.table(), Qt::Key_Return);
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen.front().front().value<Place>(), (Place{named("STDMSG12"), 2}));
    left.clear();
    shown.table().clearFocus();
    QCOMPARE(left.size(), 1);
}

void FindingsPanelTest::theSelectedRowsStayWithWhatTheyAreAbout() {
    Shown shown;
    shown.project.ALTMSG[0] = "NONSENSE";
    shown.change(20, "NONSENSE");
    shown.choose(1);
    QCOMPARE(shown.selected(), QStringList{"STDMSG21"});
    shown.change(2, "NONSENSE"); // a row before it
    QCOMPARE(shown.selected(), QStringList{"STDMSG21"});
    QCOMPARE(shown.current(), QStringLiteral("STDMSG21"));
    shown.project.STDMSG[2] = "CLEAR"; // as many rows as before
    shown.change(30, "NONSENSE");
    QCOMPARE(shown.selected(), QStringList{"STDMSG21"});
    shown.change(20, "CLEAR\r\nNONSENSE");
    QCOMPARE(shown.selected(), QStringList{"STDMSG21"});
    shown.table().selectAll();
    shown.table().selectionModel()->setCurrentIndex(shown.table().model()->index(3, 0),
                                                    QItemSelectionModel::NoUpdate);
    shown.change(2, "NONSENSE");
    QCOMPARE(shown.selected(), (QStringList{"STDMSG12", "STDMSG21", "STDMSG31", "ALTMSG1"}));
    QCOMPARE(shown.current(), QStringLiteral("ALTMSG1"));
}

void FindingsPanelTest::whatIsGoneLeavesItsPlaceToTheNext() {
    Shown shown;
    shown.project.STDMSG[20] = "NONSENSE";
    shown.change(30, "NONSENSE");
    shown.choose(1);
    shown.change(20, "CLEAR");
    QCOMPARE(shown.selected(), QStringList{"STDMSG31"});
}

void FindingsPanelTest::aRowStaysSelectedWhereErrorsComeFirst() {
    Shown shown;
    std::string warnings;
    for (int i = 0; i < 999; ++i)
        warnings += "TEXT 0 0 RED RED \"a\"\r\nCLEAR\r\n";
    shown.change(2, warnings.c_str());
    QCOMPARE(shown.count(), 1000);
    shown.choose(999);
    QCOMPARE(shown.current(), QStringLiteral("STDMSG12"));
    shown.change(30, "NONSENSE");
    QCOMPARE(shown.count(), 1000);
    QCOMPARE(shown.table().currentIndex().row(), 0);
    QCOMPARE(shown.current(), QStringLiteral("STDMSG12"));
    shown.table().sortByColumn(ItemColumn, Qt::AscendingOrder);
    QCOMPARE(shown.table().currentIndex().row(), 998);
}

void FindingsPanelTest::theCodeIsExplainedInItsToolTip() {
    const Shown shown;
    const QModelIndex row = shown.table().model()->index(0, 0);
    const QString tip = row.siblingAtColumn(CodeColumn).data(Qt::ToolTipRole).toString();
    QVERIFY(tip.startsWith(
        QStringLiteral("<p><b>A line begins with no command of the display</b></p><p>The display skips")));
    QVERIFY(tip.endsWith(QStringLiteral("Correct the word or delete the line.</p>")));
    QCOMPARE(row.siblingAtColumn(ItemColumn).data(Qt::ToolTipRole).toString(), QStringLiteral("STDMSG12"));
}

void FindingsPanelTest::isEmptyWhileItIsDisabled() {
    Shown shown;
    shown.panel.setEnabled(false);
    shown.panel.follow();
    QTRY_COMPARE(shown.count(), 0);
}

QTEST_MAIN(FindingsPanelTest)
#include "FindingsPanelTest.moc"
