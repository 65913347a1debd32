#include "dialogs/frmBoolVarEdit.h"
#include "tests/support/BoxInput.h"
#include "widgets/DeviceLineEdit.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include <memory>
#include <stdexcept>

using namespace orvista;
using namespace orvista::testing;

class BoolVarEditTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        project_ = {};
        dialog_ = std::make_unique<frmBoolVarEdit>(project_);
        dialog_->show();
    }

    void loadsUncancelled() {
        QCOMPARE(dialog_->windowTitle(), "Boolean Variable Editing");
        QCOMPARE(dialog_->IsCanceled, std::int16_t{0});
        QCOMPARE(defaults()->count(), 2);
        QCOMPARE(defaults()->itemText(0), "0");
        QCOMPARE(defaults()->itemText(1), "1");
        QCOMPARE(defaults()->currentIndex(), 0);
        QVERIFY(!defaults()->isEditable());
    }

    void showsOneRecord() {
        project_.DigitalInput = 2'147'483'647;
        project_.CoilVar[31] = {"CoilVar32", "1", "L\xE4uft", "Aus"};
        dialog_->InitContent(31);
        QCOMPARE(text("txtVarName"), "CoilVar32");
        QCOMPARE(text("txtVarAddr"), "2147483678");
        QCOMPARE(defaults()->currentText(), "1");
        QCOMPARE(text("txtVarON"), QStringLiteral("L\u00E4uft"));
        QCOMPARE(text("txtVarOFF"), "Aus");
        dialog_->InitContent(0);
        QCOMPARE(text("txtVarName"), "CoilVar1");
        QCOMPARE(text("txtVarAddr"), "2147483647");
        QCOMPARE(defaults()->currentText(), "0");
        QCOMPARE(text("txtVarON"), "ON");
        QCOMPARE(text("txtVarOFF"), "OFF");
    }

    void anUnknownDefaultShowsZero() {
        project_.CoilVar[3].defaultValue = "2";
        defaults()->setCurrentIndex(1);
        dialog_->InitContent(3);
        QCOMPARE(defaults()->currentText(), "0");
    }

    void refusesOtherIndexes() {
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, dialog_->InitContent(-1));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, dialog_->InitContent(32));
        QVERIFY(text("txtVarName").isEmpty());
    }

    void addressAndNameAreOnlyShown() {
        dialog_->InitContent(0);
        for (const char* name : {"txtVarAddr", "txtVarName"}) {
            const QString before = text(name);
            QTest::keyClicks(dialog_->findChild<QLineEdit*>(name), "9");
            QCOMPARE(text(name), before);
        }
    }

    void okReturnsTheForm() {
        dialog_->InitContent(0);
        auto* const on = dialog_->findChild<QLineEdit*>("txtVarON");
        on->selectAll();
        typeText(*on, QStringLiteral("\u20AC 5"));
        dialog_->findChild<QLineEdit*>("txtVarOFF")->clear();
        defaults()->setFocus();
        QTest::keyClick(defaults(), Qt::Key_Down);
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->IsCanceled, std::int16_t{0});
        QCOMPARE(dialog_->VarOnStr, std::string("\x80 5"));
        QCOMPARE(dialog_->VarOFFStr, std::string());
        QCOMPARE(dialog_->VarDefValue, std::string("1"));
        QCOMPARE(project_.CoilVar[0].onText, std::string("ON")); // the project is the caller's
    }

    void everyByteSurvives() {
        project_.CoilVar[0].onText = everyByte();
        project_.CoilVar[0].offText = everyByte() + everyByte();
        dialog_->InitContent(0);
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(dialog_->VarOnStr == everyByte());
        QVERIFY(dialog_->VarOFFStr == everyByte() + everyByte());

        dialog_->show();
        for (const char* name : {"txtVarON", "txtVarOFF"}) {
            auto* const box = dialog_->findChild<QLineEdit*>(name);
            box->home(false);
            QTest::keyClicks(box, "x");
        }
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(dialog_->VarOnStr == "x" + everyByte());
        QVERIFY(dialog_->VarOFFStr == "x" + everyByte() + everyByte());
    }

    void cancelKeepsTheResults() {
        dialog_->InitContent(0);
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        dialog_->show();
        QTest::keyClicks(dialog_->findChild<QLineEdit*>("txtVarON"), "x");
        QTest::mouseClick(button("btnCancel"), Qt::LeftButton);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->IsCanceled, std::int16_t{-1});
        QCOMPARE(dialog_->VarOnStr, std::string("ON"));
    }

    void escapeAndFrameCancel() {
        dialog_->InitContent(0);
        QTest::keyClick(dialog_->findChild<QLineEdit*>("txtVarON"), Qt::Key_Escape);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->IsCanceled, std::int16_t{-1});
        dialog_->show();
        QTest::keyClick(dialog_->findChild<QLineEdit*>("txtVarON"), Qt::Key_Return);
        QCOMPARE(dialog_->IsCanceled, std::int16_t{0});
        dialog_->show();
        dialog_->close();
        QCOMPARE(dialog_->IsCanceled, std::int16_t{-1});
    }

    void tabsInOrderAndTiesLabels() {
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        defaults()->setFocus();
        for (const char* next : {"txtVarON", "txtVarOFF", "btnOK", "btnCancel", "txtVarAddr", "txtVarName"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(dialog_->focusWidget()->objectName(), QString(next));
        }
        QStringList labels;
        for (const QLabel* label : dialog_->findChildren<QLabel*>())
            labels += label->text() + (label->buddy() ? label->buddy()->objectName() : QString());
        QCOMPARE(labels, QStringList({"Variable address:txtVarAddr", "Variable Name:txtVarName",
                                      "Default value:cbDefVal", "\"ON\" message:txtVarON",
                                      "\"OFF\" messagetxtVarOFF"}));
    }

private:
    QString text(const char* name) { return dialog_->findChild<QLineEdit*>(name)->text(); }
    QComboBox* defaults() { return dialog_->findChild<QComboBox*>("cbDefVal"); }
    QPushButton* button(const char* name) { return dialog_->findChild<QPushButton*>(name); }

    Project project_;
    std::unique_ptr<frmBoolVarEdit> dialog_;
};

QTEST_MAIN(BoolVarEditTest)
#include "BoolVarEditTest.moc"
