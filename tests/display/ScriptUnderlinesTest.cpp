#include "display/forms/ScriptUnderlines.h"

#include "tests/support/TemporaryFolder.h"
#include "widgets/DeviceText.h"
#include "widgets/DeviceTextEdit.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// All bytes from 0x80 on.
QByteArray upperHalf() {
    QByteArray bytes;
    for (int byte = 0x80; byte <= 0xFF; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

struct Desk {
    Desk()
        : underlines(box, project,
                     {[] { return std::optional(Item(Kind::Regular, 0)); }, [this] { return columns; }},
                     nullptr) {
        box.resize(500, 300);
    }
    void show(const std::string& script) {
        box.setBytes(script);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
    }
    /// The mouse rests at a position of the text: whether that is answered.
    bool askAt(int position) {
        QTextCursor within(box.document());
        within.setPosition(position);
        const QPoint at = box.cursorRect(within).center();
        QHelpEvent help(QEvent::ToolTip, at, box.viewport()->mapToGlobal(at));
        return QApplication::sendEvent(box.viewport(), &help);
    }
    QStringList underlined() const {
        QStringList texts;
        for (const auto& selection : box.extraSelections())
            texts << selection.cursor.selectedText();
        return texts;
    }

    int columns = 128;
    Project project;
    DeviceTextEdit box;
    ScriptUnderlines underlines;
};

} // namespace

class ScriptUnderlinesTest : public QObject {
    Q_OBJECT
private slots:
    void underlinesWhatIsFound_data();
    void underlinesWhatIsFound();
    void followsTheText();
    void tellsWhatInTheToolTip();
    void firesNothingAndChangesNothing();
};

void ScriptUnderlinesTest::underlinesWhatIsFound_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("underlined");
    QTest::newRow("nothing") << QByteArray("CLEAR\r\nTEXT 0 0 RED BLACK \"Pump\"\r\nACT STILL 1000")
                             << QStringList();
    QTest::newRow("unknown command") << QByteArray("CLEAR\r\nTXET 0 0 RED BLACK \"Pump\"")
                                     << QStringList{"TXET"};
    QTest::newRow("wrong word") << QByteArray("CLEAR\r\nTEXT 0 0 PINK BLACK \"Pump\"") << QStringList{"PINK"};
    QTest::newRow("missing bitmap") << QByteArray("CLEAR\r\nIMG 0 0 RED BLACK gone.bmp\r\nACT STILL 1000")
                                    << QStringList{"gone.bmp"};
    QTest::newRow("reserved line") << QByteArray("CLEAR\r\nENDMSG") << QStringList{"ENDMSG"};
    QTest::newRow("name with blanks") << QByteArray("IMG 0 0 RED BLACK my other  pump.bmp  \r\nACT STILL 1")
                                      << QStringList{"my other  pump.bmp"};
    QTest::newRow("cut text") << QByteArray("TEXT 0 0 RED BLACK \"Emergency stop pump 1\" x")
                              << QStringList{"ump 1"};
    QTest::newRow("cut last character")
        << QByteArray("TEXT 0 0 RED BLACK \"Emergency stop pu\"") << QStringList{"u"};
    QTest::newRow("cut field") << QByteArray("CLEAR\r\nDISPVAR 248 0 RED BLACK RegVar1")
                               << QStringList{"RegVar1"};
    QTest::newRow("cut clock") << QByteArray("CLEAR\r\n  TIMES 248 5 RED BLACK ") << QStringList{"TIMES"};
    QTest::newRow("same colours") << QByteArray("TEXT 0 0 RED  RED \"a\"\r\nACT STILL 1")
                                  << QStringList{"RED"};
    QTest::newRow("missing word") << QByteArray("CLEAR\r\nACT STILL") << QStringList{"L"};
    QTest::newRow("nothing after the line") << QByteArray("CLEAR\r\nACT STILL  ") << QStringList{" "};
    QTest::newRow("tab in a word") << QByteArray("\t\r\nTEXT\t0 0 RED BLACK \"a\"")
                                   << QStringList{"\t", "TEXT\t0"};
    QTest::newRow("tabs in a text") << QByteArray("TEXT 0 0 RED BLACK \"\t\tEmergency stop p\"")
                                    << QStringList{"p"};
    QTest::newRow("line feeds alone")
        << QByteArray("CLEAR\nTXET a\nACT STIL 1") << QStringList{"TXET", "STIL"};
    QTest::newRow("carriage returns alone")
        << QByteArray("CLEAR\rTXET a\r\rACT STIL 1") << QStringList{"TXET", "STIL"};
    QTest::newRow("mixed line ends") << QByteArray("CLEAR\r\r\nTXET a\n\r\nACT STIL 1\r\n")
                                     << QStringList{"TXET", "STIL"};
    QTest::newRow("mark at the start") << QByteArray("\xEF\xBB\xBFTXET a") << QStringList{"TXET"};
    QTest::newRow("upper half of the bytes")
        << upperHalf() + " x\r\nACT " + upperHalf()
        << QStringList{shownLine(upperHalf().toStdString()), shownLine(upperHalf().toStdString())};
    const QByteArray blanks(12'000, ' ');
    QTest::newRow("far to the right")
        << "TEXT" + blanks + "0 0 RED" + blanks + "PINK \"a\"\r\nTXET a" << QStringList{"PINK", "TXET"};
}

void ScriptUnderlinesTest::underlinesWhatIsFound() {
    QFETCH(const QByteArray, script);
    QFETCH(const QStringList, underlined);
    const TemporaryFolder folder;
    Desk desk;
    desk.project.ProjPath = folder.path();
    desk.show("CLEAR\r\nTXET");
    QTRY_COMPARE(desk.underlined(), QStringList{"TXET"});
    desk.box.setBytes(script.toStdString());
    QTRY_COMPARE(desk.underlined(), underlined);
}

void ScriptUnderlinesTest::followsTheText() {
    Desk desk;
    desk.show("CLEAR\r\nTXET 0 0 RED BLACK \"Pump\"\r\nACT STILL 1000");
    QTRY_COMPARE(desk.underlined(), QStringList{"TXET"});
    desk.columns = 32;
    desk.box.setBytes("CLEAR\r\nTEXT 0 0 RED BLACK \"Pumps\"\r\nACT STILL 1000");
    QTRY_COMPARE(desk.underlined(), QStringList{"s"});
    desk.columns = 128;
    desk.underlines.checkSoon();
    QTRY_COMPARE(desk.underlined(), QStringList());
    desk.box.setBytes("TXET");
    QTRY_COMPARE(desk.underlined(), QStringList{"TXET"});
    desk.box.setEnabled(false);
    QTRY_COMPARE(desk.underlined(), QStringList());
}

void ScriptUnderlinesTest::tellsWhatInTheToolTip() {
    Desk desk;
    desk.show("TXET <b>");
    QTRY_COMPARE(desk.underlined(), QStringList{"TXET"});
    QVERIFY(desk.askAt(2));
    QTRY_VERIFY(QToolTip::isVisible());
    QVERIFY(!QToolTip::text().isEmpty());
    QCOMPARE(QToolTip::text(),
             "<p>" + desk.box.extraSelections()[0].format.toolTip().toHtmlEscaped() + "</p>");
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());
    // What was said of a text that is gone is not said of the next one.
    desk.box.setBytes("CLEAR");
    desk.askAt(0);
    QVERIFY(!QToolTip::isVisible());
}

void ScriptUnderlinesTest::firesNothingAndChangesNothing() {
    Desk desk;
    std::string script = "TXET\r\n";
    while (script.size() < std::size_t{1} << 20)
        script += "CLEAR\r\nTEXT 0 0 RED BLACK \"Emergency stop pump\"\r\nACT STILL 1000\r\n";
    desk.show(script);
    int changes = 0;
    connect(&desk.box, &QPlainTextEdit::textChanged, [&changes] { ++changes; });
    QTRY_VERIFY(!desk.underlined().isEmpty());
    QPalette palette = desk.box.palette();
    palette.setColor(QPalette::Base, Qt::black);
    desk.box.setPalette(palette);
    desk.box.setExtraSelections({});
    desk.underlines.checkSoon();
    QTRY_VERIFY(!desk.underlined().isEmpty());
    QCOMPARE(changes, 0);
    QVERIFY(!desk.box.document()->isUndoAvailable());
    QCOMPARE(desk.box.bytes(), script);
    QTest::keyClick(&desk.box, 'x');
    QCOMPARE(changes, 1);
    QTest::keySequence(&desk.box, QKeySequence::Undo);
    QCOMPARE(desk.box.bytes(), script);
}

QTEST_MAIN(ScriptUnderlinesTest)
#include "ScriptUnderlinesTest.moc"
