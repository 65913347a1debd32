#include "widgets/RowsTable.h"

#include <QAbstractItemDelegate>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTest>
#include <QVBoxLayout>

#include <random>

using namespace orvista;

namespace {

/// Three rows, whose second column is a number.
struct Table {
    Table() {
        table.setRows({{{"pear"}, {"10", 10}}, {{"apple"}, {"9", 9}}, {{"Fig\ttree\n"}, {"100", 100}}});
        table.resize(400, 200);
        table.show();
        if (!QTest::qWaitForWindowActive(&table))
            throw std::logic_error("the table does not show");
        table.setFocus();
    }
    QStringList shown() const {
        QStringList names;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            names << table.model()->index(row, 0).data().toString();
        return names;
    }
    void choose(int row) {
        table.selectionModel()->setCurrentIndex(
            table.model()->index(row, 0), QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    /// Of a row whose last column is broken into lines, in pixels.
    int heightNeeded(int row) const {
        const QModelIndex last = table.model()->index(row, 1);
        QStyleOptionViewItem option;
        option.initFrom(&table);
        option.font = table.font();
        option.rect = QRect(0, 0, table.columnWidth(1), 1);
        option.features |= QStyleOptionViewItem::WrapText;
        return std::max(table.itemDelegate()->sizeHint(option, last).height(),
                        table.verticalHeader()->minimumSectionSize());
    }
    QPoint place(int row) const { return table.visualRect(table.model()->index(row, 1)).center(); }

    RowsTable table{{"Name", "Number"}};
};

/// The first of its columns can be typed into.
struct EditableTable : Table {
    EditableTable() { table.makeEditable(1); }
    /// The box that is typed into; null while there is none.
    QLineEdit* box() const { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }
    void chooseCell(int row, int column) { table.setCurrentIndex(table.model()->index(row, column)); }
    QSignalSpy typed{&table, &RowsTable::cellTyped};
};

/// Counts how many cells are measured.
class CountingDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        ++measured;
        return QStyledItemDelegate::sizeHint(option, index);
    }
    mutable int measured = 0;
};

/// A hundred rows of four cells.
std::vector<TableRow> manyRows() {
    return {100, {{"0"}, {"0"}, {"0"}, {"0"}}};
}

} // namespace

class RowsTableTest : public QObject {
    Q_OBJECT
private slots:
    void rowsStandAsTheyCameUntilAHeadIsClicked();
    void aNumberIsSortedAsANumber();
    void theFilterLooksIntoEveryCellWhateverItsCase();
    void enterAndADoubleClickLeadSomewhere();
    void selectionAloneLeadsNowhere();
    void faintTextsStayReadableInADarkPaletteWithoutAColourForThem();
    void copiesTheSelectedRowsWithHeads();
    void copiesNothingWithoutASelection();
    void keepsThePlaceWhenTheRowsChange();
    void sameRowsChangeNothing();
    void longTextsInTheLastColumnAreBroken();
    void theFirstRowHasRoomHoweverSmallTheTable();
    void rowsAreTickedByClickAndSpace();
    void onlyTheGivenRowsAreShown();
    void asManyRowsAsBeforeStaySelected();
    void selectedRowsComeAsTheyAreShown();
    void allOfAThousandRowsAreShownWhole();
    void columnsFitWhateverChanged();
    void aChangedCellIsMeasuredAlone();
    void rowsMayComeAFewAtATime();
    void typingBeginsByKeyOrDoubleClick_data();
    void typingBeginsByKeyOrDoubleClick();
    void whatWasTypedIsToldAndNotKept();
    void escapeEndsTypingAndTellsNothing();
    void onlyTheGivenColumnsAreTypedInto();
    void nothingIsTypedWhileThatIsNotAllowed();
    void delAsksForRowsToGoWhereTheyCanBeTyped();
};

void RowsTableTest::rowsStandAsTheyCameUntilAHeadIsClicked() {
    Table rows;
    QCOMPARE(rows.shown(), (QStringList{"pear", "apple", "Fig\ttree\n"}));
    const auto* const heads = rows.table.horizontalHeader();
    QTest::mouseClick(heads->viewport(), Qt::LeftButton, {}, {heads->sectionViewportPosition(0) + 5, 5});
    QCOMPARE(rows.shown(), (QStringList{"apple", "Fig\ttree\n", "pear"}));
}

void RowsTableTest::aNumberIsSortedAsANumber() {
    Table rows;
    rows.table.sortByColumn(1, Qt::AscendingOrder);
    QCOMPARE(rows.shown(), (QStringList{"apple", "pear", "Fig\ttree\n"}));
}

void RowsTableTest::theFilterLooksIntoEveryCellWhateverItsCase() {
    Table rows;
    rows.table.setFilter(QStringLiteral("FIG"));
    QCOMPARE(rows.shown(), QStringList{"Fig\ttree\n"});
    rows.table.setFilter(QStringLiteral("10"));
    QCOMPARE(rows.shown(), (QStringList{"pear", "Fig\ttree\n"}));
    rows.table.setFilter(QStringLiteral(".*"));
    QCOMPARE(rows.shown(), QStringList());
    rows.table.setFilter({});
    QCOMPARE(rows.shown().size(), 3);
}

void RowsTableTest::enterAndADoubleClickLeadSomewhere() {
    Table rows;
    rows.table.sortByColumn(1, Qt::AscendingOrder);
    QSignalSpy activated(&rows.table, &RowsTable::rowActivated);
    rows.choose(0);
    QTest::keyClick(&rows.table, Qt::Key_Return);
    QTest::keyClick(&rows.table, Qt::Key_Enter);
    QTest::mouseDClick(rows.table.viewport(), Qt::LeftButton, {}, rows.place(1));
    QCOMPARE(activated.size(), 3);
    // The rows as they were set, not as they are sorted.
    QCOMPARE(activated[0][0].toInt(), 1);
    QCOMPARE(activated[1][0].toInt(), 1);
    QCOMPARE(activated[2][0].toInt(), 0);
}

void RowsTableTest::selectionAloneLeadsNowhere() {
    Table rows;
    QSignalSpy activated(&rows.table, &RowsTable::rowActivated);
    QTest::mouseClick(rows.table.viewport(), Qt::LeftButton, {}, rows.place(1));
    QTest::keyClick(&rows.table, Qt::Key_Down);
    QTest::keyClick(&rows.table, Qt::Key_Space);
    QTest::mouseDClick(rows.table.viewport(), Qt::RightButton, {}, rows.place(1));
    QTest::mouseDClick(rows.table.viewport(), Qt::LeftButton, {}, {5, rows.table.viewport()->height() - 5});
    QCOMPARE(activated.size(), 0);
}

void RowsTableTest::faintTextsStayReadableInADarkPaletteWithoutAColourForThem() {
    Table rows;
    rows.table.setRows({{{"pear"}, {.text = "off", .isFaint = true}}});
    const QPalette before = QApplication::palette();
    const auto restored = qScopeGuard([&before] { QApplication::setPalette(before); });
    QPalette dark = before;
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
    QApplication::setPalette(dark);
    const auto text = rows.table.model()->index(0, 1).data(Qt::ForegroundRole).value<QBrush>().color();
    QCOMPARE(text, QColor(255, 255, 255, 128));
}

void RowsTableTest::copiesTheSelectedRowsWithHeads() {
    Table rows;
    QTest::keyClick(&rows.table, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&rows.table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(),
             QStringLiteral("Name\tNumber\npear\t10\napple\t9\nFig tree \t100\n"));
    rows.choose(1);
    QTest::keyClick(&rows.table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Name\tNumber\napple\t9\n"));
}

void RowsTableTest::copiesNothingWithoutASelection() {
    Table rows;
    QApplication::clipboard()->setText(QStringLiteral("before"));
    QTest::keyClick(&rows.table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("before"));
}

void RowsTableTest::keepsThePlaceWhenTheRowsChange() {
    Table rows;
    rows.choose(2);
    rows.table.setRows({{{"kiwi"}, {"1", 1}}, {{"plum"}, {"2", 2}}});
    QCOMPARE(rows.table.currentIndex().data().toString(), QStringLiteral("plum"));
    QCOMPARE(rows.table.selectionModel()->selectedRows().size(), 1);
    rows.table.setCurrentIndex(rows.table.model()->index(0, 1));
    rows.table.setRows({{{"kiwi"}, {"1", 1}}, {{"plum"}, {"2", 2}}, {{"pear"}, {"3", 3}}});
    QCOMPARE(rows.table.currentIndex().data().toString(), QStringLiteral("1"));
    rows.table.setRows({});
    QVERIFY(!rows.table.currentIndex().isValid());
}

void RowsTableTest::sameRowsChangeNothing() {
    Table rows;
    QSignalSpy reset(rows.table.model(), &QAbstractItemModel::modelReset);
    rows.table.setRows({{{"pear"}, {"10", 10}}, {{"apple"}, {"9", 9}}, {{"Fig\ttree\n"}, {"100", 100}}});
    QCOMPARE(reset.size(), 0);
    rows.table.setRows({});
    QCOMPARE(reset.size(), 1);
}

void RowsTableTest::longTextsInTheLastColumnAreBroken() {
    Table rows;
    const int line = rows.table.rowHeight(0);
    rows.table.setRows({{{"pear"}, {QStringLiteral("word ").repeated(20)}}, {{"apple"}, {"9"}}});
    QTRY_VERIFY(rows.table.rowHeight(0) > line);
    QCOMPARE(rows.table.rowHeight(1), line);
    rows.table.resize(2000, 200);
    QTRY_COMPARE(rows.table.rowHeight(0), line);
}

void RowsTableTest::theFirstRowHasRoomHoweverSmallTheTable() {
    QWidget window;
    RowsTable table({"Name", "Number"});
    QVBoxLayout layout(&window);
    layout.addWidget(&table);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto showsFirstRow = [&] {
        window.resize(window.width(), 1);
        return table.viewport()->height() - table.rowHeight(0);
    };
    const QString twoLines = QStringLiteral("one\ntwo");
    table.setRows({{{"pear"}, {"10"}}, {{"apple"}, {twoLines}}, {{"fig"}, {"9"}}});
    QTRY_VERIFY(table.rowHeight(1) > table.rowHeight(0));
    QTRY_VERIFY(showsFirstRow() >= 0);
    const int least = window.minimumSizeHint().height();
    table.setFilter("apple");
    QTRY_COMPARE(showsFirstRow(), 0);
    table.setFilter({});
    QTRY_COMPARE(window.minimumSizeHint().height(), least);
    table.setRows({{{"apple"}, {twoLines}}, {{"fig"}, {"9"}}});
    QTRY_COMPARE(showsFirstRow(), 0);
    // A whole message does not drive all else out of a small window.
    table.setRows({{{"pear"}, {QStringLiteral("line\n").repeated(20)}}, {{"fig"}, {"9"}}});
    QTRY_VERIFY(showsFirstRow() < 0);
}

void RowsTableTest::rowsAreTickedByClickAndSpace() {
    Table rows;
    rows.choose(1);
    QTest::keyClick(&rows.table, Qt::Key_Space);
    QCOMPARE(rows.table.ticks(), (std::vector<bool>{true, true, true})); // there are no boxes
    rows.table.makeTickable();
    QSignalSpy changes(&rows.table, &RowsTable::ticksChanged);
    QTest::keyClick(&rows.table, Qt::Key_Space);
    QCOMPARE(rows.table.ticks(), (std::vector<bool>{true, false, true}));
    const QRect cell = rows.table.visualRect(rows.table.model()->index(2, 0));
    QTest::mouseClick(rows.table.viewport(), Qt::LeftButton, {}, {cell.x() + 10, cell.center().y()});
    QCOMPARE(rows.table.ticks(), (std::vector<bool>{true, false, false}));
    QCOMPARE(changes.size(), 2);
    QSignalSpy activated(&rows.table, &RowsTable::rowActivated);
    QTest::keyClick(&rows.table, Qt::Key_Return);
    QVERIFY(activated.empty());
    rows.table.setTicks({false, true, true});
    QCOMPARE(rows.table.model()->index(0, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    rows.table.setRows({{{"one"}, {"1"}}});
    QCOMPARE(rows.table.ticks(), std::vector<bool>{true});
}

void RowsTableTest::onlyTheGivenRowsAreShown() {
    Table rows;
    rows.table.setShownRows({true, false, true});
    QCOMPARE(rows.shown(), (QStringList{"pear", "Fig\ttree\n"}));
    rows.table.setFilter(QStringLiteral("fig"));
    QCOMPARE(rows.shown(), QStringList{"Fig\ttree\n"});
    rows.table.setFilter({});
    rows.table.setShownRows({});
    QCOMPARE(rows.shown().size(), 3);
}

void RowsTableTest::asManyRowsAsBeforeStaySelected() {
    Table rows;
    rows.choose(1);
    QTest::keyClick(&rows.table, Qt::Key_Down, Qt::ShiftModifier);
    rows.table.setRows({{{"a"}, {"1"}}, {{"b"}, {"2"}}, {{"c"}, {"3"}}});
    QCOMPARE(rows.table.selectedRows(), (std::vector<int>{1, 2}));
}

void RowsTableTest::selectedRowsComeAsTheyAreShown() {
    Table rows;
    rows.table.sortByColumn(0, Qt::AscendingOrder); // apple, Fig tree, pear
    rows.table.selectAll();
    QCOMPARE(rows.table.selectedRows(), (std::vector<int>{1, 2, 0}));
    QCOMPARE(rows.table.rowsFrom(2), (std::vector<int>{2, 0}));
}

void RowsTableTest::allOfAThousandRowsAreShownWhole() {
    Table rows;
    std::vector<TableRow> many;
    for (int i = 0; i < 1000; ++i)
        many.push_back({{QString::number(i)}, {QStringLiteral("word ").repeated(1 + i % 23), i % 23}});
    rows.table.setRows(std::move(many));
    const auto isWhole = [&rows](int row) {
        const QRect place = rows.table.visualRect(rows.table.model()->index(row, 1));
        return rows.table.viewport()->rect().contains(place) && place.height() == rows.heightNeeded(row);
    };
    rows.choose(0);
    const int line = rows.table.fontMetrics().lineSpacing();
    for (const int width : {28 * line, 18 * line, 57 * line}) {
        rows.table.resize(width, 14 * line);
        QCoreApplication::processEvents();
        for (const auto& [key, row] : {std::pair(Qt::Key_End, 999), std::pair(Qt::Key_Home, 0)}) {
            QTest::keyClick(&rows.table, key, Qt::ControlModifier);
            QCOMPARE(rows.table.currentIndex().row(), row);
            QTRY_VERIFY(isWhole(row));
        }
        for (int row = 1; row < 40; ++row) {
            QTest::keyClick(&rows.table, Qt::Key_Down);
            QVERIFY2(isWhole(row), qPrintable(QString::number(row)));
        }
        rows.table.sortByColumn(1, width == 250 ? Qt::DescendingOrder : Qt::AscendingOrder);
        rows.choose(0);
        QTRY_VERIFY(isWhole(0) && isWhole(1));
    }
}

void RowsTableTest::columnsFitWhateverChanged() {
    const QStringList heads{"A", "B", "C", "D"};
    RowsTable table(heads);
    table.setRowHeight(20);
    std::vector<TableRow> rows = manyRows();
    table.setRows(rows);
    std::mt19937 random(11);
    const auto below = [&random](unsigned bound) { return static_cast<int>(random() % bound); };
    for (int step = 0; step < 200; ++step) {
        // Only few are wide, so that the widest of them often shrinks.
        TableCell& cell = rows[static_cast<std::size_t>(below(5))][static_cast<std::size_t>(below(4))];
        cell.text = QString(below(80), u'x');
        cell.isMarked = below(2) == 1;
        table.setFilter(below(10) == 0 ? QStringLiteral("xx") : QString());
        if (step == 100)
            table.setFont(QFont(table.font().family(), 20));
        table.setRows(rows);
        RowsTable fresh(heads);
        fresh.setFont(table.font());
        fresh.setRows(rows);
        if (table.model()->rowCount() != fresh.model()->rowCount())
            continue;
        for (int column = 0; column < 3; ++column)
            QCOMPARE(table.columnWidth(column), fresh.columnWidth(column));
    }
}

void RowsTableTest::aChangedCellIsMeasuredAlone() {
    RowsTable table({"A", "B", "C", "D"});
    table.setRowHeight(20);
    CountingDelegate delegate;
    table.setItemDelegate(&delegate);
    std::vector<TableRow> rows = manyRows();
    rows[7][1].text = QStringLiteral("wide enough");
    table.setRows(rows);
    QVERIFY(delegate.measured >= 300);
    delegate.measured = 0;
    rows[50][1].text = QStringLiteral("12");
    table.setRows(rows);
    QCOMPARE(delegate.measured, 2); // before and after
}

void RowsTableTest::rowsMayComeAFewAtATime() {
    Table rows;
    CountingDelegate counting;
    rows.choose(1);
    rows.table.setItemDelegate(&counting);
    const int narrow = rows.table.columnWidth(0);
    rows.table.putRows(1, {{{"kiwi"}, {"1", 1}}, {{"plum"}, {"2", 2}}, {{QString(40, u'W')}, {"3", 3}}});
    QCOMPARE(rows.shown(), (QStringList{"pear", "kiwi", "plum", QString(40, u'W')}));
    QCOMPARE(rows.table.selectedRows(), std::vector<int>{1});
    QCOMPARE(rows.table.ticks(), std::vector<bool>(4, true));
    const int wide = rows.table.columnWidth(0);
    QVERIFY(wide > narrow);
    rows.table.keepRows(5);
    QCOMPARE(rows.shown().size(), 4);
    rows.table.keepRows(2);
    QCOMPARE(rows.shown(), (QStringList{"pear", "kiwi"}));
    QCOMPARE(rows.table.ticks(), std::vector<bool>(2, true));
    counting.measured = 0;
    rows.table.putRows(2, {{{"fig"}, {"4", 4}}});
    QVERIFY2(counting.measured <= 12, qPrintable(QString::number(counting.measured)));
    QCOMPARE(rows.table.columnWidth(0), wide); // until the rows are others
    rows.table.putRows(3, {});
    rows.table.setRows({{{"a"}, {"1", 1}}});
    QVERIFY(rows.table.columnWidth(0) < wide);
    rows.table.sortByColumn(0, Qt::AscendingOrder);
    rows.table.putRows(1, {{{"c"}, {"1", 1}}, {{"b"}, {"1", 1}}});
    QCOMPARE(rows.shown(), (QStringList{"a", "b", "c"}));
}

void RowsTableTest::typingBeginsByKeyOrDoubleClick_data() {
    QTest::addColumn<Qt::Key>("key"); // none: a double click
    QTest::newRow("F2") << Qt::Key_F2;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
    QTest::newRow("a letter") << Qt::Key_X;
    QTest::newRow("double click") << Qt::Key_unknown;
}

void RowsTableTest::typingBeginsByKeyOrDoubleClick() {
    QFETCH(const Qt::Key, key);
    EditableTable rows;
    QSignalSpy activated(&rows.table, &RowsTable::rowActivated);
    rows.chooseCell(1, 0);
    const QPoint cell = rows.table.visualRect(rows.table.currentIndex()).center();
    if (key != Qt::Key_unknown) {
        QTest::keyClick(&rows.table, key);
    } else {
        QTest::mouseClick(rows.table.viewport(), Qt::LeftButton, {}, cell);
        QTest::mouseDClick(rows.table.viewport(), Qt::LeftButton, {}, cell);
    }
    QVERIFY(rows.box());
    QCOMPARE(rows.box()->text(), key == Qt::Key_X ? QStringLiteral("x") : QStringLiteral("apple"));
    QCOMPARE(activated.size(), 0);
}

void RowsTableTest::whatWasTypedIsToldAndNotKept() {
    EditableTable rows;
    rows.table.sortByColumn(0, Qt::AscendingOrder); // apple, Fig tree, pear
    rows.chooseCell(2, 0);
    QTest::keyClick(&rows.table, Qt::Key_F2);
    rows.box()->selectAll();
    QTest::keyClicks(rows.box(), QStringLiteral("kiwi"));
    QTest::keyClick(rows.box(), Qt::Key_Return);
    QTRY_COMPARE(rows.typed.size(), 1);
    QCOMPARE(rows.typed[0], (QVariantList{0, 0, QStringLiteral("kiwi")})); // the row as it was set
    QVERIFY(!rows.box());
    QCOMPARE(rows.shown(), (QStringList{"apple", "Fig\ttree\n", "pear"}));
}

void RowsTableTest::escapeEndsTypingAndTellsNothing() {
    EditableTable rows;
    rows.chooseCell(0, 0);
    QTest::keyClick(&rows.table, Qt::Key_F2);
    QTest::keyClicks(rows.box(), QStringLiteral("kiwi"));
    QTest::keyClick(rows.box(), Qt::Key_Escape);
    QTRY_VERIFY(!rows.box());
    QCoreApplication::processEvents(); // what was typed would be told by now
    QCOMPARE(rows.typed.size(), 0);
}

void RowsTableTest::onlyTheGivenColumnsAreTypedInto() {
    EditableTable rows;
    rows.chooseCell(0, 1);
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Return, Qt::Key_X}) {
        QTest::keyClick(&rows.table, key);
        QVERIFY(!rows.box());
    }
}

void RowsTableTest::nothingIsTypedWhileThatIsNotAllowed() {
    EditableTable rows;
    rows.chooseCell(0, 0);
    rows.table.setTyping(false);
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Return, Qt::Key_X}) {
        QTest::keyClick(&rows.table, key);
        QVERIFY(!rows.box());
    }
    rows.table.setTyping(true);
    QTest::keyClick(&rows.table, Qt::Key_F2);
    QVERIFY(rows.box());
}

void RowsTableTest::delAsksForRowsToGoWhereTheyCanBeTyped() {
    Table rows;
    QSignalSpy wanted(&rows.table, &RowsTable::removalWanted);
    rows.choose(0);
    QTest::keyClick(&rows.table, Qt::Key_Delete);
    QCOMPARE(wanted.size(), 0);
    rows.table.makeEditable(1);
    QTest::keyClick(&rows.table, Qt::Key_Delete);
    QCOMPARE(wanted.size(), 1);
    QCOMPARE(rows.shown().size(), 3);
}

QTEST_MAIN(RowsTableTest)
#include "RowsTableTest.moc"
