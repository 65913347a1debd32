#include "dialogs/frmSelDir.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeInput.h"
#include "widgets/PathText.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>

#include <memory>

using namespace orvista;
using namespace orvista::testing;

class FolderChooserTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        folder_ = std::make_unique<TemporaryFolder>();
        for (const char* name : {"my plants", "my plants/Line 10", "my plants/Line 9", "\xC3\x9C", ".hidden"})
            std::filesystem::create_directory(folder_->file(name));
        writeBytes(folder_->file("no folder"), "x");
        start(folder_->path());
    }

    void showsItsTexts() {
        QCOMPARE(dialog_->windowTitle(), "Choose directory");
        QStringList labels;
        for (const QLabel* label : dialog_->findChildren<QLabel*>())
            labels += label->text() + (label->buddy() ? label->buddy()->objectName() : QString());
        QVERIFY(labels.contains("Drive :Drive1"));
        QVERIFY(labels.contains("Directory name :Dir1"));
        QVERIFY(dialog_->IsCanceled);
    }

    void startsInTheGivenFolder() {
        QCOMPARE(children(list()->currentItem()), QStringList({"my plants", QStringLiteral("\u00DC")}));
        ok();
        QCOMPARE(dialog_->FullPath, folder_->path());
        QVERIFY(!dialog_->IsCanceled);
        QVERIFY(!dialog_->isVisible());
    }

    void startsAtHomeWithoutAFolder() {
        for (const std::string& folder : {std::string(), folder_->file("gone"), folder_->file("no folder")}) {
            start(folder);
            ok();
            QCOMPARE(dialog_->FullPath, QDir::homePath().toStdString());
        }
    }

    void takesATrailingSeparator() {
        start(folder_->path() + "//");
        ok();
        QCOMPARE(dialog_->FullPath, folder_->path());
    }

    void theHighlightedFolderIsChosen() {
        clickRow(*list(), child("my plants"));
        ok();
        QCOMPARE(dialog_->FullPath, folder_->file("my plants"));
    }

    void doubleClickOpens() {
        doubleClickRow(*list(), child("my plants"));
        QVERIFY(dialog_->isVisible());
        QCOMPARE(list()->currentItem()->text(0), "my plants");
        QCOMPARE(children(list()->currentItem()), QStringList({"Line 9", "Line 10"}));
        clickRow(*list(), child("Line 10"));
        ok();
        QCOMPARE(dialog_->FullPath, folder_->file("my plants/Line 10"));
    }

    void keyboardOpensAndGoesBack() {
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(list()->hasFocus());
        QTest::keyClick(list(), Qt::Key_Down);
        QCOMPARE(list()->currentItem()->text(0), "my plants");
        QTest::keyClick(list(), Qt::Key_Return);
        QCOMPARE(children(list()->currentItem()), QStringList({"Line 9", "Line 10"}));
        QVERIFY(dialog_->isVisible());
        QTest::keyClick(list(), Qt::Key_Backspace);
        QCOMPARE(children(list()->currentItem()), QStringList({"my plants", QStringLiteral("\u00DC")}));
        for (const char* next : {"btnOK", "btnCancel", "Drive1", "Dir1"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(dialog_->focusWidget()->objectName(), QString(next));
        }
    }

    void theDriveListLeadsToTheRoot() {
        auto* const drives = dialog_->findChild<QComboBox*>("Drive1");
        QVERIFY(drives->count() >= 1);
        QCOMPARE(drives->itemData(0).toString(), QDir::rootPath());
        drives->setCurrentIndex(0);
        drives->setFocus();
        QTest::keyClick(drives, Qt::Key_Space);
        QTest::keyClick(drives->view(), Qt::Key_Home);
        QTest::keyClick(drives->view(), Qt::Key_Return);
        ok();
        QCOMPARE(dialog_->FullPath, std::string("/"));
    }

    void anUnreadableFolderIsSilentlyEmpty() {
        start(folder_->file("\xC3\x9C"));
        std::filesystem::remove(folder_->file("\xC3\x9C"));
        doubleClickRow(*list(), list()->currentItem());
        QCOMPARE(list()->currentItem()->childCount(), 0);
        QVERIFY(dialog_->isVisible());
    }

    void keepsNamesThatAreNoText() {
        const std::string odd = folder_->file("odd\xFF\xC3name");
        std::filesystem::create_directory(odd);
        start(odd);
        ok();
        QCOMPARE(QByteArray::fromStdString(dialog_->FullPath), QByteArray::fromStdString(odd));
        start(folder_->path());
        clickRow(*list(), child(shownPath("odd\xFF\xC3name")));
        ok();
        QCOMPARE(QByteArray::fromStdString(dialog_->FullPath), QByteArray::fromStdString(odd));
    }

    void escapeFrameAndButtonCancel() {
        QTest::keyClick(list(), Qt::Key_Escape);
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        dialog_->show();
        dialog_->close();
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        dialog_->show();
        QTest::mouseClick(dialog_->findChild<QPushButton*>("btnCancel"), Qt::LeftButton);
        QVERIFY(dialog_->IsCanceled && !dialog_->isVisible());
        QVERIFY(dialog_->FullPath.empty());
    }

private:
    void start(const std::string& folder) {
        dialog_ = std::make_unique<frmSelDir>(PathRules::posix(), folder);
        dialog_->show();
    }
    void ok() { QTest::mouseClick(dialog_->findChild<QPushButton*>("btnOK"), Qt::LeftButton); }
    QTreeWidget* list() { return dialog_->findChild<QTreeWidget*>("Dir1"); }
    QTreeWidgetItem* child(const QString& name) {
        for (int i = 0; i < list()->currentItem()->childCount(); ++i)
            if (list()->currentItem()->child(i)->text(0) == name)
                return list()->currentItem()->child(i);
        throw std::runtime_error("no folder " + name.toStdString());
    }
    static QStringList children(const QTreeWidgetItem* item) {
        QStringList names;
        for (int i = 0; i < item->childCount(); ++i)
            names += item->child(i)->text(0);
        return names;
    }

    std::unique_ptr<TemporaryFolder> folder_;
    std::unique_ptr<frmSelDir> dialog_;
};

QTEST_MAIN(FolderChooserTest)
#include "FolderChooserTest.moc"
