#include "dialogs/frmStartup.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

using namespace orvista;

class StartupDialogTest : public QObject {
    Q_OBJECT
private slots:
    void opensOnTheChoiceItIsGiven() {
        frmStartup load(true);
        QVERIFY(load.findChild<QRadioButton*>("optLoadExist")->isChecked());
        QVERIFY(!load.findChild<QRadioButton*>("optCreateNew")->isChecked());
        QVERIFY(!load.bCreateNew);
        frmStartup create(false);
        QVERIFY(create.findChild<QRadioButton*>("optCreateNew")->isChecked());
        QVERIFY(create.bCreateNew);
        QVERIFY(create.IsCanceled);
    }

    void showsItsTexts() {
        frmStartup dialog(true);
        QCOMPARE(dialog.windowTitle(), "Create/Load Orvista Project");
        QCOMPARE(dialog.findChild<QGroupBox*>()->title(), "Create/Load Project");
        QCOMPARE(dialog.findChild<QRadioButton*>("optLoadExist")->text(), "Load Existing Orvista Project");
        QCOMPARE(dialog.findChild<QRadioButton*>("optCreateNew")->text(), "Create New Orvista Project");
    }

    void followsTheOptions() {
        frmStartup dialog(true);
        dialog.show();
        QTest::mouseClick(dialog.findChild<QRadioButton*>("optCreateNew"), Qt::LeftButton);
        QVERIFY(dialog.bCreateNew);
        QVERIFY(!dialog.findChild<QRadioButton*>("optLoadExist")->isChecked());
        QTest::mouseClick(dialog.findChild<QRadioButton*>("optLoadExist"), Qt::LeftButton);
        QVERIFY(!dialog.bCreateNew);
        QVERIFY(!dialog.findChild<QRadioButton*>("optCreateNew")->isChecked());
    }

    void okHidesAndCounts() {
        frmStartup dialog(false);
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton*>("btnStartupOK"), Qt::LeftButton);
        QVERIFY(!dialog.isVisible());
        QVERIFY(!dialog.IsCanceled);
        QVERIFY(dialog.bCreateNew);
    }

    void worksByKeyboard() {
        frmStartup dialog(true);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* const load = dialog.findChild<QRadioButton*>("optLoadExist");
        QTRY_VERIFY(load->hasFocus());
        QTest::keyClick(load, Qt::Key_Down);
        QVERIFY(dialog.bCreateNew);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
        QVERIFY(!dialog.IsCanceled);
    }

    void escapeCancels() {
        frmStartup dialog(true);
        dialog.show();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        QVERIFY(dialog.IsCanceled);
    }

    void closingTheWindowCancels() {
        frmStartup dialog(true);
        dialog.show();
        QVERIFY(dialog.close());
        QVERIFY(dialog.IsCanceled);
    }

    void cancellingAfterOkCancels() {
        frmStartup dialog(true);
        dialog.show();
        QTest::mouseClick(dialog.findChild<QPushButton*>("btnStartupOK"), Qt::LeftButton);
        dialog.show();
        dialog.close();
        QVERIFY(dialog.IsCanceled);
    }
};

QTEST_MAIN(StartupDialogTest)
#include "StartupDialogTest.moc"
