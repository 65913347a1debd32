#include "display/forms/DisplayPreview.h"
#include "items/NotesFile.h"
#include "link/TransferCommands.h"
#include "mainwindow/ItemTree.h"
#include "mainwindow/OpenNotes.h"
#include "model/SystemPath.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "tests/support/NamedItem.h"
#include "widgets/PathText.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QToolTip>

#include <filesystem>

using namespace orvista;
using namespace orvista::testing;

namespace {

const std::string someNotes = R"({"version":1,"display":{"name":"Gate","columns":96},"items":{)"
                              R"("RegVar2":{"label":"TankLevel","unit":"m","comment":"Level of tank 1"},)"
                              R"("STDMSG1":{"label":"TankFull","comment":"Überlauf"}}})";

enum Column { ItemName, Address, Label, Unit, Comment, FirstText, Fault };

/// A download after which the project is another one.
struct Download final : TransferCommands {
    explicit Download(Project& project) : project(project) {}
    void upload() override {}
    FetchedDisplay download() override {
        project.ProjName = "Fetched";
        return {FetchedDisplay::End::Fetched, "127.0.8.11:7000", {}, project.IP};
    }
    FetchedDisplay fetch(const std::string&, const std::string&) override { return {}; }
    Project& project;
};

/// A saved project, and what is noted beside it.
struct Plant : EditorFixture {
    explicit Plant(const std::string& notes = {}) {
        startWithNewProject();
        project.STDMSG[0] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Full\"\r\nACT STILL 1000";
        trigger("miFileSave");
        if (!notes.empty())
            writeBytes(notesFile(), notes);
        openProject("Line3");
    }
    std::string notesFile() const { return projectFolder.file("Line3.notes.json"); }
    ProjectNotes noted() const { return readNotesFile(notesFile()).notes; }
    int columns() const { return find<QSpinBox>("spnPreviewColumns")->value(); }
    /// Of the line in the dock, without its places to break at; empty where there is none.
    QString line(const char* label) const {
        const auto* const text = window->findChild<QLabel*>(QString::fromLatin1(label));
        return text && text->isVisible() ? text->text().remove(QChar(0x200B)) : QString();
    }
    void names(const std::function<void(QWidget&)>& act) const {
        onModal(QStringLiteral("frmNames"), [&act](QWidget* dialog) { act(*dialog); });
        trigger("miToolsNames");
        QVERIFY(allModalsServed());
    }
    /// Chooses a table in the file dialog of an import.
    void importTable(const char* entry, const std::string& csv) const {
        const std::string file = projectFolder.file("names.csv");
        writeBytes(file, csv);
        onModal(QStringLiteral("comdlg"), [&file](QWidget* dialog) {
            auto* const files = qobject_cast<QFileDialog*>(dialog);
            files->selectFile(QString::fromStdString(file));
            QMetaObject::invokeMethod(files, "accept");
        });
        trigger(entry);
        QVERIFY(allModalsServed());
    }
    void saveAs(const std::string& path) {
        chooser.saveAsPaths.push_back(path);
        trigger("miFileSaveAs");
    }
    /// The texts of a panel's rows that are shown, in that column.
    QStringList shown(const char* table, int column) const {
        const auto* const view = find<QTableView>(table);
        QStringList texts;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            texts << view->model()->index(row, column).data().toString();
        return texts;
    }
};

template <typename Widget>
Widget& in(QWidget& dialog, const char* name) {
    auto* const widget = dialog.findChild<Widget*>(QString::fromLatin1(name));
    if (!widget)
        throw std::logic_error(std::string("no ") + name);
    return *widget;
}

QTableWidget& table(QWidget& dialog) {
    return in<QTableWidget>(dialog, "tblNames");
}

/// Types into a cell as a user does.
void typeInto(QWidget& dialog, int row, int column, const QString& text) {
    table(dialog).setCurrentCell(row, column);
    QTest::keyClick(&table(dialog), Qt::Key_F2);
    auto* const editor = QApplication::focusWidget();
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(table(dialog).item(row, column)->text(), text);
    QTRY_VERIFY(table(dialog).hasFocus());
}

void press(QWidget& dialog, const char* button) {
    QTest::mouseClick(&in<QPushButton>(dialog, button), Qt::LeftButton);
}

} // namespace

class NamesTest : public QObject {
    Q_OBJECT
private slots:
    void openingSetsTheNotedColumnsAndElseTheUsualOnes();
    void whatIsNotTakenIsSaidInALine();
    void oneBadEntryIsNamedAndTheOthersCounted();
    void panelsHaveTheLabels();
    void filtersLookInLabelsAndComments();
    void treesTellWhatIsNoted();
    void theWizardsListsTellWhatIsNoted();
    void okWritesTheNotesAlone();
    void whatIsTypedByKeyboardAloneIsWritten();
    void anErrorStandsAtItsRowAndHindersOk();
    void aSentenceOfSeveralLinesTakesItsRoomFromTheTable();
    void aSpreadsheetIsPastedByColumns();
    void aTableOfNamesIsShownAndWrittenByOk();
    void aTableOfNamesWithErrorsIsTold();
    void filterAndOnlyUsedLeaveRows();
    void aProjectThatWasNeverSavedIsNotNoted();
    void whatAnotherProgramWroteMeanwhileStays();
    void whatCannotBeWrittenIsSaidAndTheDialogStays();
    void theListOfAMasterIsChosenAndTakenOffAgain();
    void saveAsOffersTheNotes();
    void saveAsOffersNothingWhereThereAreNotes();
    void aDownloadOffersTheNotesOfTheProjectBefore();
    void findingsHaveTheLabelsAndAreFoundByThem();
    void theComparisonHasTheLabels();
};

void NamesTest::openingSetsTheNotedColumnsAndElseTheUsualOnes() {
    Plant plant(someNotes);
    QCOMPARE(plant.columns(), 96);
    plant.window->notes().useColumns(160);
    plant.newProject("Other");
    QCOMPARE(plant.columns(), 160);
    plant.find<QSpinBox>("spnPreviewColumns")->setValue(200);
    plant.trigger("miFileSave");
    plant.openProject("Line3");
    QCOMPARE(plant.columns(), 96);
}

void NamesTest::whatIsNotTakenIsSaidInALine() {
    Plant plant("no notes");
    QCOMPARE(plant.line("lblNotesNotTaken"),
             QStringLiteral("Line3.notes.json is not taken: line 1, column 2 is not JSON"));
    QCOMPARE(plant.columns(), 128);
    plant.names([](QWidget& dialog) {
        QVERIFY(!in<QPushButton>(dialog, "btnOK").isEnabled());
        QVERIFY(in<QLabel>(dialog, "lblNames").text().endsWith("Mend or remove the file first."));
        press(dialog, "btnCancel");
    });
    writeBytes(plant.notesFile(), someNotes);
    plant.openProject("Line3");
    QCOMPARE(plant.line("lblNotesNotTaken"), QString());
}

void NamesTest::oneBadEntryIsNamedAndTheOthersCounted() {
    const Plant plant(R"({"version":1,"items":{"Pump":{},"Valve":{},"RegVar2":{"label":"Level"}}})");
    QCOMPARE(plant.line("lblNotesNotTaken"),
             QStringLiteral("Line3.notes.json: \"Pump\" is not a variable or message; and 1 more"));
    QCOMPARE(plant.window->notes().notes().of(named("RegVar2")).label, std::string("Level"));
}

void NamesTest::panelsHaveTheLabels() {
    const Plant plant(someNotes);
    plant.trigger("miViewMessages");
    QCOMPARE(plant.shown("tblMessages", 1).first(), QStringLiteral("TankFull"));
    plant.trigger("miViewVariables");
    QCOMPARE(plant.shown("tblVariables", 1).at(1), QStringLiteral("TankLevel"));
    QVERIFY(plant.find<QTableView>("tblVariables")
                ->model()
                ->index(1, 1)
                .data(Qt::ToolTipRole)
                .toString()
                .contains("Level of tank 1"));
}

void NamesTest::filtersLookInLabelsAndComments() {
    const Plant plant(someNotes);
    plant.trigger("miViewMessages");
    for (const char* const word : {"tankf", "über"}) {
        plant.find<QLineEdit>("txtMessagesFilter")->setText(QString::fromUtf8(word));
        QCOMPARE(plant.shown("tblMessages", 0), QStringList{"STDMSG1"});
    }
    plant.trigger("miViewVariables");
    for (const char* const word : {"TANKL", "tank 1"}) {
        plant.find<QLineEdit>("txtVariablesFilter")->setText(QString::fromUtf8(word));
        QCOMPARE(plant.shown("tblVariables", 0), QStringList{"RegVar2"});
    }
}

void NamesTest::treesTellWhatIsNoted() {
    Plant plant(someNotes);
    const auto hover = [&plant](const char* page, const char* treeName, const char* key) {
        plant.showPage(page);
        auto& tree = *plant.find<ItemTree>(treeName);
        QTreeWidgetItem* const node = plant.node(tree, key);
        tree.scrollToItem(node);
        const QPoint at = tree.visualItemRect(node).center();
        QHelpEvent event(QEvent::ToolTip, at, tree.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(tree.viewport(), &event);
    };
    hover("C4", "trvMsg", "R1");
    QTRY_COMPARE(QToolTip::text(), QString::fromUtf8("<p>TankFull<br>Überlauf</p>"));
    hover("C3", "trvVar", "F2");
    QTRY_COMPARE(QToolTip::text(), QStringLiteral("<p>TankLevel<br>m<br>Level of tank 1</p>"));
    hover("C3", "trvVar", "F3");
    QTRY_COMPARE(QToolTip::text(), QString());
    plant.newProject("Other");
    hover("C4", "trvMsg", "R1");
    QTRY_COMPARE(QToolTip::text(), QString());
}

void NamesTest::theWizardsListsTellWhatIsNoted() {
    const Plant plant(someNotes);
    plant.showMessage("R1");
    onModal(QStringLiteral("frmMessageEdit"), [](QWidget* wizard) {
        const auto& list = in<QComboBox>(*wizard, "cbVar(0)");
        const int row = list.findText(QStringLiteral("RegVar2"));
        QCOMPARE(list.itemData(row, Qt::ToolTipRole).toString(),
                 QStringLiteral("<p>TankLevel<br>m<br>Level of tank 1</p>"));
        QCOMPARE(list.itemData(row + 1, Qt::ToolTipRole).toString(), QString());
        press(*wizard, "btnCancel");
    });
    plant.click("btnEditMessage");
    QVERIFY(allModalsServed());
}

void NamesTest::okWritesTheNotesAlone() {
    const Plant plant;
    const std::string before = fileBytes(plant.projectFolder.file("Line3.orx"));
    plant.names([](QWidget& dialog) {
        typeInto(dialog, 2, Label, QStringLiteral("Height"));
        QTest::keyClicks(&in<QLineEdit>(dialog, "txtDisplayName"), QString::fromUtf8("Tor"));
        in<QSpinBox>(dialog, "spnDisplayColumns").setValue(64);
        press(dialog, "btnOK");
    });
    QCOMPARE(plant.noted().of(named("RegVar3")).label, std::string("Height"));
    QCOMPARE(plant.noted().displayName, std::string("Tor"));
    QCOMPARE(plant.columns(), 64);
    QVERIFY(!plant.project.modified);
    QVERIFY(fileBytes(plant.projectFolder.file("Line3.orx")) == before);
}

void NamesTest::whatIsTypedByKeyboardAloneIsWritten() {
    const Plant plant;
    plant.names([](QWidget& dialog) {
        QVERIFY(dialog.focusWidget() == &table(dialog));
        QTest::keyClick(&table(dialog), Qt::Key_Down);
        QTest::keyClicks(&table(dialog), QStringLiteral("L"));
        QTRY_VERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()) != nullptr);
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("evel"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(table(dialog).item(1, Label)->text(), QStringLiteral("Level"));
        QVERIFY(dialog.isVisible());
        QTRY_VERIFY(table(dialog).hasFocus());
        QTest::keyClick(&table(dialog), Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(plant.noted().of(named("RegVar2")).label, std::string("Level"));
}

void NamesTest::anErrorStandsAtItsRowAndHindersOk() {
    const Plant plant(someNotes);
    plant.names([](QWidget& dialog) {
        typeInto(dialog, 0, Label, QStringLiteral("tanklevel"));
        QCOMPARE(table(dialog).item(1, Fault)->text(),
                 QStringLiteral("label: \"TankLevel\" is the label of RegVar1 already"));
        QVERIFY(!table(dialog).isColumnHidden(Fault));
        QVERIFY(!table(dialog).item(1, Label)->icon().isNull() &&
                table(dialog).item(0, Label)->icon().isNull());
        QVERIFY(!in<QPushButton>(dialog, "btnOK").isEnabled());
        QCOMPARE(in<QLabel>(dialog, "lblNames").text(),
                 QStringLiteral("RegVar2: \"TankLevel\" is the label of RegVar1 already"));
        typeInto(dialog, 0, Label, QStringLiteral("Other"));
        QCOMPARE(table(dialog).item(1, Fault)->text(), QString());
        QVERIFY(table(dialog).isColumnHidden(Fault) && table(dialog).item(1, Label)->icon().isNull());
        QVERIFY(in<QPushButton>(dialog, "btnOK").isEnabled());
        press(dialog, "btnCancel");
    });
    QCOMPARE(plant.noted(), readNotes(someNotes).notes);
}

void NamesTest::aSentenceOfSeveralLinesTakesItsRoomFromTheTable() {
    const Plant plant;
    plant.names([](QWidget& dialog) {
        auto& sentence = in<QLabel>(dialog, "lblNames");
        const int height = dialog.height();
        sentence.setText(QStringLiteral("of words that go on and on ").repeated(20));
        QTRY_VERIFY(sentence.height() > 2 * sentence.fontMetrics().lineSpacing());
        QVERIFY(sentence.height() >= sentence.heightForWidth(sentence.width()));
        QVERIFY(!sentence.geometry().intersects(table(dialog).geometry()));
        QCOMPARE(dialog.height(), height);
        press(dialog, "btnCancel");
    });
}

void NamesTest::aSpreadsheetIsPastedByColumns() {
    const Plant plant;
    QApplication::clipboard()->setText(QStringLiteral("Level\tm\t\"Tank\n1\"\r\nFlow\tl/s\t\r\n"));
    plant.names([](QWidget& dialog) {
        table(dialog).setCurrentCell(3, Label);
        QTest::keyClick(&table(dialog), Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&table(dialog), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("Level\n"));
        press(dialog, "btnOK");
    });
    QCOMPARE(plant.noted().of(named("RegVar4")), (ItemNote{"Level", "m", "Tank 1"}));
    QCOMPARE(plant.noted().of(named("RegVar5")), (ItemNote{"Flow", "l/s", ""}));
}

void NamesTest::aTableOfNamesIsShownAndWrittenByOk() {
    const Plant plant(someNotes);
    for (const char* const entry : {"miToolsImportVariables", "miToolsImportMessages"}) {
        onModal(QStringLiteral("frmNames"), [entry](QWidget* dialog) {
            QCOMPARE(table(*dialog).currentRow(), 1);
            const auto& label = *table(*dialog).item(1, Label);
            QCOMPARE(label.text(), QStringLiteral("Level"));
            QCOMPARE(label.toolTip(), QStringLiteral("<p>before: TankLevel</p>"));
            QVERIFY(label.font().bold() && !table(*dialog).item(1, Unit)->font().bold());
            QCOMPARE(
                in<QLabel>(*dialog, "lblNames").text(),
                QStringLiteral("Bold: where names.csv says something else than the notes. OK writes it."));
            press(*dialog, entry == QLatin1String("miToolsImportMessages") ? "btnOK" : "btnCancel");
        });
        plant.importTable(entry, "name,label\nRegVar2,Level\nSTDMSG1,TankFull\n");
    }
    QCOMPARE(plant.noted().of(named("RegVar2")), (ItemNote{"Level", "m", "Level of tank 1"}));
    QVERIFY(!plant.project.modified);
    onModal(QStringLiteral("frmNames"), [](QWidget* dialog) {
        QCOMPARE(in<QLabel>(*dialog, "lblNames").text(),
                 QStringLiteral("names.csv contains nothing that is not already noted."));
        press(*dialog, "btnCancel");
    });
    plant.importTable("miToolsImportVariables", "name,label\nRegVar2,Level\n");
}

void NamesTest::aTableOfNamesWithErrorsIsTold() {
    const Plant plant(someNotes);
    onModal(QStringLiteral("frmSheetErrors"), [](QWidget* dialog) {
        const auto* const rows = in<QTableView>(*dialog, "tblErrors").model();
        QCOMPARE(rows->rowCount(), 1);
        QCOMPARE(rows->index(0, 2).data().toString(),
                 QStringLiteral("\"REAL\" is a word that IEC 61131-3 keeps for itself"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    plant.importTable("miToolsImportVariables", "name,label\nRegVar2,REAL\n");
    QCOMPARE(fileBytes(plant.notesFile()), someNotes);
}

void NamesTest::filterAndOnlyUsedLeaveRows() {
    const Plant plant(someNotes);
    plant.names([](QWidget& dialog) {
        const auto shownRows = [&dialog] {
            QStringList names;
            for (int row = 0; row < table(dialog).rowCount(); ++row)
                if (!table(dialog).isRowHidden(row))
                    names << table(dialog).item(row, ItemName)->text();
            return names;
        };
        QCOMPARE(shownRows().size(), 156);
        in<QCheckBox>(dialog, "chkNamesUsed").setChecked(true);
        QCOMPARE(shownRows(), QStringList{"STDMSG1"});
        in<QCheckBox>(dialog, "chkNamesUsed").setChecked(false);
        QTest::keyClicks(&in<QLineEdit>(dialog, "txtNamesFilter"), QStringLiteral("tank"));
        QCOMPARE(shownRows(), (QStringList{"RegVar2", "STDMSG1"}));
        press(dialog, "btnCancel");
    });
}

void NamesTest::aProjectThatWasNeverSavedIsNotNoted() {
    Plant plant;
    plant.newProject("Fresh");
    plant.names([](QWidget& dialog) {
        QVERIFY(!in<QPushButton>(dialog, "btnOK").isEnabled());
        QCOMPARE(in<QLabel>(dialog, "lblNames").text(),
                 QStringLiteral("Save the project first: the notes lie beside it."));
        press(dialog, "btnCancel");
    });
}

void NamesTest::whatAnotherProgramWroteMeanwhileStays() {
    const Plant plant(someNotes);
    plant.names([&plant](QWidget& dialog) {
        writeBytes(plant.notesFile(), R"({"version":1,"mine":[1],"items":{"RegVar9":{"label":"Flow"}}})");
        typeInto(dialog, 0, Unit, QStringLiteral("bar"));
        press(dialog, "btnOK");
    });
    QCOMPARE(plant.noted().of(named("RegVar9")).label, std::string("Flow"));
    QCOMPARE(plant.noted().of(named("RegVar1")).unit, std::string("bar"));
    QCOMPARE(plant.window->notes().notes(), plant.noted());
}

void NamesTest::whatCannotBeWrittenIsSaidAndTheDialogStays() {
    const Plant plant(someNotes);
    plant.names([&plant](QWidget& dialog) {
        writeBytes(plant.notesFile(), "no notes");
        typeInto(dialog, 0, Unit, QStringLiteral("bar"));
        press(dialog, "btnOK");
        QVERIFY(dialog.isVisible());
        QVERIFY(in<QLabel>(dialog, "lblNames").text().endsWith("is not JSON; mend or remove it first"));
        press(dialog, "btnCancel");
    });
    QCOMPARE(fileBytes(plant.notesFile()), std::string("no notes"));
}

void NamesTest::theListOfAMasterIsChosenAndTakenOffAgain() {
    const Plant plant(someNotes);
    std::filesystem::create_directory(systemPath(plant.projectFolder.file("lists")));
    const std::string list = plant.projectFolder.file("lists/displays.csv");
    writeBytes(list, "name,address,line\nLine 1,10.0.0.1,1\n");
    auto* const displays = plant.find<QComboBox>("cboPreviewDisplay");
    plant.names([&list](QWidget& dialog) {
        QCOMPARE(in<QLineEdit>(dialog, "txtMasterList").text(), QString());
        onModal(QStringLiteral("comdlg"), [&list](QWidget* chooser) {
            auto* const files = qobject_cast<QFileDialog*>(chooser);
            files->selectFile(QString::fromStdString(list));
            QMetaObject::invokeMethod(files, "accept");
        });
        press(dialog, "btnMasterList");
        QCOMPARE(in<QLineEdit>(dialog, "txtMasterList").text(), "lists/displays.csv");
        press(dialog, "btnOK");
    });
    QCOMPARE(plant.noted().masterList, std::optional<std::string>("lists/displays.csv"));
    QCOMPARE(displays->count(), 2);
    plant.names([](QWidget& dialog) {
        auto& box = in<QLineEdit>(dialog, "txtMasterList");
        box.setFocus();
        box.selectAll();
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    QCOMPARE(plant.noted().masterList, std::optional<std::string>());
    QCOMPARE(plant.noted().displayName, std::string("Gate"));
    QVERIFY(displays->isHidden());
}

void NamesTest::saveAsOffersTheNotes() {
    Plant plant(someNotes);
    plant.saveAs(plant.projectFolder.file("Copy.orx"));
    QCOMPARE(plant.line("lblCopyNotes"), "There are names and notes in " + shownPath(plant.notesFile()));
    QCOMPARE(plant.columns(), 96); // nothing was opened
    plant.click("btnCopyNotes");
    QCOMPARE(fileBytes(plant.projectFolder.file("Copy.notes.json")), someNotes);
    QCOMPARE(plant.window->notes().notes().of(named("STDMSG1")).label, std::string("TankFull"));
    QCOMPARE(plant.line("lblCopyNotes"), QString());
}

void NamesTest::saveAsOffersNothingWhereThereAreNotes() {
    Plant plant(someNotes);
    writeBytes(plant.projectFolder.file("Copy.notes.json"), R"({"version":1})");
    plant.saveAs(plant.projectFolder.file("Copy.orx"));
    QCOMPARE(plant.line("lblCopyNotes"), QString());
    Plant bare;
    bare.saveAs(bare.projectFolder.file("Copy.orx"));
    QCOMPARE(bare.line("lblCopyNotes"), QString());
}

void NamesTest::aDownloadOffersTheNotesOfTheProjectBefore() {
    Plant plant(someNotes);
    Download download(plant.project);
    plant.window->useTransfer(download);
    plant.trigger("miLinkDownload");
    QCOMPARE(plant.line("lblCopyNotes"), "There are names and notes in " + shownPath(plant.notesFile()));
    plant.click("btnCopyNotes");
    QCOMPARE(fileBytes(plant.projectFolder.file("Fetched.notes.json")), someNotes);
}

void NamesTest::findingsHaveTheLabelsAndAreFoundByThem() {
    Plant plant(someNotes);
    plant.project.STDMSG[0] = plant.project.STDMSG[1] = "BLARE";
    plant.trigger("miToolsCheck");
    constexpr int labelColumn = 2;
    QCOMPARE(plant.shown("tblFindings", labelColumn), (QStringList{"TankFull", ""}));
    for (const char* const word : {"tankf", "über"}) {
        plant.find<QLineEdit>("txtFindingsFilter")->setText(QString::fromUtf8(word));
        QCOMPARE(plant.shown("tblFindings", labelColumn), QStringList{"TankFull"});
    }
}

void NamesTest::theComparisonHasTheLabels() {
    Plant plant(someNotes);
    plant.project.STDMSG[0] = "CLEAR";
    plant.chooser.existingProjects.push_back(plant.projectNamed("Line3"));
    plant.trigger("miToolsCompareProject");
    QCOMPARE(plant.shown("tblComparison", 1).first(), QStringLiteral("TankFull"));
}

QTEST_MAIN(NamesTest)
#include "NamesTest.moc"
