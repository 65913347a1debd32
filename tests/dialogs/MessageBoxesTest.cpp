#include "dialogs/DialogMessages.h"
#include "tests/support/ModalDriver.h"

#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

using namespace orvista;
using namespace orvista::testing;

namespace {

QMessageBox* messageBox(QWidget* modal) {
    return qobject_cast<QMessageBox*>(modal);
}

void press(QWidget* modal, QMessageBox::StandardButton button) {
    QTest::mouseClick(messageBox(modal)->button(button), Qt::LeftButton);
}

} // namespace

class MessageBoxesTest : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QVERIFY(allModalsServed()); }

    void showsAMessage_data() {
        QTest::addColumn<int>("icon");
        QTest::addColumn<int>("expected");
        QTest::newRow("none") << static_cast<int>(MessageIcon::None) << static_cast<int>(QMessageBox::NoIcon);
        QTest::newRow("information") << static_cast<int>(MessageIcon::Information)
                                     << static_cast<int>(QMessageBox::Information);
        QTest::newRow("exclamation") << static_cast<int>(MessageIcon::Exclamation)
                                     << static_cast<int>(QMessageBox::Warning);
    }
    void showsAMessage() {
        QFETCH(int, icon);
        QFETCH(int, expected);
        onModal("messageBox", [&](QWidget* modal) {
            auto* const box = messageBox(modal);
            QCOMPARE(box->windowTitle(), "Orvista Message Editor");
            QCOMPARE(box->text(), QStringLiteral("Unable to open /\u00DC/<b>x</b>.orx"));
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(static_cast<int>(box->icon()), expected);
            QCOMPARE(box->standardButtons(), QMessageBox::Ok);
            QTest::keyClick(modal, Qt::Key_Return);
        });
        messages_.show(static_cast<MessageIcon>(icon), "Unable to open /\xC3\x9C/<b>x</b>.orx");
    }

    void aQuestionDefaultsToYes() {
        onModal("messageBox", [](QWidget* modal) {
            QCOMPARE(messageBox(modal)->icon(), QMessageBox::Information);
            QCOMPARE(messageBox(modal)->windowTitle(), "Orvista Message Editor");
            QTest::keyClick(modal, Qt::Key_Return);
        });
        QVERIFY(messages_.askYesNo("Save?"));
        onModal("messageBox", [](QWidget* modal) { press(modal, QMessageBox::No); });
        QVERIFY(!messages_.askYesNo("Save?"));
        onModal("messageBox", [](QWidget* modal) { press(modal, QMessageBox::Yes); });
        QVERIFY(messages_.askYesNo("Save?"));
    }

    void aQuestionCannotBeCancelled() {
        onModal("messageBox", [](QWidget* modal) {
            QTest::keyClick(modal, Qt::Key_Escape);
            QVERIFY(modal->isVisible());
            QTest::keyClick(messageBox(modal)->button(QMessageBox::Yes), Qt::Key_Escape);
            QVERIFY(modal->isVisible());
            QVERIFY(!modal->close());
            QVERIFY(modal->isVisible());
            QVERIFY(!(modal->windowFlags() & Qt::WindowCloseButtonHint));
            press(modal, QMessageBox::No);
        });
        QVERIFY(!messages_.askYesNo("Save?"));
    }

    void aQuestionWithCancelCanBe() {
        onModal("messageBox", [](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
        QCOMPARE(messages_.askYesNoCancel("Save?"), Answer::Cancel);
        onModal("messageBox", [](QWidget* modal) { modal->close(); });
        QCOMPARE(messages_.askYesNoCancel("Save?"), Answer::Cancel);
        onModal("messageBox", [](QWidget* modal) { press(modal, QMessageBox::Cancel); });
        QCOMPARE(messages_.askYesNoCancel("Save?"), Answer::Cancel);
        onModal("messageBox", [](QWidget* modal) { press(modal, QMessageBox::No); });
        QCOMPARE(messages_.askYesNoCancel("Save?"), Answer::No);
        onModal("messageBox", [](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Return); });
        QCOMPARE(messages_.askYesNoCancel("Save?"), Answer::Yes);
    }

    void aLongPathIsBroken() {
        const std::string path = "/" + std::string(200, 'a') + "/" + std::string(200, 'b');
        onModal("messageBox", [&](QWidget* modal) {
            auto* const shown = modal->findChild<QPlainTextEdit*>("messageText");
            QVERIFY(shown && shown->isVisible());
            QCOMPARE(shown->toPlainText().toStdString(), "Unable to open " + path);
            QCOMPARE(messageBox(modal)->text().toStdString(), "Unable to open " + path);
            QTest::keyClick(modal, Qt::Key_Return);
        });
        messages_.show(MessageIcon::None, "Unable to open " + path);
    }

    void aShortTextStaysALabel() {
        onModal("messageBox", [](QWidget* modal) {
            QVERIFY(!modal->findChild<QPlainTextEdit*>("messageText"));
            QVERIFY(modal->findChild<QLabel*>("qt_msgbox_label")->textInteractionFlags() &
                    Qt::TextSelectableByMouse);
            QTest::keyClick(modal, Qt::Key_Return);
        });
        messages_.show(MessageIcon::None, "Unable to open /a");
    }

    void replacingDefaultsToNo() {
        onModal("messageBox", [](QWidget* modal) {
            QVERIFY(messageBox(modal)->text().contains("/plants/A.orx"));
            QTest::keyClick(modal, Qt::Key_Return);
        });
        QVERIFY(!confirmReplacing(nullptr, "/plants/A.orx"));
        onModal("messageBox", [](QWidget* modal) { press(modal, QMessageBox::Yes); });
        QVERIFY(confirmReplacing(nullptr, "/plants/A.orx"));
        onModal("messageBox", [](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
        QVERIFY(!confirmReplacing(nullptr, "/plants/A.orx"));
    }

    void boxesAreServedOneByOne() {
        QStringList served;
        for (const char* answer : {"first", "second"})
            onModal("messageBox", [&served, answer](QWidget* modal) {
                served += answer + messageBox(modal)->text();
                QTest::keyClick(modal, Qt::Key_Return);
            });
        messages_.show(MessageIcon::None, "A");
        messages_.show(MessageIcon::None, "B");
        QCOMPARE(served, QStringList({"firstA", "secondB"}));
    }

    void nestedBoxesAreServed() {
        QStringList served;
        onModal("messageBox", [&](QWidget* outer) {
            onModal("messageBox", [&](QWidget* inner) {
                served += messageBox(inner)->text();
                QTest::keyClick(inner, Qt::Key_Return);
            });
            messages_.show(MessageIcon::None, "inner");
            served += messageBox(outer)->text();
            QTest::keyClick(outer, Qt::Key_Return);
        });
        messages_.show(MessageIcon::None, "outer");
        QCOMPARE(served, QStringList({"inner", "outer"}));
    }

private:
    DialogMessages messages_{nullptr};
};

QTEST_MAIN(MessageBoxesTest)
#include "MessageBoxesTest.moc"
