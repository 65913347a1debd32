#include "widgets/ScriptLines.h"
#include "widgets/DeviceText.h"

#include <QTest>

using namespace orvista;

namespace {

/// The text of that line of the script as it is shown; "-" when the script has fewer lines.
QString line(const std::string& script, std::size_t number) {
    const QString shown = shownScript(script);
    const auto range = shownScriptLine(shown, number);
    return range ? shown.mid(range->position, range->length) : QStringLiteral("-");
}

} // namespace

class ScriptLinesTest : public QObject {
    Q_OBJECT
private slots:
    void linesCountFromOne();
    void aCrOrLfAloneEndsALineToo();
    void aBreakForShowingEndsNone();
    void anEmptyScriptHasOneEmptyLine();
};

void ScriptLinesTest::linesCountFromOne() {
    const std::string script = "CLEAR\r\n\r\nTEXT";
    QCOMPARE(line(script, 0), QStringLiteral("-"));
    QCOMPARE(line(script, 1), QStringLiteral("CLEAR"));
    QCOMPARE(line(script, 2), QString());
    QCOMPARE(line(script, 3), QStringLiteral("TEXT"));
    QCOMPARE(line(script, 4), QStringLiteral("-"));
}

void ScriptLinesTest::aCrOrLfAloneEndsALineToo() {
    QCOMPARE(line("A\rB\nC\r\r\nD", 2), QStringLiteral("B"));
    QCOMPARE(line("A\rB\nC\r\r\nD", 3), QStringLiteral("C"));
    QCOMPARE(line("A\rB\nC\r\r\nD", 4), QString());
    QCOMPARE(line("A\rB\nC\r\r\nD", 5), QStringLiteral("D"));
}

void ScriptLinesTest::aBreakForShowingEndsNone() {
    const auto width = static_cast<std::size_t>(longestShownLine);
    const std::string script = std::string(2 * width + 5, 'x') + "\r\nEND";
    // The long line is shown in three pieces, with a mark and a line feed between them.
    QCOMPARE(line(script, 1).size(), 2 * longestShownLine + 5 + 4);
    QCOMPARE(line(script, 2), QStringLiteral("END"));
}

void ScriptLinesTest::anEmptyScriptHasOneEmptyLine() {
    QCOMPARE(line("", 1), QString());
    QCOMPARE(line("", 2), QStringLiteral("-"));
    QCOMPARE(line("A\r\n", 2), QString());
}

QTEST_MAIN(ScriptLinesTest)
#include "ScriptLinesTest.moc"
