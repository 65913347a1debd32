#include "display/forms/ScriptUnderlines.h"

#include "tests/support/TemporaryFolder.h"
#include "widgets/DeviceTextEdit.h"

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

using namespace orvista;
using namespace orvista::testing;

namespace {

struct Desk {
    Desk()
        : underlines(box, project, {[] { return std::string("STDMSG1"); }, [this] { return columns; }},
                     nullptr) {
        box.resize(500, 300);
    }
    void show(const std::string& script) {
        box.setBytes(script);
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
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
    QTRY_VERIFY(desk.underlined().size() == 1 && desk.underlined()[0].startsWith(u's'));
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
    QTextCursor within(desk.box.document());
    within.setPosition(2);
    const QPoint at = desk.box.cursorRect(within).center();
    QHelpEvent help(QEvent::ToolTip, at, desk.box.viewport()->mapToGlobal(at));
    QVERIFY(QApplication::sendEvent(desk.box.viewport(), &help));
    QTRY_VERIFY(QToolTip::isVisible());
    QVERIFY(!QToolTip::text().isEmpty());
    QCOMPARE(QToolTip::text(),
             "<p>" + desk.box.extraSelections()[0].format.toolTip().toHtmlEscaped() + "</p>");
    QToolTip::hideText();
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
