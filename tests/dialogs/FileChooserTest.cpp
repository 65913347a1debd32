#include "dialogs/frmSelFile.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeInput.h"
#include "widgets/PathText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QListWidget>
#include <QPushButton>

#include <memory>

using namespace orvista;
using namespace orvista::testing;

class FileChooserTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        folder_ = std::make_unique<TemporaryFolder>();
        std::filesystem::create_directory(folder_->file("inner"));
        std::filesystem::create_directory(folder_->file("folder.orx"));
        for (const char* name : {"Line 10.ORX", "Line 9.orx",
                                 "\xC3\x9C"
                                 "berlauf.oRx",
                                 "notes.txt", "x.orx.bak", "inner/deep.orx"})
            writeBytes(folder_->file(name), "x");
        start(folder_->path());
    }

    void listsProjectFilesInAnyCase() {
        QCOMPARE(dialog_->windowTitle(), "Load Project");
        QCOMPARE(fileNames(),
                 QStringList({"Line 9.orx", "Line 10.ORX", QStringLiteral("\u00DCberlauf.oRx")}));
    }

    void startsWithoutAChoice() {
        QVERIFY(dialog_->IsCanceled);
        QCOMPARE(dialog_->FilePath, folder_->path());
        QVERIFY(dialog_->FileName.empty());
        QVERIFY(!button("btnOK")->isEnabled());
    }

    void clickingAFileEnablesOk() {
        clickFile(1);
        QVERIFY(button("btnOK")->isEnabled());
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(!dialog_->IsCanceled);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->FilePath, folder_->path());
        QCOMPARE(dialog_->FileName, std::string("Line 10.ORX"));
    }

    void changingTheFolderNeedsANewChoice() {
        clickFile(0);
        clickRow(*folders(), subfolder("inner"));
        QVERIFY(!button("btnOK")->isEnabled());
        QCOMPARE(fileNames(), QStringList("deep.orx"));
        clickFile(0);
        QVERIFY(button("btnOK")->isEnabled());
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QCOMPARE(dialog_->FilePath, folder_->file("inner"));
        QCOMPARE(dialog_->FileName, std::string("deep.orx"));
    }

    void changingTheDriveNeedsANewChoice() {
        clickFile(0);
        auto* const drives = dialog_->findChild<QComboBox*>("Drive1");
        drives->setFocus();
        QTest::keyClick(drives, Qt::Key_Space);
        QTest::keyClick(drives->view(), Qt::Key_Home);
        QTest::keyClick(drives->view(), Qt::Key_Return);
        QVERIFY(!button("btnOK")->isEnabled());
        QCOMPARE(folders()->currentItem(), folders()->topLevelItem(0));
    }

    void doubleClickAccepts() {
        clickFile(2);
        QTest::mouseDClick(files()->viewport(), Qt::LeftButton, {},
                           files()->visualItemRect(files()->item(2)).center());
        QVERIFY(!dialog_->isVisible());
        QVERIFY(!dialog_->IsCanceled);
        QCOMPARE(dialog_->FileName, std::string("\xC3\x9C"
                                                "berlauf.oRx"));
    }

    void theFirstKeyChoosesAFile_data() {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<int>("row");
        QTest::newRow("Down") << Qt::Key_Down << 0;
        QTest::newRow("Home") << Qt::Key_Home << 0;
        QTest::newRow("End") << Qt::Key_End << 2;
        QTest::newRow("a letter") << Qt::Key_L << 0;
    }
    void theFirstKeyChoosesAFile() {
        QFETCH(const Qt::Key, key);
        QFETCH(const int, row);
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(files()->hasFocus());
        QCOMPARE(files()->currentRow(), -1);
        QTest::keyClick(files(), key);
        QCOMPARE(files()->currentRow(), row);
        QVERIFY(files()->item(row)->isSelected());
        QVERIFY(button("btnOK")->isEnabled());
    }

    void rowsShareTheirIcons() {
        for (int i = 0; i < 20; ++i)
            std::filesystem::create_directory(folder_->file("many" + std::to_string(i)));
        start(folder_->path());
        const QTreeWidgetItem* const open = folders()->currentItem();
        QVERIFY(open->childCount() > 20);
        for (int i = 1; i < open->childCount(); ++i)
            QCOMPARE(open->child(i)->icon(0).cacheKey(), open->child(0)->icon(0).cacheKey());
        QVERIFY(!open->child(0)->icon(0).isNull());
    }

    void worksByKeyboard() {
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(files()->hasFocus());
        QVERIFY(!button("btnOK")->isEnabled());
        QTest::keyClick(files(), Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
        QTest::keyClick(files(), Qt::Key_End);
        QTest::keyClick(files(), Qt::Key_Up);
        QTest::keyClick(files(), Qt::Key_Return);
        QVERIFY(!dialog_->isVisible());
        QCOMPARE(dialog_->FileName, std::string("Line 10.ORX"));
    }

    void tabsInOrder() {
        clickFile(0);
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        files()->setFocus();
        for (const char* next : {"btnOK", "btnCancel", "Drive1", "Dir1", "File1"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(dialog_->focusWidget()->objectName(), QString(next));
        }
    }

    void keepsNamesThatAreNoText() {
        writeBytes(folder_->file("\xFF.orx"), "x");
        start(folder_->path() + "/");
        clickFile(static_cast<int>(fileNames().indexOf(shownPath("\xFF.orx"))));
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QCOMPARE(QByteArray::fromStdString(dialog_->FileName), QByteArray("\xFF.orx"));
        QCOMPARE(dialog_->FilePath, folder_->path());
    }

    void escapeFrameAndButtonCancel() {
        clickFile(0);
        QTest::keyClick(files(), Qt::Key_Escape);
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        dialog_->show();
        dialog_->close();
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        dialog_->show();
        QTest::mouseClick(button("btnCancel"), Qt::LeftButton);
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        QVERIFY(dialog_->FileName.empty());
    }

private:
    void start(const std::string& folder) {
        dialog_ = std::make_unique<frmSelFile>(PathRules::posix(), folder);
        dialog_->show();
    }
    QTreeWidget* folders() { return dialog_->findChild<QTreeWidget*>("Dir1"); }
    QListWidget* files() { return dialog_->findChild<QListWidget*>("File1"); }
    QPushButton* button(const char* name) { return dialog_->findChild<QPushButton*>(name); }
    void clickFile(int row) {
        QTest::mouseClick(files()->viewport(), Qt::LeftButton, {},
                          files()->visualItemRect(files()->item(row)).center());
    }
    QStringList fileNames() {
        QStringList names;
        for (int i = 0; i < files()->count(); ++i)
            names += files()->item(i)->text();
        return names;
    }
    QTreeWidgetItem* subfolder(const QString& name) {
        for (int i = 0; i < folders()->currentItem()->childCount(); ++i)
            if (folders()->currentItem()->child(i)->text(0) == name)
                return folders()->currentItem()->child(i);
        throw std::runtime_error("no folder " + name.toStdString());
    }

    std::unique_ptr<TemporaryFolder> folder_;
    std::unique_ptr<frmSelFile> dialog_;
};

QTEST_MAIN(FileChooserTest)
#include "FileChooserTest.moc"
