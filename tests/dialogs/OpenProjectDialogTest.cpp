#include "dialogs/frmLoadProject.h"
#include "tests/support/BoxInput.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeInput.h"
#include "widgets/PathText.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <memory>

using namespace orvista;
using namespace orvista::testing;

class OpenProjectDialogTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        folder_ = std::make_unique<TemporaryFolder>();
        environment_ = {folder_->path(), PathRules::posix()};
    }
    void cleanup() {
        dialog_.reset();
        QVERIFY(allModalsServed());
    }

    void anEmptyHistoryGivesAnEmptyListAndNoOk() {
        open("");
        QCOMPARE(dialog_->windowTitle(), "Open Existing Project");
        QCOMPARE(list()->topLevelItemCount(), 0);
        QVERIFY(!button("btnOK")->isEnabled());
        QVERIFY(dialog_->IsCanceled);
    }

    void listsTheHistoryInItsOrder() {
        open("/prog/\r\n/my plants/Line 3\r\n/a/b/\xC3\x9C\r\n/rooted\r\n");
        QCOMPARE(list()->headerItem()->text(0), "File");
        QCOMPARE(list()->headerItem()->text(1), "Folder");
        QStringList rows;
        for (int i = 0; i < list()->topLevelItemCount(); ++i)
            rows += list()->topLevelItem(i)->text(0) + u'|' + list()->topLevelItem(i)->text(1);
        QCOMPARE(rows,
                 QStringList({"|/prog", "Line 3|/my plants", QStringLiteral("\u00DC|/a/b"), "rooted|"}));
        QVERIFY(!button("btnOK")->isEnabled());
    }

    void clickingARowChoosesIt() {
        open("/prog/\r\n/my plants/Line 3\r\n/rooted\r\n");
        clickRow(*list(), list()->topLevelItem(1));
        QCOMPARE(dialog_->findChild<QLineEdit*>("txtFileName")->text(), "/my plants/Line 3.orx");
        QCOMPARE(dialog_->ProjPath, std::string("/my plants"));
        QCOMPARE(dialog_->ProjName, std::string("Line 3"));
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(!dialog_->IsCanceled);
        QVERIFY(!dialog_->isVisible());
    }

    void aProjectInTheRootFolderKeepsItsPath() {
        open("/rooted\r\n");
        clickRow(*list(), list()->topLevelItem(0));
        QCOMPARE(dialog_->findChild<QLineEdit*>("txtFileName")->text(), "/rooted.orx");
    }

    void theNamelessRowIsOfferedToo() {
        open("/prog/\r\n");
        clickRow(*list(), list()->topLevelItem(0));
        QCOMPARE(dialog_->findChild<QLineEdit*>("txtFileName")->text(), "/prog/.orx");
        QCOMPARE(dialog_->ProjName, std::string());
        QVERIFY(button("btnOK")->isEnabled());
    }

    void gettingTheFocusChoosesNothing() {
        open("/p/A\r\n/p/B\r\n");
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(list()->hasFocus());
        QVERIFY(!button("btnOK")->isEnabled());
        QVERIFY(dialog_->findChild<QLineEdit*>("txtFileName")->text().isEmpty());
    }

    void atLoadNoRowIsCurrentNorPaintedSo() {
        open("/p/A\r\n/p/B\r\n");
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(list()->hasFocus());
        QVERIFY(!list()->currentItem());
        const QImage focused = list()->viewport()->grab().toImage();
        button("btnCancel")->setFocus();
        QCOMPARE(focused, list()->viewport()->grab().toImage());
    }

    void theFirstKeyChoosesARow_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("chosen");
        QTest::newRow("Down") << Qt::Key_Down << "A";
        QTest::newRow("Home") << Qt::Key_Home << "A";
        QTest::newRow("End") << Qt::Key_End << "C";
        QTest::newRow("a letter") << Qt::Key_B << "B";
        QTest::newRow("the first row's letter") << Qt::Key_A << "A";
    }
    void theFirstKeyChoosesARow() {
        QFETCH(const Qt::Key, key);
        QFETCH(const QString, chosen);
        open("/p/A\r\n/p/B\r\n/p/C\r\n");
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(list()->hasFocus());
        QTest::keyClick(list(), key);
        QCOMPARE(dialog_->findChild<QLineEdit*>("txtFileName")->text(), "/p/" + chosen + ".orx");
        QCOMPARE(list()->selectedItems(), QList{list()->currentItem()});
        QTest::keyClick(list(), Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QVERIFY(!dialog_->IsCanceled);
        QCOMPARE(dialog_->ProjName, chosen.toStdString());
    }

    void enterOpensNothingWhileNoRowIsChosen() {
        open("/p/A\r\n");
        QTest::keyClick(list(), Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
    }

    void worksByKeyboard() {
        open("/p/A\r\n/p/B\r\n");
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(list()->hasFocus());
        QTest::keyClick(list(), Qt::Key_Down);
        QTest::keyClick(list(), Qt::Key_Up);
        QCOMPARE(dialog_->ProjName, std::string("A"));
        QTest::keyClick(list(), Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QVERIFY(!dialog_->IsCanceled);
    }

    void doubleClickAccepts() {
        open("/p/A\r\n/p/B\r\n");
        doubleClickRow(*list(), list()->topLevelItem(1));
        QVERIFY(!dialog_->isVisible());
        QVERIFY(!dialog_->IsCanceled);
        QCOMPARE(dialog_->ProjName, std::string("B"));
    }

    void escapeFrameAndButtonCancel() {
        open("/p/A\r\n");
        clickRow(*list(), list()->topLevelItem(0));
        QTest::keyClick(list(), Qt::Key_Escape);
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        dialog_->show();
        dialog_->close();
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        dialog_->show();
        QTest::mouseClick(button("btnCancel"), Qt::LeftButton);
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
    }

    void browsingChoosesAFile() {
        writeBytes(folder_->file("Line 3.ORX"), "x");
        open(folder_->file("A") + "\r\n/p/B\r\n");
        clickRow(*list(), list()->topLevelItem(0)); // browsing starts in the folder of the choice
        onModal("frmSelFile", [](QWidget* chooser) {
            auto* const files = chooser->findChild<QListWidget*>("File1");
            QCOMPARE(files->count(), 1);
            QTest::mouseClick(files->viewport(), Qt::LeftButton, {},
                              files->visualItemRect(files->item(0)).center());
            QTest::mouseClick(chooser->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
        });
        QTest::mouseClick(button("btnBrowse"), Qt::LeftButton);
        QCOMPARE(pathFromShown(dialog_->findChild<QLineEdit*>("txtFileName")->text()),
                 folder_->file("Line 3.ORX"));
        QCOMPARE(dialog_->ProjPath, folder_->path());
        QCOMPARE(dialog_->ProjName, std::string("Line 3"));
        QVERIFY(button("btnOK")->isEnabled());

        clickRow(*list(), list()->topLevelItem(0)); // the row that was chosen before counts again
        QCOMPARE(dialog_->ProjName, std::string("A"));
    }

    void cancelledBrowsingChangesNothing() {
        writeBytes(folder_->file("X.orx"), "x");
        open("/p/A\r\n");
        clickRow(*list(), list()->topLevelItem(0));
        onModal("frmSelFile", [](QWidget* chooser) { QTest::keyClick(chooser, Qt::Key_Escape); });
        QTest::mouseClick(button("btnBrowse"), Qt::LeftButton);
        QCOMPARE(dialog_->ProjName, std::string("A"));
        QCOMPARE(dialog_->findChild<QLineEdit*>("txtFileName")->text(), "/p/A.orx");
    }

    void aHistoryOfNoiseIsListedAsItIs() {
        std::string noise;
        for (const char byte : everyByte())
            if (byte != '\r' && byte != '\n')
                noise.push_back(byte);
        open("\r\n" + noise + "\r\n/\xFF/\xC3\r\nno folder\r\n");
        QCOMPARE(list()->topLevelItemCount(), 3);
        list()->setCurrentItem(list()->topLevelItem(0)); // the row is too wide to be clicked in its middle
        QCOMPARE(QByteArray::fromStdString(environment_.paths.join(dialog_->ProjPath, dialog_->ProjName)),
                 QByteArray::fromStdString(noise));
        list()->setCurrentItem(list()->topLevelItem(1));
        QCOMPARE(QByteArray::fromStdString(dialog_->ProjPath), QByteArray("/\xFF"));
        QCOMPARE(QByteArray::fromStdString(dialog_->ProjName), QByteArray("\xC3"));
        list()->setCurrentItem(list()->topLevelItem(2));
        QCOMPARE(dialog_->ProjPath, std::string());
        QCOMPARE(dialog_->ProjName, std::string("no folder"));
    }

    void theFileNameIsOnlyShown() {
        open("/p/A\r\n");
        auto* const box = dialog_->findChild<QLineEdit*>("txtFileName");
        QTest::keyClicks(box, "typed");
        QVERIFY(box->text().isEmpty());
    }

private:
    void open(const std::string& cache) {
        writeBytes(folder_->file("history.cache"), cache);
        ConfigModule::History history(environment_.paths, environment_.programFolder);
        history.ReadHistory();
        dialog_ = std::make_unique<frmLoadProject>(history, environment_);
        dialog_->show();
    }
    QTreeWidget* list() { return dialog_->findChild<QTreeWidget*>("ListView1"); }
    QPushButton* button(const char* name) { return dialog_->findChild<QPushButton*>(name); }

    std::unique_ptr<TemporaryFolder> folder_;
    DocMgrModule::ProgramEnvironment environment_;
    std::unique_ptr<frmLoadProject> dialog_;
};

QTEST_MAIN(OpenProjectDialogTest)
#include "OpenProjectDialogTest.moc"
