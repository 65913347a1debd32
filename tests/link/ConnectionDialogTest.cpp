#include "link/forms/DeviceTransfer.h"
#include "link/forms/TransferProgressWindow.h"
#include "link/forms/frmConnection.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

using namespace orvista;

namespace {

QPushButton* button(const QWidget& dialog, const char* name) {
    return dialog.findChild<QPushButton*>(QString::fromLatin1(name));
}

} // namespace

class ConnectionDialogTest : public QObject {
    Q_OBJECT
private slots:
    void startsWithTheDevicesAddressAndPort7000();
    void withoutAnAddressConnectIsDisabled();
    void connectNeedsAnAddressAndAPortOfDigits_data();
    void connectNeedsAnAddressAndAPortOfDigits();
    void connectAccepts();
    void cancelFrameAndEscCancel();
    void enterConnects();
    void enterDoesNothingWhileConnectIsDisabled();
    void isReachedByKeyboardInReadingOrder();
    void progressShowsFileAndCount();
    void progressElidesLongNames();
    void progressTakesNoInput();
};

void ConnectionDialogTest::startsWithTheDevicesAddressAndPort7000() {
    const frmConnection dialog(QStringLiteral("127.0.0.1"));
    QCOMPARE(dialog.objectName(), QStringLiteral("frmConnection"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Upload/Download IP Address"));
    QCOMPARE(dialog.txtIP->text(), QStringLiteral("127.0.0.1"));
    QCOMPARE(dialog.txtPort->text(), QStringLiteral("7000"));
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("Label1"))->text(), QStringLiteral("IP Address"));
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("Label1"))->buddy(), dialog.txtIP);
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("Label2"))->text(), QStringLiteral("Port"));
    QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("Label2"))->buddy(), dialog.txtPort);
    QCOMPARE(button(dialog, "btnOK")->text(), QStringLiteral("Connect"));
    QCOMPARE(button(dialog, "btnCancel")->text(), QStringLiteral("Cancel"));
    QVERIFY(button(dialog, "btnOK")->isEnabled());
    QVERIFY(dialog.IsCanceled);
}

void ConnectionDialogTest::withoutAnAddressConnectIsDisabled() {
    QVERIFY(!button(frmConnection(QString()), "btnOK")->isEnabled());
    QVERIFY(!button(frmConnection(QStringLiteral("  ")), "btnOK")->isEnabled());
    QVERIFY(button(frmConnection(QStringLiteral("\t")), "btnOK")->isEnabled());
}

void ConnectionDialogTest::connectNeedsAnAddressAndAPortOfDigits_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("port");
    QTest::addColumn<bool>("enabled");
    const QString device = QStringLiteral("127.0.0.1");
    QTest::newRow("both") << device << "7000" << true;
    QTest::newRow("no address") << ""
                                << "7000" << false;
    QTest::newRow("blanks only") << "   "
                                 << "7000" << false;
    QTest::newRow("blanks around") << " x "
                                   << "7000" << true;
    QTest::newRow("no port") << device << "" << false;
    QTest::newRow("letter") << device << "7000x" << false;
    QTest::newRow("blank in port") << device << "7 000" << false;
    QTest::newRow("sign") << device << "-1" << false;
    QTest::newRow("point") << device << "7000.0" << false;
    QTest::newRow("Arabic digits") << device << QStringLiteral("\u0667\u0660") << false;
    QTest::newRow("too large a port is not noticed here") << device << "99999" << true;
}

void ConnectionDialogTest::connectNeedsAnAddressAndAPortOfDigits() {
    QFETCH(QString, address);
    QFETCH(QString, port);
    QFETCH(bool, enabled);
    {
        frmConnection dialog(QStringLiteral("127.0.0.1"));
        dialog.txtIP->setText(address);
        dialog.txtPort->setText(port);
        QCOMPARE(button(dialog, "btnOK")->isEnabled(), enabled);
    }
    frmConnection dialog(QStringLiteral("127.0.0.1"));
    dialog.txtPort->setText(port);
    dialog.txtIP->setText(address);
    QCOMPARE(button(dialog, "btnOK")->isEnabled(), enabled);
}

void ConnectionDialogTest::connectAccepts() {
    frmConnection dialog(QStringLiteral("127.0.0.1"));
    dialog.show();
    QTest::mouseClick(button(dialog, "btnOK"), Qt::LeftButton);
    QVERIFY(dialog.isHidden());
    QVERIFY(!dialog.IsCanceled);
    QCOMPARE(dialog.txtIP->text(), QStringLiteral("127.0.0.1"));
}

void ConnectionDialogTest::cancelFrameAndEscCancel() {
    frmConnection cancelled(QStringLiteral("127.0.0.1"));
    cancelled.show();
    QTest::mouseClick(button(cancelled, "btnCancel"), Qt::LeftButton);
    QVERIFY(cancelled.isHidden());
    QVERIFY(cancelled.IsCanceled);

    frmConnection closed(QStringLiteral("127.0.0.1"));
    closed.show();
    closed.close();
    QVERIFY(closed.isHidden());
    QVERIFY(closed.IsCanceled);

    frmConnection escaped(QStringLiteral("127.0.0.1"));
    escaped.show();
    QTest::keyClick(&escaped, Qt::Key_Escape);
    QVERIFY(escaped.isHidden());
    QVERIFY(escaped.IsCanceled);
}

void ConnectionDialogTest::enterConnects() {
    frmConnection dialog(QStringLiteral("127.0.0.1"));
    dialog.show();
    QTest::keyClick(dialog.txtPort, Qt::Key_Return);
    QVERIFY(dialog.isHidden());
    QVERIFY(!dialog.IsCanceled);
}

void ConnectionDialogTest::enterDoesNothingWhileConnectIsDisabled() {
    frmConnection dialog(QString{});
    dialog.show();
    QTest::keyClick(dialog.txtIP, Qt::Key_Return);
    QVERIFY(dialog.isVisible());
}

void ConnectionDialogTest::isReachedByKeyboardInReadingOrder() {
    frmConnection dialog(QStringLiteral("127.0.0.1"));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.focusWidget(), dialog.txtIP);
    QTest::keyClick(&dialog, Qt::Key_Tab);
    QCOMPARE(dialog.focusWidget(), dialog.txtPort);
    QTest::keyClick(&dialog, Qt::Key_Tab);
    QVERIFY(qobject_cast<QPushButton*>(dialog.focusWidget()));
}

void ConnectionDialogTest::progressShowsFileAndCount() {
    TransferProgressWindow window(QStringLiteral("Upload"));
    QVERIFY(window.isVisible());
    QVERIFY(window.isModal());
    QCOMPARE(window.windowTitle(), QStringLiteral("Upload"));
    const auto* const text = window.findChild<QLabel*>(QStringLiteral("lblActivity"));
    const auto* const bar = window.findChild<QProgressBar*>(QStringLiteral("barFiles"));
    window.showActivity("Connecting to 127.0.0.1");
    QCOMPARE(text->text(), QStringLiteral("Connecting to 127.0.0.1"));
    QCOMPARE(bar->maximum(), 0);
    window.showFile("logo <b>.bmp", 6, 8);
    QCOMPARE(text->text(), QStringLiteral("logo <b>.bmp"));
    QCOMPARE(text->textFormat(), Qt::PlainText);
    QCOMPARE(bar->value(), 5);
    QCOMPARE(bar->maximum(), 8);
    QCOMPARE(bar->text(), QStringLiteral("6 of 8"));
}

void ConnectionDialogTest::progressElidesLongNames() {
    TransferProgressWindow window(QStringLiteral("Upload"));
    window.showFile("a.bmp", 1, 2);
    const int width = window.width();
    window.showFile(std::string(250, 'W') + ".bmp", 2, 2);
    QCoreApplication::processEvents();
    QCOMPARE(window.width(), width);
    QVERIFY(
        window.findChild<QLabel*>(QStringLiteral("lblActivity"))->text().endsWith(QStringLiteral(".bmp")));
}

void ConnectionDialogTest::progressTakesNoInput() {
    QPushButton behind(QStringLiteral("Upload"));
    int clicks = 0;
    connect(&behind, &QPushButton::clicked, &behind, [&] { ++clicks; });
    behind.show();
    QVERIFY(QTest::qWaitForWindowExposed(&behind));
    {
        TransferProgressWindow window(QStringLiteral("Upload"));
        // As a user's would, the click waits in the queue until somebody handles events.
        QTest::mouseClick(behind.windowHandle(), Qt::LeftButton, {}, behind.rect().center());
        QTest::keyClick(&window, Qt::Key_Escape);
        window.close();
        window.showFile("a.bmp", 1, 1);
        QVERIFY(window.isVisible());
    }
    QCoreApplication::processEvents();
    QCOMPARE(clicks, 0);
    QTest::mouseClick(behind.windowHandle(), Qt::LeftButton, {}, behind.rect().center());
    QCOMPARE(clicks, 1);
}

QTEST_MAIN(ConnectionDialogTest)
#include "ConnectionDialogTest.moc"
