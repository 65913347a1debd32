#include "dialogs/DialogProjectChooser.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/ScriptedPeople.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TreeInput.h"
#include "widgets/PathText.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>

#include <memory>

using namespace orvista;
using namespace orvista::testing;

namespace {

void press(QWidget* dialog, const char* button) {
    QTest::mouseClick(dialog->findChild<QPushButton*>(button), Qt::LeftButton);
}

/// Types a name into the save dialog and accepts it.
void saveAs(QWidget* comdlg, const QString& name) {
    auto* const box = comdlg->findChild<QLineEdit*>("fileNameEdit");
    box->selectAll();
    QTest::keyClicks(box, name);
    QTest::keyClick(box, Qt::Key_Return);
}

} // namespace

class ProjectChooserTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void init() {
        folder_ = std::make_unique<TemporaryFolder>();
        environment_ = {folder_->path()};
        project_.ProjPath = folder_->path();
        project_.ProjName = "PLANT";
        history_ = std::make_unique<ConfigModule::History>(environment_.paths, folder_->path());
        messages_ = {};
        chooser_ =
            std::make_unique<DialogProjectChooser>(*history_, environment_, project_, messages_, nullptr);
    }
    void cleanup() { QVERIFY(allModalsServed()); }

    void theStartOffersToCreateWithoutAHistory() {
        onModal("frmStartup", [](QWidget* dialog) { press(dialog, "btnStartupOK"); });
        QCOMPARE(chooser_->chooseAtStartup(), StartupChoice::CreateNew);
    }

    void theStartOffersToLoadARecentProject() {
        history_->WriteHistory("/plants", "A");
        onModal("frmStartup", [](QWidget* dialog) { press(dialog, "btnStartupOK"); });
        QCOMPARE(chooser_->chooseAtStartup(), StartupChoice::LoadExisting);
    }

    void theStartCanBeCancelled() {
        onModal("frmStartup", [](QWidget* dialog) { dialog->close(); });
        QCOMPARE(chooser_->chooseAtStartup(), StartupChoice::Cancelled);
    }

    void aNewProjectIsNamedAndPlaced() {
        onModal("frmNewProject", [](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), "Create New Project");
            QTest::keyClicks(dialog->findChild<QLineEdit*>("txtProjName"), "New");
            press(dialog, "btnOK");
        });
        const auto chosen = chooser_->chooseNewProject("");
        QVERIFY(chosen == (ChosenProject{folder_->path(), "New"}));
    }

    void aNewProjectCanBeCancelledUnderAnotherCaption() {
        onModal("frmNewProject", [](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), "Create new project for downloaded files");
            press(dialog, "btnCancel");
        });
        QVERIFY(!chooser_->chooseNewProject("Create new project for downloaded files"));
    }

    void anExistingProjectIsChosen() {
        history_->WriteHistory("/plants", "A");
        onModal("frmLoadProject", [](QWidget* dialog) {
            auto* const list = dialog->findChild<QTreeWidget*>("ListView1");
            clickRow(*list, list->topLevelItem(0));
            press(dialog, "btnOK");
        });
        QVERIFY(chooser_->chooseExistingProject({}) == (ChosenProject{"/plants", "A"}));
        for (const auto& [caption, title] :
             {std::pair("", "Open Existing Project"), std::pair("Compare", "Compare")}) {
            onModal("frmLoadProject", [title = title](QWidget* dialog) {
                QCOMPARE(dialog->windowTitle(), title);
                press(dialog, "btnCancel");
            });
            QVERIFY(!chooser_->chooseExistingProject(caption));
        }
    }

    void saveAsProposesTheNameInTheProjectFolder() {
        onModal("comdlg", [this](QWidget* modal) {
            auto* const dialog = qobject_cast<QFileDialog*>(modal);
            QCOMPARE(dialog->findChild<QLineEdit*>("fileNameEdit")->text(), "PLANT");
            QCOMPARE(dialog->directory().absolutePath(), shownPath(folder_->path()));
            QCOMPARE(dialog->nameFilters().size(), 1);
            QVERIFY(dialog->nameFilters().front().startsWith("Orvista Project(*orx)"));
            QTest::keyClick(dialog, Qt::Key_Escape);
        });
        QVERIFY(!chooser_->chooseSaveAsPath("PLANT"));
    }

    void saveAsAddsTheExtension_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("written");
        QTest::newRow("none") << "Line 3"
                              << "Line 3.orx";
        QTest::newRow("given") << "Line 3.orx"
                               << "Line 3.orx";
        QTest::newRow("given in another case") << "Line 3.OrX"
                                               << "Line 3.OrX";
        QTest::newRow("another one") << "Line3.v2"
                                     << "Line3.v2.orx";
    }
    void saveAsAddsTheExtension() {
        QFETCH(QString, typed);
        QFETCH(QString, written);
        onModal("comdlg", [&](QWidget* dialog) { saveAs(dialog, typed); });
        const auto path = chooser_->chooseSaveAsPath("PLANT");
        QVERIFY(path == folder_->file(written.toStdString()));
    }

    void saveAsAsksAboutThePathItWillWrite() {
        writeBytes(folder_->file("OLD.orx"), "x");
        onModal("comdlg", [](QWidget* dialog) { saveAs(dialog, "OLD"); });
        onModal("messageBox", [this](QWidget* box) {
            QVERIFY(qobject_cast<QMessageBox*>(box)->text().contains(shownPath(folder_->file("OLD.orx"))));
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::Yes), Qt::LeftButton);
        });
        QVERIFY(chooser_->chooseSaveAsPath("PLANT") == folder_->file("OLD.orx"));
    }

    void saveAsGoesOnWhenNothingIsToBeReplaced() {
        writeBytes(folder_->file("old.ORX"), "x");
        onModal("comdlg", [](QWidget* dialog) { saveAs(dialog, "OLD"); });
        onModal("messageBox", [](QWidget* box) {
            onModal("comdlg", [](QWidget* dialog) { saveAs(dialog, "OTHER"); });
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::No), Qt::LeftButton);
        });
        QVERIFY(chooser_->chooseSaveAsPath("PLANT") == folder_->file("OTHER.orx"));
    }

    void saveAsDoesNotAskAboutTheNameWithoutExtension() {
        writeBytes(folder_->file("PLAIN"), "x");
        onModal("comdlg", [](QWidget* dialog) { saveAs(dialog, "PLAIN"); });
        QVERIFY(chooser_->chooseSaveAsPath("PLANT") == folder_->file("PLAIN.orx"));
    }

    void saveAsStaysInAFolderThatIsNoText() {
        const std::string plant = folder_->file("W\xE4rme");
        std::error_code error;
        if (!std::filesystem::create_directory(plant, error))
            QSKIP("this file system takes only names that are texts");
        writeBytes(plant + "/OLD.orx", "x");
        project_.ProjPath = plant;
        QString shown;
        onModal("comdlg", [&shown](QWidget* modal) {
            auto* const dialog = qobject_cast<QFileDialog*>(modal);
            shown = dialog->directory().absolutePath();
            QVERIFY2(shown.endsWith("/W_rme"), qPrintable(shown));
            QCOMPARE(dialog->directory().entryList({"*.orx"}, QDir::Files), QStringList("OLD.orx"));
            saveAs(dialog, "OLD");
        });
        onModal("messageBox", [](QWidget* box) {
            QVERIFY(qobject_cast<QMessageBox*>(box)->text().contains("rme/OLD.orx already exists"));
            onModal("comdlg", [](QWidget* dialog) { saveAs(dialog, "NEW"); });
            QTest::mouseClick(qobject_cast<QMessageBox*>(box)->button(QMessageBox::No), Qt::LeftButton);
        });
        QVERIFY(chooser_->chooseSaveAsPath("PLANT") == plant + "/NEW.orx");
        QVERIFY(!QDir(shown).exists());
        QVERIFY(std::filesystem::exists(plant + "/OLD.orx"));
    }

private:
    std::unique_ptr<TemporaryFolder> folder_;
    DocMgrModule::ProgramEnvironment environment_;
    Project project_;
    std::unique_ptr<ConfigModule::History> history_;
    ScriptedMessages messages_;
    std::unique_ptr<DialogProjectChooser> chooser_;
};

QTEST_MAIN(ProjectChooserTest)
#include "ProjectChooserTest.moc"
