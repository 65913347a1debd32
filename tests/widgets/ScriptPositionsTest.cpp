#include "widgets/ScriptPositions.h"
#include "widgets/DeviceText.h"

#include <QTest>
#include <QTextDocument>

using namespace orvista;

namespace {

struct Shown {
    explicit Shown(const std::string& script)
        : text(shownScript(script)), document(text), positions(document) {}

    QString line(std::size_t number) const {
        const int start = positions.positionOf(number, 1);
        return text.mid(start, positions.endOfLine(number) - start);
    }
    QString at(std::size_t line, std::size_t column) const {
        return text.mid(positions.positionOf(line, column), 1);
    }

    QString text;
    QTextDocument document;
    ScriptPositions positions;
};

} // namespace

class ScriptPositionsTest : public QObject {
    Q_OBJECT
private slots:
    void linesCountFromOne();
    void aCrOrLfAloneEndsALineToo();
    void aBreakForShowingEndsNone();
    void anEmptyScriptHasOneEmptyLine();
    void columnsAreBytesOfTheLine();
    void everyPositionBelongsToALine();
    void whatIsNotThereStandsAtTheEnd();
};

void ScriptPositionsTest::linesCountFromOne() {
    const Shown shown("CLEAR\r\n\r\nTEXT");
    QCOMPARE(shown.positions.lineCount(), std::size_t{3});
    QCOMPARE(shown.line(1), "CLEAR");
    QCOMPARE(shown.line(2), "");
    QCOMPARE(shown.line(3), "TEXT");
}

void ScriptPositionsTest::aCrOrLfAloneEndsALineToo() {
    const Shown shown("A\rB\nC\r\r\nD");
    QCOMPARE(shown.positions.lineCount(), std::size_t{5});
    QCOMPARE(shown.line(1), "A");
    QCOMPARE(shown.line(2), "B");
    QCOMPARE(shown.line(3), "C");
    QCOMPARE(shown.line(4), "");
    QCOMPARE(shown.line(5), "D");
}

void ScriptPositionsTest::aBreakForShowingEndsNone() {
    const auto width = static_cast<std::size_t>(longestShownLine);
    const Shown shown(std::string(2 * width + 5, 'x') + "\r\nEND");
    // The long line is shown in three pieces, with a mark and a line feed between them.
    QCOMPARE(shown.line(1).size(), 2 * longestShownLine + 5 + 4);
    QCOMPARE(shown.line(2), "END");
    QCOMPARE(shown.positions.lineCount(), std::size_t{2});
}

void ScriptPositionsTest::anEmptyScriptHasOneEmptyLine() {
    QCOMPARE(Shown("").positions.lineCount(), std::size_t{1});
    QCOMPARE(Shown("").line(1), "");
    QCOMPARE(Shown("A\r\n").positions.lineCount(), std::size_t{2});
    QCOMPARE(Shown("A\r\n").line(2), "");
}

void ScriptPositionsTest::columnsAreBytesOfTheLine() {
    const Shown shown(std::string(25'000, 'x') + "y\r\nA\rB\n\nTXEL\r\n");
    QCOMPARE(shown.at(1, 25'000), "x");
    QCOMPARE(shown.at(1, 25'001), "y");
    QCOMPARE(shown.at(2, 1), "A");
    QCOMPARE(shown.at(3, 1), "B");
    QCOMPARE(shown.at(5, 1), "T");
    QCOMPARE(shown.at(5, 4), "L");
}

void ScriptPositionsTest::everyPositionBelongsToALine() {
    const Shown shown(std::string(25'000, 'x') + "\r\nA\rB\n\nTXEL");
    for (const std::size_t line : {1U, 2U, 3U, 4U, 5U})
        QCOMPARE(shown.positions.lineAt(shown.positions.positionOf(line, 1)), line);
    QCOMPARE(shown.positions.lineAt(shown.positions.positionOf(1, 20'000)), std::size_t{1});
    QCOMPARE(shown.positions.lineAt(static_cast<int>(shown.text.size())), std::size_t{5});
}

void ScriptPositionsTest::whatIsNotThereStandsAtTheEnd() {
    const Shown shown("CLEAR\r\nTEXT");
    QCOMPARE(shown.positions.positionOf(1, 99), 5);
    QCOMPARE(shown.positions.positionOf(99, 1), static_cast<int>(shown.text.size()));
    QCOMPARE(ScriptPositions().positionOf(3, 3), 0);
    QCOMPARE(ScriptPositions().lineCount(), std::size_t{0});
}

QTEST_MAIN(ScriptPositionsTest)
#include "ScriptPositionsTest.moc"
