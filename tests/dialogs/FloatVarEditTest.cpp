#include "dialogs/frmFloatVarEdit.h"
#include "tests/support/BoxInput.h"
#include "tests/support/ExpectedLocale.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <memory>
#include <stdexcept>

using namespace orvista;
using namespace orvista::testing;

class FloatVarEditTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(isExpectedLocaleInForce()); }
    void init() {
        project_ = {};
        dialog_ = std::make_unique<frmFloatVarEdit>(project_);
        dialog_->show();
    }

    void loadsCancelledWithItsLists() {
        QCOMPARE(dialog_->windowTitle(), "Float Variable Editing");
        QCOMPARE(dialog_->IsCancel, std::int16_t{-1});
        QCOMPARE(items("cbWidth"), QStringList({"3", "4", "5", "6", "7", "8", "2"}));
        QCOMPARE(items("cbPrecision"), QStringList({"1", "2", "3", "0"}));
        QCOMPARE(list("cbWidth")->currentText(), "5");
        QCOMPARE(list("cbPrecision")->currentText(), "3");
        QVERIFY(!list("cbWidth")->isEditable() && !list("cbPrecision")->isEditable());
    }

    void showsItsTexts() {
        QStringList labels;
        for (const QLabel* label : dialog_->findChildren<QLabel*>())
            labels += label->text() + (label->buddy() ? label->buddy()->objectName() : QString());
        labels.sort();
        QCOMPARE(labels,
                 QStringList({"1. If set \"Width\" as 2 , \"Precision\" should be always set as 0",
                              "2. If set \"Width\" as 8 , \"Precision\" can not be set as 0",
                              "Default value:txtVarDefValue", "Note:", "Precision:cbPrecision",
                              "Variable Name:txtVarName", "Variable address:txtVarAddr", "Width:cbWidth"}));
    }

    void showsOneRecord() {
        project_.AnalogInput = 2'147'483'647;
        project_.RegVar[63] = {"RegVar64", " 1.50", "2", "0"};
        dialog_->InitContent(63);
        QCOMPARE(text("txtVarName"), "RegVar64");
        QCOMPARE(text("txtVarAddr"), "2147483773");
        QCOMPARE(text("txtVarDefValue"), " 1.50");
        QCOMPARE(list("cbWidth")->currentText(), "2");
        QCOMPARE(list("cbPrecision")->currentText(), "0");
        dialog_->InitContent(0);
        QCOMPARE(text("txtVarName"), "RegVar1");
        QCOMPARE(text("txtVarAddr"), "2147483647");
        QCOMPARE(text("txtVarDefValue"), "0.0");
        QCOMPARE(list("cbWidth")->currentText(), "7");
        QCOMPARE(list("cbPrecision")->currentText(), "3");
    }

    void unknownStoredTextsFallBack() {
        project_.RegVar[5].width = "9";
        project_.RegVar[5].precision = "5";
        list("cbWidth")->setCurrentIndex(0);
        list("cbPrecision")->setCurrentIndex(0);
        dialog_->InitContent(5);
        QCOMPARE(list("cbWidth")->currentText(), "7");
        QCOMPARE(list("cbPrecision")->currentText(), "3");
    }

    void refusesOtherIndexes() {
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, dialog_->InitContent(-1));
        QVERIFY_THROWS_EXCEPTION(std::out_of_range, dialog_->InitContent(64));
        QVERIFY(text("txtVarName").isEmpty());
    }

    void correctsTheWidthSilently_data() {
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<std::string>("returned");
        QTest::newRow("2 with 3") << "2"
                                  << "3" << std::string("0");
        QTest::newRow("8 with 0") << "8"
                                  << "0" << std::string("1");
        QTest::newRow("8 with 2") << "8"
                                  << "2" << std::string("2");
        QTest::newRow("7 with 0") << "7"
                                  << "0" << std::string("0");
    }
    void correctsTheWidthSilently() {
        QFETCH(QString, width);
        QFETCH(QString, chosen);
        QFETCH(std::string, returned);
        dialog_->InitContent(0);
        list("cbWidth")->setCurrentText(width);
        list("cbPrecision")->setCurrentText(chosen);
        ok();
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->IsCancel, std::int16_t{0});
        QCOMPARE(dialog_->VarWidth, width.toStdString());
        QCOMPARE(dialog_->VarPrecision, returned);
        QCOMPARE(list("cbPrecision")->currentText(), chosen); // the form stays as it was
    }

    void normalisesTheDefault_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<std::string>("returned");
        QTest::newRow("exponent") << "1e3" << std::string("1000");
        QTest::newRow("number and letters") << "12abc" << std::string("12");
        QTest::newRow("letters") << "abc" << std::string("0");
        QTest::newRow("nothing") << "" << std::string("0");
        QTest::newRow("blank before") << " 1.50" << std::string("1.5");
        QTest::newRow("negative") << "-3" << std::string("-3");
        QTest::newRow("hundred thousand") << "100000" << std::string("100000");
        QTest::newRow("no digit before the point") << ".5" << std::string("0.5");
        QTest::newRow("small") << "1e-7" << std::string("0.0000001");
        QTest::newRow("no-break space") << QStringLiteral("\u00A07") << std::string("0");
    }
    void normalisesTheDefault() {
        QFETCH(QString, typed);
        QFETCH(std::string, returned);
        dialog_->InitContent(0);
        auto* const box = dialog_->findChild<QLineEdit*>("txtVarDefValue");
        box->clear();
        QTest::keyClicks(box, typed);
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->VarDefValue, returned);
    }

    void anUntouchedDefaultBecomesShort() {
        dialog_->InitContent(0);
        ok();
        QCOMPARE(dialog_->VarDefValue, std::string("0"));
    }

    void aNumberBeyondDoubleKeepsTheDialogOpen() {
        dialog_->InitContent(0);
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        auto* const box = dialog_->findChild<QLineEdit*>("txtVarDefValue");
        box->setText("1e309");
        list("cbWidth")->setFocus();
        ok();
        QVERIFY(dialog_->isVisible());
        QCOMPARE(dialog_->IsCancel, std::int16_t{-1});
        QVERIFY(dialog_->VarWidth.empty() && dialog_->VarDefValue.empty());
        QVERIFY(box->hasFocus());
        QCOMPARE(box->selectedText(), "1e309");
        QVERIFY(!QApplication::activeModalWidget());
        QTest::keyClicks(box, "7");
        ok();
        QCOMPARE(dialog_->VarDefValue, std::string("7"));
    }

    void addressAndNameAreOnlyShown() {
        dialog_->InitContent(0);
        for (const char* name : {"txtVarAddr", "txtVarName"}) {
            const QString before = text(name);
            QTest::keyClicks(dialog_->findChild<QLineEdit*>(name), "9");
            QCOMPARE(text(name), before);
        }
    }

    void theDefaultBoxShowsEveryByte() {
        project_.RegVar[0].defaultValue = "5" + everyByte();
        dialog_->InitContent(0);
        QCOMPARE(text("txtVarDefValue").size(), 257);
        ok();
        QCOMPARE(dialog_->VarDefValue, std::string("5"));
    }

    void buttonEscapeAndFrameCancel() {
        dialog_->InitContent(0);
        ok();
        dialog_->show();
        QTest::mouseClick(dialog_->findChild<QPushButton*>("btnCancel"), Qt::LeftButton);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->IsCancel, std::int16_t{-1});
        QCOMPARE(dialog_->VarWidth, std::string("7"));
        ok();
        dialog_->show();
        QTest::keyClick(dialog_->findChild<QLineEdit*>("txtVarDefValue"), Qt::Key_Escape);
        QCOMPARE(dialog_->IsCancel, std::int16_t{-1});
        dialog_->show();
        ok();
        dialog_->show();
        dialog_->close();
        QCOMPARE(dialog_->IsCancel, std::int16_t{-1});
    }

    void tabsInOrder() {
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_COMPARE(dialog_->focusWidget()->objectName(), "txtVarDefValue");
        for (const char* next :
             {"cbWidth", "cbPrecision", "btnOK", "btnCancel", "txtVarAddr", "txtVarName"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(dialog_->focusWidget()->objectName(), QString(next));
        }
    }

private:
    QString text(const char* name) { return dialog_->findChild<QLineEdit*>(name)->text(); }
    QComboBox* list(const char* name) { return dialog_->findChild<QComboBox*>(name); }
    QStringList items(const char* name) {
        QStringList texts;
        for (int i = 0; i < list(name)->count(); ++i)
            texts += list(name)->itemText(i);
        return texts;
    }
    void ok() { QTest::mouseClick(dialog_->findChild<QPushButton*>("btnOK"), Qt::LeftButton); }

    Project project_;
    std::unique_ptr<frmFloatVarEdit> dialog_;
};

QTEST_MAIN(FloatVarEditTest)
#include "FloatVarEditTest.moc"
