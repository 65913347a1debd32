#include "tests/support/BoxInput.h"
#include "widgets/DeviceLineEdit.h"
#include "widgets/DeviceText.h"
#include "widgets/DeviceTextEdit.h"
#include "widgets/DropDownList.h"

#include <QTest>
#include <QTextBlock>
#include <QToolTip>

#include <algorithm>

using namespace orvista;
using namespace orvista::testing;

namespace {

std::string ordinaryLines(std::size_t size) {
    std::string text;
    while (text.size() < size)
        text += "TEXT 0,0,\"Pump\xA0"
                "1\",RED\r\n";
    text.resize(size);
    return text;
}

/// The text from its first character on that the device does not have.
QString foreignPart(const QString& text) {
    const auto foreign = std::find_if_not(text.begin(), text.end(), isDeviceCharacter);
    return text.sliced(foreign - text.begin());
}

void addRefused() {
    QTest::addColumn<QString>("text");
    QTest::newRow("other script") << QStringLiteral("\u03BB");
    QTest::newRow("surrogate pair") << QStringLiteral("\U0001F600");
    QTest::newRow("combining accent") << QStringLiteral("e\u0301");
    QTest::newRow("line separator") << QStringLiteral("\u2028");
    QTest::newRow("direction mark") << QStringLiteral("\u200E");
    QTest::newRow("control of a mapped code") << QStringLiteral("\u0085");
    QTest::newRow("among accepted ones") << QStringLiteral("abc\u0142");
}

} // namespace

class DeviceBoxesTest : public QObject {
    Q_OBJECT
private slots:
    void lineKeepsEveryByte() {
        DeviceLineEdit box;
        box.setBytes(everyByte());
        QCOMPARE(box.bytes(), everyByte());
        QVERIFY(box.hasAcceptableInput());
    }

    void lineKeepsEveryByteWhenEditedElsewhere() {
        DeviceLineEdit box;
        box.setBytes(everyByte());
        box.setCursorPosition(0);
        QTest::keyClicks(&box, "x");
        QCOMPARE(box.bytes(), "x" + everyByte());
        box.end(false);
        QTest::keyClicks(&box, "y");
        QCOMPARE(box.bytes(), "x" + everyByte() + "y");
        QTest::keyClick(&box, Qt::Key_Backspace);
        QCOMPARE(box.bytes(), "x" + everyByte());
    }

    void lineKeepsEveryByteThroughCopyAndPaste() {
        DeviceLineEdit box;
        box.setBytes(everyByte());
        box.selectAll();
        QTest::keySequence(&box, QKeySequence::Copy);
        box.clear();
        QTest::keySequence(&box, QKeySequence::Paste);
        QCOMPARE(box.bytes(), everyByte());
    }

    void lineShowsControlsAsPictures() {
        DeviceLineEdit box;
        box.setBytes(std::string("a\tb\x7F\0", 5));
        QCOMPARE(box.text(), QStringLiteral("a\u2409b\u2421\u2400"));
        QTest::keyClick(&box, Qt::Key_End);
        pasteInto(box, "\t");
        QCOMPARE(box.text(), QStringLiteral("a\u2409b\u2421\u2400\u2409"));
        QCOMPARE(box.bytes(), std::string("a\tb\x7F\0\t", 6));
    }

    void lineHasNoLengthLimit() {
        DeviceLineEdit box;
        const std::string text(40'000, '\xE4');
        box.setBytes(text);
        QCOMPARE(box.bytes(), text);
        box.setCursorPosition(0);
        QTest::keyClicks(&box, "x");
        QCOMPARE(box.bytes(), "x" + text);
        box.clear();
        pasteInto(box, QString(40'000, u'y'));
        QCOMPARE(box.bytes(), std::string(40'000, 'y'));
    }

    void lineTakesThePasteOfSeveralLinesAsOne() {
        DeviceLineEdit box;
        box.setBytes("[]");
        box.setCursorPosition(1);
        pasteInto(box, "one\r\ntwo\nthree\n");
        QCOMPARE(box.bytes(), std::string("[one two three]"));
        QTest::keyClicks(&box, "!");
        QCOMPARE(box.bytes(), std::string("[one two three!]"));
    }

    void lineRefusesTyped_data() { addRefused(); }
    void lineRefusesTyped() {
        QFETCH(QString, text);
        DeviceLineEdit box;
        box.setBytes("abc");
        typeText(box, foreignPart(text));
        QCOMPARE(box.bytes(), std::string("abc"));
    }

    void lineRefusesPasted_data() { addRefused(); }
    void lineRefusesPasted() {
        QFETCH(QString, text);
        DeviceLineEdit box;
        box.setBytes("abc");
        box.selectAll();
        pasteInto(box, text);
        QCOMPARE(box.bytes(), std::string("abc"));
    }

    void lineRefusesDropped_data() { addRefused(); }
    void lineRefusesDropped() {
        QFETCH(QString, text);
        DeviceLineEdit box;
        box.setBytes("abc");
        box.show();
        dropOnto(box, text);
        QCOMPARE(box.bytes(), std::string("abc"));
        dropOnto(box, "good");
        QVERIFY(box.bytes().find("good") != std::string::npos);
    }

    void lineRefusesComposed_data() { addRefused(); }
    void lineRefusesComposed() {
        QFETCH(QString, text);
        DeviceLineEdit box;
        box.setBytes("abc");
        compose(box, text);
        QCOMPARE(box.bytes(), std::string("abc"));
        compose(box, QStringLiteral("\u00E9"));
        QCOMPARE(box.bytes(), std::string("abc\xE9"));
    }

    void scriptKeepsEveryByte() {
        DeviceTextEdit box;
        box.setBytes(everyByte());
        QCOMPARE(box.bytes(), everyByte());
    }

    void scriptKeepsEveryByteWhenEditedElsewhere() {
        DeviceTextEdit box;
        box.setBytes(everyByte());
        box.moveCursor(QTextCursor::Start);
        QTest::keyClicks(&box, "x");
        box.moveCursor(QTextCursor::End);
        QTest::keyClicks(&box, "y");
        QCOMPARE(box.bytes(), "x" + everyByte() + "y");
        box.undo();
        box.undo();
        QCOMPARE(box.bytes(), everyByte());
    }

    void scriptKeepsEveryByteThroughCopyAndPaste() {
        DeviceTextEdit box;
        const std::string text = everyByte() + "\r\nsecond\xA0line\r\n";
        box.setBytes(text);
        box.selectAll();
        QTest::keySequence(&box, QKeySequence::Copy);
        box.clear();
        QTest::keySequence(&box, QKeySequence::Paste);
        QCOMPARE(box.bytes(), text);
    }

    void scriptKeepsLineEnds_data() {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("one line") << QByteArray("CLEAR");
        QTest::newRow("trailing CR LF") << QByteArray("CLEAR\r\n");
        QTest::newRow("two trailing") << QByteArray("CLEAR\r\n\r\n");
        QTest::newRow("only an end") << QByteArray("\r\n");
        QTest::newRow("LF alone") << QByteArray("a\nb\n");
        QTest::newRow("CR alone") << QByteArray("a\rb\r");
        QTest::newRow("CR CR LF") << QByteArray("a\r\r\nb");
        QTest::newRow("outer blanks") << QByteArray("  a\xA0 \t\r\n ");
    }
    void scriptKeepsLineEnds() {
        QFETCH(QByteArray, text);
        DeviceTextEdit box;
        box.setBytes(text.toStdString());
        QCOMPARE(box.bytes(), text.toStdString());
    }

    void scriptJoinsTypedLinesByCrLf() {
        DeviceTextEdit box;
        QTest::keyClicks(&box, "CLEAR");
        QTest::keyClick(&box, Qt::Key_Return);
        QTest::keyClicks(&box, "a");
        QTest::keyClick(&box, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClicks(&box, "b");
        QTest::keyClick(&box, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(box.bytes(), std::string("CLEAR\r\na\r\nb\r\n"));
    }

    void scriptTakesForeignLineEndsOfPastedText() {
        DeviceTextEdit box;
        pasteInto(box, "a\r\nb\nc\rd\te");
        QCOMPARE(box.bytes(), std::string("a\r\nb\r\nc\r\nd\te"));
    }

    void scriptRefusesTyped_data() { addRefused(); }
    void scriptRefusesTyped() {
        QFETCH(QString, text);
        DeviceTextEdit box;
        box.setBytes("abc");
        box.selectAll();
        typeText(box, foreignPart(text));
        QCOMPARE(box.bytes(), std::string("abc"));
    }

    void scriptRefusesPasted_data() { addRefused(); }
    void scriptRefusesPasted() {
        QFETCH(QString, text);
        DeviceTextEdit box;
        box.setBytes("abc");
        box.selectAll();
        pasteInto(box, text);
        QCOMPARE(box.bytes(), std::string("abc"));
    }

    void scriptRefusesDropped_data() { addRefused(); }
    void scriptRefusesDropped() {
        QFETCH(QString, text);
        DeviceTextEdit box;
        box.setBytes("abc");
        box.show();
        dropOnto(*box.viewport(), text);
        QCOMPARE(box.bytes(), std::string("abc"));
        dropOnto(*box.viewport(), "good");
        QVERIFY(box.bytes().find("good") != std::string::npos);
    }

    void scriptRefusesComposed_data() { addRefused(); }
    void scriptRefusesComposed() {
        QFETCH(QString, text);
        DeviceTextEdit box;
        box.setBytes("abc");
        compose(box, text);
        QCOMPARE(box.bytes(), std::string("abc"));
        compose(box, QStringLiteral("\u00E9"));
        QCOMPARE(box.bytes(), std::string("\xE9"
                                          "abc"));
    }

    void scriptRefusesWhatPassesByTheKeyboard_data() { addRefused(); }
    void scriptRefusesWhatPassesByTheKeyboard() {
        QFETCH(QString, text);
        DeviceTextEdit box;
        box.setBytes("x");
        box.moveCursor(QTextCursor::End);
        box.insertPlainText("ab" + foreignPart(text) + "cd");
        QCOMPARE(box.toPlainText(), QStringLiteral("xabcd"));
        QTest::keyClicks(&box, "y");
        box.undo();
        box.undo();
        QCOMPARE(box.toPlainText(), QStringLiteral("xabcd"));
    }

    void scriptTabMovesOn() {
        QWidget window;
        auto* box = new DeviceTextEdit(&window);
        auto* next = new QLineEdit(&window);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Tab);
        QVERIFY(next->hasFocus());
        QCOMPARE(box->bytes(), std::string());
    }

    void scriptUndoesEditsButNotTheShowing() {
        DeviceTextEdit box;
        box.setBytes("first");
        box.setBytes("second");
        QVERIFY(!box.document()->isUndoAvailable());
        QTest::keyClicks(&box, "x");
        QTest::keySequence(&box, QKeySequence::Undo);
        QCOMPARE(box.bytes(), std::string("second"));
        QTest::keySequence(&box, QKeySequence::Redo);
        QCOMPARE(box.bytes(), std::string("xsecond"));
    }

    void scriptStaysUsableWithAMegabyte() {
        DeviceTextEdit box;
        box.show();
        const std::string text = ordinaryLines(1 << 20);
        box.setBytes(text);
        box.moveCursor(QTextCursor::End);
        QTest::keyClicks(&box, "typed");
        QTest::keyClick(&box, Qt::Key_PageUp);
        QTest::keyClicks(&box, "here");
        box.grab();
        QCOMPARE(box.bytes().size(), text.size() + 9);
    }

    void scriptLosesNothingOfSixteenMegabytes_data() {
        QTest::addColumn<bool>("oneLine");
        QTest::newRow("ordinary lines") << false;
        QTest::newRow("one line") << true;
    }
    void scriptLosesNothingOfSixteenMegabytes() {
        QFETCH(bool, oneLine);
        DeviceTextEdit box;
        const std::string text = oneLine ? std::string(std::size_t{16} << 20, 'x') : ordinaryLines(16 << 20);
        box.show();
        box.setBytes(text);
        box.grab();
        QTest::keyClicks(&box, "y");
        QVERIFY(box.bytes() == "y" + text);
    }

    void scriptBreaksAnEndlessLineForShowingOnly() {
        DeviceTextEdit box;
        const std::string text = std::string(25'000, 'x') + "\r\n" + std::string(10'000, 'y');
        box.setBytes(text);
        QCOMPARE(box.blockCount(), 4);
        QCOMPARE(box.bytes(), text);
        box.selectAll();
        QTest::keySequence(&box, QKeySequence::Copy);
        box.clear();
        QTest::keySequence(&box, QKeySequence::Paste);
        QCOMPARE(box.bytes(), text);
        box.setBytes(text);
        box.moveCursor(QTextCursor::Start);
        box.moveCursor(QTextCursor::EndOfBlock);
        QTest::keyClick(&box, Qt::Key_Backspace); // the mark: now the break is one of the text's own
        QCOMPARE(box.bytes(), std::string(text).insert(10'000, "\r\n"));
    }

    void scriptCopiesWhatIsStoredOfAnEndlessLine() {
        DeviceTextEdit box;
        box.setBytes(std::string(25'000, 'x') + "\r\nshort");
        box.selectAll();
        box.copy();
        const QString whole = QString(25'000, u'x') + "\nshort";
        QVERIFY(QApplication::clipboard()->text() == whole);

        const auto copied = [&box](int first, int end) {
            QTextCursor cursor(box.document());
            cursor.setPosition(first);
            cursor.setPosition(end, QTextCursor::KeepAnchor);
            box.setTextCursor(cursor);
            box.copy();
            return QApplication::clipboard()->text();
        };
        // The line breaks for showing after its 10,000th character: a mark, then a line end.
        QCOMPARE(copied(9'999, 10'003), QStringLiteral("xx"));
        QCOMPARE(copied(9'999, 10'001), QStringLiteral("x"));
        QCOMPARE(copied(10'001, 10'003), QStringLiteral("x"));
        QCOMPARE(copied(10'002, 10'004), QStringLiteral("xx"));
    }

    void scriptNamesWhatItRefuses_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::newRow("letter") << QStringLiteral("ab\u0393") << QStringLiteral("\u0393");
        QTest::newRow("the first of two") << QStringLiteral("\u0142\u0393") << QStringLiteral("\u0142");
        QTest::newRow("surrogate pair") << QStringLiteral("\U0001F600") << QStringLiteral("\U0001F600");
        QTest::newRow("accent alone") << QStringLiteral("e\u0301") << QStringLiteral("\u25CC\u0301");
        QTest::newRow("direction mark") << QStringLiteral("a\u200E") << QStringLiteral("U+200E");
        QTest::newRow("behind line ends") << QStringLiteral("a\r\nb\r\u0393") << QStringLiteral("\u0393");
    }
    void scriptNamesWhatItRefuses() {
        QFETCH(const QString, text);
        QFETCH(const QString, name);
        DeviceTextEdit box;
        box.show();
        box.setBytes("abc");
        const QString expected = name + " cannot be shown by the display";
        const auto tellsAfter = [&](auto&& act) {
            QToolTip::hideText();
            if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); }))
                return QString("the tool-tip stays");
            act();
            return QToolTip::text();
        };
        QCOMPARE(tellsAfter([&] { typeText(box, foreignPart(text)); }), expected);
        QCOMPARE(tellsAfter([&] { pasteInto(box, text); }), expected);
        QCOMPARE(tellsAfter([&] { dropOnto(*box.viewport(), text); }), expected);
        QCOMPARE(tellsAfter([&] { compose(box, text); }), expected);
        QCOMPARE(box.bytes(), std::string("abc"));
        QCOMPARE(tellsAfter([&] { box.insertPlainText(text); }), expected); // past the keyboard
        QCOMPARE(tellsAfter([&] { typeText(box, "x"); }), QString());
    }

    void scriptUndoesAPasteAsAWhole() {
        DeviceTextEdit box;
        box.setBytes("ab");
        box.moveCursor(QTextCursor::End);
        pasteInto(box, "1\r\n2\r\n3");
        QCOMPARE(box.bytes(), std::string("ab1\r\n2\r\n3"));
        box.undo();
        QCOMPARE(box.bytes(), std::string("ab"));
        box.redo();
        QCOMPARE(box.bytes(), std::string("ab1\r\n2\r\n3"));
    }

    void listKeepsItsChoiceWhenTheWheelPassesOver() {
        QWidget window;
        auto* other = new QLineEdit(&window);
        auto* list = new DropDownList(&window);
        list->addItems({"a", "b", "c"});
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        other->setFocus();
        QVERIFY(!list->hasFocus());
        turnWheelOver(*list, -120);
        QCOMPARE(list->currentIndex(), 0);
        QVERIFY(!list->hasFocus());
        list->setFocus();
        turnWheelOver(*list, -120);
        QCOMPARE(list->currentIndex(), 1);
    }
};

QTEST_MAIN(DeviceBoxesTest)
#include "DeviceBoxesTest.moc"
