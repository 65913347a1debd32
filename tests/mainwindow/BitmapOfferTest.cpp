#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"

#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTableView>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// A saved project whose messages name two bitmaps of its folder.
struct Editor : EditorFixture {
    Editor() {
        startWithNewProject();
        project.STDMSG[0] = "CLEAR\r\nIMG 0 0 RED BLACK pump.bmp";
        project.ALTMSG[0] = "CLEAR\r\nIMG 0 0 RED BLACK alarm.bmp";
        for (const char* const name : {"pump.bmp", "alarm.bmp", "unused.bmp"})
            writeBytes(projectFolder.file(name), "old");
        trigger("miFileSave");
    }
    void saveAs(const std::string& path) {
        chooser.saveAsPaths.push_back(path);
        trigger("miFileSaveAs");
    }
    /// A command of the menu Edit, with that row of the messages selected.
    void messageCommand(int row, const char* command) const {
        trigger("miViewMessages");
        auto* const table = find<QTableView>("tblMessages");
        table->setFocus();
        table->selectRow(row);
        trigger(command);
    }
    bool isOffered() const {
        const auto* const line = window->findChild<QLabel*>("lblCopyBitmaps");
        return line && line->isVisible();
    }
    bool has(const char* name) const { return std::filesystem::exists(systemPath(other.file(name))); }

    TemporaryFolder other;
};

} // namespace

class BitmapOfferTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
    void saveAsElsewhereOffersWhatStayedBehind();
    void oneBitmapIsOneBitmap();
    void copiesByKeyboardAlone();
    void neverReplacesAFile();
    void whatCannotBeCopiedIsSaid();
    void saveAsInTheSameFolderOffersNothing();
    void withoutMissingBitmapsTheDockStaysHidden();
    void aFailedOrCancelledSaveAsOffersNothing();
    void theOfferGoesWithTheProject();
    void aPasteFromAnotherProjectOffersItsBitmaps();
    void anImportOffersTheBitmapsBesideTheTable();
    void messagesThatWereTakenOverOfferTheirBitmaps();
    void anOfferStandsWhileItsBitmapsAreMissing();
    void anOfferThatWasTakenAwayDoesNotComeAgain();
};

void BitmapOfferTest::saveAsElsewhereOffersWhatStayedBehind() {
    Editor editor;
    editor.saveAs(editor.other.file("Copy.orx"));
    QVERIFY(editor.isOffered());
    QCOMPARE(editor.find<QLabel>("lblCopyBitmaps")->text(),
             "2 bitmaps used by the messages are missing here but exist in " +
                 QString::fromStdString(editor.projectFolder.path()));
    QCOMPARE(editor.find<QPushButton>("btnCopyBitmaps")->text(), QStringLiteral("Copy 2 Bitmaps"));
    QVERIFY(!editor.has("pump.bmp"));
    editor.click("btnCopyBitmaps");
    QVERIFY(editor.has("pump.bmp") && editor.has("alarm.bmp") && !editor.has("unused.bmp"));
    QVERIFY(!editor.isOffered());
    QVERIFY(editor.find<QWidget>("dockPanels")->isHidden());
    QVERIFY(!editor.project.modified);
}

void BitmapOfferTest::oneBitmapIsOneBitmap() {
    Editor editor;
    writeBytes(editor.other.file("PUMP.BMP"), "new"); // the display knows it in any case
    editor.saveAs(editor.other.file("Copy.orx"));
    QCOMPARE(editor.find<QLabel>("lblCopyBitmaps")->text(),
             "1 bitmap used by the messages is missing here but exists in " +
                 QString::fromStdString(editor.projectFolder.path()));
    QCOMPARE(editor.find<QPushButton>("btnCopyBitmaps")->text(), QStringLiteral("Copy 1 Bitmap"));
}

void BitmapOfferTest::copiesByKeyboardAlone() {
    Editor editor;
    editor.showPage("C4");
    editor.saveAs(editor.other.file("Copy.orx"));
    auto* const button = editor.find<QPushButton>("btnCopyBitmaps");
    QVERIFY(!button->hasFocus()); // it is the user's choice
    for (int tabs = 0; tabs < 40 && !button->hasFocus(); ++tabs)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(button->hasFocus());
    QTest::keyClick(button, Qt::Key_Return);
    QVERIFY(editor.has("pump.bmp") && editor.has("alarm.bmp"));
}

void BitmapOfferTest::neverReplacesAFile() {
    Editor editor;
    editor.saveAs(editor.other.file("Copy.orx"));
    writeBytes(editor.other.file("pump.bmp"), "came in between");
    editor.click("btnCopyBitmaps");
    QCOMPARE(fileBytes(editor.other.file("pump.bmp")), std::string("came in between"));
    QCOMPARE(fileBytes(editor.other.file("alarm.bmp")), std::string("old"));
}

void BitmapOfferTest::whatCannotBeCopiedIsSaid() {
    Editor editor;
    editor.saveAs(editor.other.file("Copy.orx"));
    std::filesystem::create_directory(systemPath(editor.other.file("pump.bmp"))); // in the way
    editor.click("btnCopyBitmaps");
    QCOMPARE(editor.notice(), QStringLiteral("pump.bmp cannot be copied"));
    QVERIFY(editor.has("alarm.bmp"));
}

void BitmapOfferTest::saveAsInTheSameFolderOffersNothing() {
    Editor editor;
    editor.saveAs(editor.projectFolder.file("Other.orx"));
    QVERIFY(!editor.isOffered());
}

void BitmapOfferTest::withoutMissingBitmapsTheDockStaysHidden() {
    Editor editor;
    for (const char* const name : {"pump.bmp", "alarm.bmp"})
        writeBytes(editor.other.file(name), "new");
    editor.saveAs(editor.other.file("Copy.orx"));
    QVERIFY(editor.find<QWidget>("dockPanels")->isHidden());
}

void BitmapOfferTest::aFailedOrCancelledSaveAsOffersNothing() {
    Editor editor;
    editor.trigger("miFileSaveAs"); // the dialog is cancelled
    QVERIFY(!editor.isOffered());
    editor.saveAs(editor.other.file("missing/Copy.orx"));
    QVERIFY(!editor.isOffered());
    QCOMPARE(editor.project.ProjPath, editor.projectFolder.path());
}

void BitmapOfferTest::theOfferGoesWithTheProject() {
    Editor editor;
    editor.saveAs(editor.other.file("Copy.orx"));
    QVERIFY(editor.isOffered());
    editor.newProject("Line4");
    QVERIFY(!editor.isOffered());
    QVERIFY(editor.find<QWidget>("dockPanels")->isHidden());
}

void BitmapOfferTest::aPasteFromAnotherProjectOffersItsBitmaps() {
    Editor editor;
    editor.messageCommand(0, "miEditCopy");
    editor.chooser.newProjects.push_back({editor.other.path(), "Other"});
    editor.trigger("miFileNew");
    editor.messageCommand(0, "miEditPaste");
    QCOMPARE(editor.project.STDMSG[0], std::string("CLEAR\r\nIMG 0 0 RED BLACK pump.bmp"));
    QVERIFY(editor.isOffered());
    QCOMPARE(editor.find<QPushButton>("btnCopyBitmaps")->text(), QStringLiteral("Copy 1 Bitmap"));
    editor.click("btnCopyBitmaps");
    QCOMPARE(fileBytes(editor.other.file("pump.bmp")), std::string("old"));
}

void BitmapOfferTest::anImportOffersTheBitmapsBesideTheTable() {
    Editor editor;
    writeBytes(editor.other.file("tank.bmp"), "tank");
    writeBytes(editor.other.file("unused.bmp"), "unused");
    writeBytes(editor.other.file("messages.csv"), "message,script\r\nSTDMSG2,IMG 0 0 RED BLACK tank.bmp\r\n");
    onModal("comdlg", [&editor](QWidget* dialog) {
        qobject_cast<QFileDialog*>(dialog)->selectFile(
            QString::fromStdString(editor.other.file("messages.csv")));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    onModal("frmSheetImport", [](QWidget* dialog) {
        QTest::mouseClick(dialog->findChild<QPushButton*>("btnOK"), Qt::LeftButton);
    });
    editor.trigger("miToolsImportMessages");
    QVERIFY(allModalsServed());
    QVERIFY(editor.isOffered());
    QCOMPARE(editor.find<QLabel>("lblCopyBitmaps")->text(),
             "1 bitmap used by the messages is missing here but exists in " +
                 QString::fromStdString(editor.other.path()));
    editor.click("btnCopyBitmaps");
    QCOMPARE(fileBytes(editor.projectFolder.file("tank.bmp")), std::string("tank"));
    QCOMPARE(fileBytes(editor.projectFolder.file("unused.bmp")), std::string("old"));
    QVERIFY(!editor.isOffered());
}

void BitmapOfferTest::messagesThatWereTakenOverOfferTheirBitmaps() {
    Editor editor;
    editor.chooser.newProjects.push_back({editor.other.path(), "New"});
    editor.trigger("miFileNew");
    editor.chooser.existingProjects.push_back({editor.projectFolder.path(), "Line3"});
    editor.trigger("miToolsCompareProject");
    QVERIFY(!editor.isOffered());
    editor.find<QTableView>("tblComparison")->selectAll();
    editor.click("btnTakeTheirs");
    QVERIFY(editor.isOffered());
    QCOMPARE(editor.find<QPushButton>("btnCopyBitmaps")->text(), QStringLiteral("Copy 2 Bitmaps"));
    editor.click("btnCopyBitmaps");
    QCOMPARE(fileBytes(editor.other.file("pump.bmp")), std::string("old"));
    // The comparison has them as well.
    const QAbstractItemModel& rows = *editor.find<QTableView>("tblComparison")->model();
    QCOMPARE(rows.rowCount(), 1);
    QCOMPARE(rows.index(0, 0).data().toString(), QStringLiteral("unused.bmp"));
    QVERIFY(editor.find<QLabel>("lblComparison")->text().startsWith(QStringLiteral("No differences")));
}

void BitmapOfferTest::anOfferStandsWhileItsBitmapsAreMissing() {
    Editor editor;
    editor.saveAs(editor.other.file("Copy.orx"));
    // What comes from the project itself, or goes on to a third folder, leaves the first one to be asked.
    editor.messageCommand(0, "miEditCopy");
    editor.messageCommand(1, "miEditPaste");
    QCOMPARE(editor.project.STDMSG[1], editor.project.STDMSG[0]);
    QVERIFY(editor.isOffered());
    const TemporaryFolder third;
    editor.saveAs(third.file("Copy.orx"));
    QVERIFY(editor.isOffered());
    QCOMPARE(editor.find<QPushButton>("btnCopyBitmaps")->text(), QStringLiteral("Copy 2 Bitmaps"));
    editor.click("btnCopyBitmaps");
    QCOMPARE(fileBytes(third.file("pump.bmp")), std::string("old"));
    QCOMPARE(fileBytes(third.file("alarm.bmp")), std::string("old"));
    QVERIFY(!editor.isOffered());
    // Nothing is missing any more.
    editor.messageCommand(2, "miEditPaste");
    QVERIFY(!editor.isOffered());
}

void BitmapOfferTest::anOfferThatWasTakenAwayDoesNotComeAgain() {
    Editor editor;
    editor.saveAs(editor.other.file("Copy.orx"));
    editor.click("btnDismissCopyBitmaps");
    QVERIFY(!editor.isOffered());
    editor.messageCommand(0, "miEditCopy");
    editor.messageCommand(1, "miEditPaste");
    QCOMPARE(editor.project.STDMSG[1], editor.project.STDMSG[0]);
    QVERIFY(!editor.isOffered());
}

QTEST_MAIN(BitmapOfferTest)
#include "BitmapOfferTest.moc"
