#include "dialogs/frmNewProject.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"
#include "widgets/PathText.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <memory>

using namespace orvista;
using namespace orvista::testing;

class NewProjectDialogTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        folder_ = std::make_unique<TemporaryFolder>();
        environment_ = {folder_->path()};
        messages_ = {};
        dialog_ = std::make_unique<frmNewProject>(environment_, messages_);
        dialog_->show();
    }
    void cleanup() { QVERIFY(allModalsServed()); }

    void startsInTheProgramFolderWithoutAName() {
        QCOMPARE(dialog_->windowTitle(), "Create New Project");
        QCOMPARE(box("txtLocation")->text(), shownPath(folder_->path()));
        QCOMPARE(dialog_->ProjPath, folder_->path());
        QVERIFY(box("txtProjName")->text().isEmpty());
        QVERIFY(!button("btnOK")->isEnabled());
        QVERIFY(dialog_->IsCanceled);
    }

    void okNeedsAName() {
        QTest::keyClicks(box("txtProjName"), "P");
        QVERIFY(button("btnOK")->isEnabled());
        QTest::keyClick(box("txtProjName"), Qt::Key_Backspace);
        QVERIFY(!button("btnOK")->isEnabled());
        QTest::keyClick(box("txtProjName"), Qt::Key_Return);
        QVERIFY(dialog_->isVisible());
    }

    void acceptsANewName() {
        QTest::keyClicks(box("txtProjName"), "Line 3");
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(!dialog_->isVisible());
        QVERIFY(!dialog_->IsCanceled);
        QCOMPARE(dialog_->ProjName, std::string("Line 3"));
        QCOMPARE(dialog_->ProjPath, folder_->path());
        QVERIFY(messages_.shown.empty());
    }

    void enterAcceptsAndEscapeCancels() {
        QTest::keyClicks(box("txtProjName"), "P");
        QTest::keyClick(box("txtProjName"), Qt::Key_Return);
        QVERIFY(!dialog_->IsCanceled);
        dialog_->show();
        QTest::keyClick(box("txtProjName"), Qt::Key_Escape);
        QVERIFY(!dialog_->isVisible());
        QVERIFY(dialog_->IsCanceled);
    }

    void frameAndButtonCancel() {
        QTest::mouseClick(button("btnCancel"), Qt::LeftButton);
        QVERIFY(!dialog_->isVisible());
        QVERIFY(dialog_->IsCanceled);
        dialog_->show();
        dialog_->close();
        QVERIFY(dialog_->IsCanceled);
    }

    void refusesAnExistingProject_data() {
        QTest::addColumn<QString>("file");
        QTest::newRow("as typed") << "PLANT.orx";
        QTest::newRow("extension in upper case") << "PLANT.ORX";
        QTest::newRow("name in lower case") << "plant.orx";
    }
    void refusesAnExistingProject() {
        QFETCH(QString, file);
        writeBytes(folder_->file(file.toStdString()), "x");
        QTest::keyClicks(box("txtProjName"), "PLANT");
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(dialog_->isVisible());
        QVERIFY(dialog_->IsCanceled);
        const ScriptedMessages::Shown expected{MessageIcon::Exclamation, "project file already exist"};
        QCOMPARE(messages_.shown.size(), 1U);
        QVERIFY(messages_.shown.front() == expected);
    }

    void anEmptyProjectFileBlocksSilently() {
        writeBytes(folder_->file("PLANT.orx"), "");
        QTest::keyClicks(box("txtProjName"), "PLANT");
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(dialog_->isVisible());
        QVERIFY(dialog_->IsCanceled);
        QVERIFY(messages_.shown.empty());
        QTest::keyClicks(box("txtProjName"), "2");
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(!dialog_->IsCanceled);
    }

    void takesAnyFolder_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("expected");
        QTest::newRow("blanks") << "/no such/my folder"
                                << "/no such/my folder";
        QTest::newRow("other scripts")
            << QStringLiteral("/\u00DCber/\u6C34") << QStringLiteral("/\u00DCber/\u6C34");
        QTest::newRow("trailing separator") << "/plants/"
                                            << "/plants";
        QTest::newRow("several") << "/plants///"
                                 << "/plants";
        QTest::newRow("root") << "/"
                              << "/";
    }
    void takesAnyFolder() {
        QFETCH(QString, typed);
        QFETCH(QString, expected);
        box("txtLocation")->setText(typed);
        QTest::keyClicks(box("txtProjName"), "nowhere-to-be-found");
        QTest::mouseClick(button("btnOK"), Qt::LeftButton);
        QVERIFY(!dialog_->IsCanceled);
        QCOMPARE(QString::fromStdString(dialog_->ProjPath), expected);
    }

    void browsingFillsTheLocation() {
        const std::string chosen = folder_->file("sub folder");
        std::filesystem::create_directory(chosen);
        onModal("frmSelDir", [](QWidget* chooser) {
            auto* const list = chooser->findChild<QTreeWidget*>("Dir1");
            QCOMPARE(list->currentItem()->childCount(), 1); // it starts in the folder of the box
            list->setCurrentItem(list->currentItem()->child(0));
            QTest::mouseClick(chooser->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
        });
        QTest::mouseClick(button("btnBrowse"), Qt::LeftButton);
        QCOMPARE(pathFromShown(box("txtLocation")->text()), chosen);
    }

    void cancelledBrowsingChangesNothing() {
        onModal("frmSelDir", [](QWidget* chooser) {
            auto* const list = chooser->findChild<QTreeWidget*>("Dir1");
            list->setCurrentItem(list->topLevelItem(0));
            QTest::mouseClick(chooser->findChild<QPushButton*>("btnCancel"), Qt::LeftButton);
        });
        QTest::mouseClick(button("btnBrowse"), Qt::LeftButton);
        QCOMPARE(pathFromShown(box("txtLocation")->text()), folder_->path());
    }

    void tabsInOrderAndTiesLabels() {
        dialog_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dialog_.get()));
        QTRY_VERIFY(box("txtProjName")->hasFocus());
        QTest::keyClicks(box("txtProjName"), "P");
        for (const char* next : {"txtLocation", "btnBrowse", "btnOK", "btnCancel", "txtProjName"}) {
            QTest::keyClick(dialog_->focusWidget(), Qt::Key_Tab);
            QCOMPARE(dialog_->focusWidget()->objectName(), QString(next));
        }
        QStringList labels;
        for (const QLabel* label : dialog_->findChildren<QLabel*>())
            labels += label->text() + (label->buddy() ? label->buddy()->objectName() : QString());
        QVERIFY(labels.contains("Project Name:txtProjName"));
        QVERIFY(labels.contains("Project Location:txtLocation"));
    }

private:
    QLineEdit* box(const char* name) { return dialog_->findChild<QLineEdit*>(name); }
    QPushButton* button(const char* name) { return dialog_->findChild<QPushButton*>(name); }

    std::unique_ptr<TemporaryFolder> folder_;
    DocMgrModule::ProgramEnvironment environment_;
    ScriptedMessages messages_;
    std::unique_ptr<frmNewProject> dialog_;
};

QTEST_MAIN(NewProjectDialogTest)
#include "NewProjectDialogTest.moc"
