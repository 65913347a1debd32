#include "compare/DisplayContents.h"
#include "mainwindow/ProjectChanges.h"
#include "sheets/AddressSheet.h"
#include "sheets/BookHtml.h"
#include "sheets/MessageSheet.h"
#include "sheets/VariableSheet.h"
#include "tests/support/EditorFixture.h"
#include "tests/support/ModalDriver.h"
#include "widgets/PanelView.h"
#include "widgets/RowsTable.h"

#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFontDatabase>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableView>
#include <QUrl>
#include <QWindow>

using namespace orvista;
using namespace orvista::testing;

namespace {

/// The editor with a project of some texts, beside tables.
struct Desk : EditorFixture {
    Desk() {
        startWithNewProject();
        project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 SMALL RED BLACK Pump\r\nSTILL 500";
        project.RegVar[5].defaultValue = "1.5";
    }
    std::string file(const char* name) const { return projectFolder.file(name); }
    void store(const char* name, const std::string& bytes) const {
        QFile table(QString::fromStdString(file(name)));
        if (!table.open(QIODevice::WriteOnly) || table.write(QByteArray::fromStdString(bytes)) < 0)
            throw std::logic_error("cannot write the table");
    }
    std::string stored(const char* name) const {
        QFile table(QString::fromStdString(file(name)));
        return table.open(QIODevice::ReadOnly) ? table.readAll().toStdString() : std::string();
    }
    /// Answers the file dialog of the entry with that name, under that filter.
    void choose(const char* entry, const char* name, int filter = 0) {
        if (QLatin1String(entry) == QLatin1String("miToolsExportAddresses"))
            onModal(QStringLiteral("frmAddressList"), [this](QWidget* dialog) {
                dialog->findChild<QLineEdit*>(QStringLiteral("txtAddressPrefix"))->setText(prefix);
                dialog->findChild<QCheckBox*>(QStringLiteral("chkAddressUsed"))->setChecked(isUsedOnly);
                QTest::keyClick(dialog, Qt::Key_Return);
            });
        if (QLatin1String(entry) == QLatin1String("miToolsBook"))
            onModal(QStringLiteral("frmBook"), [this](QWidget* dialog) {
                dialog->findChild<QCheckBox*>(QStringLiteral("chkBookUsed"))->setChecked(isUsedOnly);
                // Focus begins on the box for the widest values.
                QTest::keyClick(dialog->focusWidget(), Qt::Key_Space);
                QTest::keyClick(dialog, Qt::Key_Return);
            });
        onModal(QStringLiteral("comdlg"), [this, name, filter](QWidget* dialog) {
            auto* const files = qobject_cast<QFileDialog*>(dialog);
            proposed = files->selectedFiles().value(0);
            files->selectNameFilter(files->nameFilters().at(filter));
            emit files->filterSelected(files->nameFilters().at(filter));
            files->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))
                ->setText(QString::fromStdString(file(name)));
            QMetaObject::invokeMethod(files, "accept");
        });
        trigger(entry);
        QVERIFY(allModalsServed());
    }
    /// Answers the next file dialog with "table.csv".
    void chooseTable() const {
        onModal(QStringLiteral("comdlg"), [this](QWidget* dialog) {
            auto* const files = qobject_cast<QFileDialog*>(dialog);
            files->selectFile(QString::fromStdString(file("table.csv")));
            QMetaObject::invokeMethod(files, "accept");
        });
    }
    /// Answers it with a folder of that name, which the dialog itself would not take.
    void chooseFolder(const char* name) const {
        QVERIFY(QDir().mkdir(QString::fromStdString(file(name))));
        onModal(QStringLiteral("comdlg"), [this, name](QWidget* dialog) {
            auto* const files = qobject_cast<QFileDialog*>(dialog);
            files->selectFile(QString::fromStdString(file(name)));
            static_cast<QDialog*>(files)->done(QDialog::Accepted);
        });
    }
    /// Imports a table through its entry, with the import dialog served by `act`.
    void importTable(const char* entry, const std::string& csv, std::function<void(QDialog&)> act) {
        store("table.csv", csv);
        chooseTable();
        onModal(QStringLiteral("frmSheetImport"),
                [act](QWidget* dialog) { act(*qobject_cast<QDialog*>(dialog)); });
        trigger(entry);
        QVERIFY(allModalsServed());
    }
    void importMessages(const std::string& csv, std::function<void(QDialog&)> act) {
        importTable("miToolsImportMessages", csv, std::move(act));
    }
    QString undo() const { return find<QAction>("miEditUndo")->text(); }
    QString proposed;
    QString prefix;
    bool isUsedOnly = false;
};

template <typename Widget>
Widget* child(const QWidget& dialog, const char* name) {
    return dialog.findChild<Widget*>(QString::fromLatin1(name));
}

void press(const QWidget& dialog, const char* button) {
    QTest::mouseClick(child<QPushButton>(dialog, button), Qt::LeftButton);
}

const std::string twoMessages = "message,script\r\nSTDMSG1,STILL 1\r\nALTMSG2,STILL 2\r\n";

} // namespace

class SheetCommandsTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void theAddressListIsWrittenInTheFormOfItsEnding();
    void theAddressListAsPdfIsA4WithSeveralPages();
    void theAddressListAsAProgramHasNamesWithThePrefix();
    void namesThatBecomeEqualAreToldAndNothingIsWritten();
    void aPrefixThatCannotBeKeepsTheListWaiting();
    void theMessageBookIsWrittenAsAPageOrPrinted();
    void aLongBookCanBeStopped();
    void anotherEndingIsRefused();
    void aNameWithoutAnEndingGetsThatOfTheFilter();
    void messagesAreWrittenAsScriptsOrPages();
    void aMendedLineEndIsNamed();
    void variablesAreWritten();
    void aFileThatCannotBeWrittenIsTold();
    void anImportShowsOldAndNew();
    void anImportShowsThePagesBeforeAndAfter();
    void anImportSaysWhatIsTakenForAnEmptyVariable();
    void anImportIsOneStepThatCanBeUndone();
    void onlyTickedRowsAreTaken();
    void cancelTakesNothing();
    void theKeyboardAloneImports();
    void allRowsAreTickedAtOnce();
    void variablesAreImported();
    void aTableThatChangesNothingSaysSo();
    void errorsAreToldInWordsAndNothingIsChanged();
    void anEditThatIsNotAppliedStopsTheImport();
    void aTableThatIsNotThereIsTold();
    void aDroppedTableIsImported();
    void aDroppedTableWaitsForAProject();
    void whatAnExportWroteChangesNothing();
};

void SheetCommandsTest::initTestCase() {
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void SheetCommandsTest::theAddressListIsWrittenInTheFormOfItsEnding() {
    Desk desk;
    desk.choose("miToolsExportAddresses", "list.csv");
    QVERIFY(desk.proposed.endsWith(QStringLiteral("Line3 addresses.csv")));
    QCOMPARE(desk.stored("list.csv"), addressCsv(addressList(desk.project)));
    desk.choose("miToolsExportAddresses", "list.HTML");
    const std::string html = desk.stored("list.HTML");
    const std::size_t time = html.find("As of ") + 6; // 2026-11-22 03:15:00 UTC
    const AddressHead head{fingerprint(DisplayContents::ofProject(desk.project)),
                           html.substr(time, 10) + "T" + html.substr(time + 11, 8) + "Z", "", ""};
    QCOMPARE(html, addressHtml(addressList(desk.project), desk.project, head));
    QVERIFY(desk.messages.shown.empty());
}

void SheetCommandsTest::theAddressListAsPdfIsA4WithSeveralPages() {
    Desk desk;
    desk.choose("miToolsExportAddresses", "list.pdf", 2);
    const std::string pdf = desk.stored("list.pdf");
    QVERIFY(pdf.starts_with("%PDF-"));
    QVERIFY(pdf.find("/MediaBox [0 0 842.") != std::string::npos);
    const QByteArray bytes = QByteArray::fromStdString(pdf);
    QVERIFY(bytes.count("/Type /Page\n") >= 4);
}

void SheetCommandsTest::theMessageBookIsWrittenAsAPageOrPrinted() {
    Desk desk;
    desk.isUsedOnly = true;
    desk.project.STDMSG[2] = "TEXT 0 0 RED BLACK \"Pump\"\r\nDISPVAR 40 0 RED BLACK RegVar7";
    desk.choose("miToolsBook", "book.html");
    QVERIFY(desk.proposed.endsWith(QStringLiteral("Line3 messages.html")));
    const std::string html = desk.stored("book.html");
    const std::size_t time = html.find("As of ") + 6; // 2026-11-22 03:15:00 UTC
    const AddressHead head{fingerprint(DisplayContents::ofProject(desk.project)),
                           html.substr(time, 10) + "T" + html.substr(time + 11, 8) + "Z", "", ""};
    const MessageBook book =
        messageBook(desk.project, {}, NoBitmaps(), {.addresses = AddressRows::UsedOnly, .widest = true});
    QVERIFY(book.messages.at(0).pages.at(0).widest.has_value());
    QVERIFY(html == bookHtml(book, desk.project, head));

    desk.choose("miToolsBook", "book", 1);
    const QByteArray pdf = QByteArray::fromStdString(desk.stored("book.pdf"));
    QVERIFY(pdf.startsWith("%PDF-"));
    QCOMPARE(pdf.count("/Subtype /Image"), 2);
    QVERIFY(!pdf.contains("/DCTDecode"));
    if (const QString reader = QStandardPaths::findExecutable(QStringLiteral("pdftotext"));
        !reader.isEmpty()) {
        QProcess process;
        process.start(reader, {QStringLiteral("-layout"), QString::fromStdString(desk.file("book.pdf")),
                               QStringLiteral("-")});
        QVERIFY(process.waitForFinished());
        const QByteArray text = process.readAllStandardOutput().simplified().replace(' ', "");
        for (const QByteArray told :
             {"Messages of Line3", "STDMSG3 00323 Pump %1v 1 1 s 0",
              "Page of STDMSG3 Time What it does Texts",
              "1 1 s stands still: 1 s Pump %1v With the widest values:",
              "RegVar7 7.3 0.0 holding register 112 40113", "Regular messages number name table"})
            QVERIFY2(text.contains(QByteArray(told).replace(' ', "")), told + ": " + text);
    }
    desk.choose("miToolsBook", "book.txt");
    QCOMPARE(desk.messages.shown.size(), std::size_t{1});
    QCOMPARE(desk.messages.shown[0].text, desk.file("book.txt") + " does not end in .html or .pdf");
}

void SheetCommandsTest::aLongBookCanBeStopped() {
    Desk desk;
    std::string script;
    for (int page = 0; page < 100; ++page)
        script +=
            "CLEAR\r\nTEXT 0 0 RED BLACK \"Pump\"\r\nDISPVAR 40 0 RED BLACK RegVar7\r\nACT STILL 10\r\n";
    desk.project.STDMSG.fill(script);
    desk.project.ALTMSG.fill(script);
    desk.store("book.html", "before");
    onModal(QStringLiteral("frmBook"), [](QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
    onModal(QStringLiteral("comdlg"), [&desk](QWidget* dialog) {
        auto* const files = qobject_cast<QFileDialog*>(dialog);
        files->selectFile(QString::fromStdString(desk.file("book.html")));
        static_cast<QDialog*>(files)->done(QDialog::Accepted);
    });
    onModal(QStringLiteral("frmBookProgress"), [](QWidget* dialog) {
        QCOMPARE(dialog->findChild<QLabel*>()->text(), QStringLiteral("Writing the message book\u2026"));
        QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton);
    });
    desk.trigger("miToolsBook");
    QVERIFY(allModalsServed());
    QCOMPARE(desk.stored("book.html"), std::string("before"));
    QVERIFY(desk.messages.shown.empty());
    QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
}

void SheetCommandsTest::theAddressListAsAProgramHasNamesWithThePrefix() {
    Desk desk;
    desk.prefix = QStringLiteral("LINE3_");
    desk.isUsedOnly = true;
    desk.project.STDMSG[2] = "TEXT 0 0 RED BLACK \"Pump\"";
    desk.store((desk.project.ProjName + ".notes.json").c_str(),
               R"({"version": 1, "items": {"STDMSG3": {"label": "Pump"}}})");
    desk.choose("miToolsExportAddresses", "list.st", 3);
    QVERIFY(desk.stored("list.st").find(
                "    LINE3_Pump : BOOL := FALSE; (* coil 00323, address 322; STDMSG3 *)\r\n") !=
            std::string::npos);
    QVERIFY(desk.stored("list.st").find("LINE3_RegVar1 ") == std::string::npos);
    desk.choose("miToolsExportAddresses", "list", 4);
    QVERIFY(desk.stored("list.xml").find("<variable name=\"LINE3_Pump\">") != std::string::npos);
    QVERIFY(desk.messages.shown.empty());
}

void SheetCommandsTest::namesThatBecomeEqualAreToldAndNothingIsWritten() {
    Desk desk;
    desk.store((desk.project.ProjName + ".notes.json").c_str(),
               R"({"version": 1, "items": {"STDMSG3": {"label": "Registers"}}})");
    desk.choose("miToolsExportAddresses", "list.st");
    QCOMPARE(desk.messages.shown.size(), std::size_t{1});
    QCOMPARE(desk.messages.shown[0].text, "STDMSG3: \"Registers\" is a name of the program itself already");
    QVERIFY(!QFile::exists(QString::fromStdString(desk.file("list.st"))));
}

void SheetCommandsTest::aPrefixThatCannotBeKeepsTheListWaiting() {
    Desk desk;
    onModal(QStringLiteral("frmAddressList"), [](QWidget* dialog) {
        auto* const prefix = child<QLineEdit>(*dialog, "txtAddressPrefix");
        QCOMPARE(dialog->focusWidget(), prefix);
        QTest::keyClicks(prefix, QStringLiteral("3x"));
        QCOMPARE(child<QLabel>(*dialog, "lblAddressPrefix")->text(),
                 QStringLiteral("\"3x\" begins with no letter or _"));
        QVERIFY(!child<QPushButton>(*dialog, "btnOK")->isEnabled());
        QTest::keyClick(prefix, Qt::Key_Return);
        QVERIFY(dialog->isVisible());
        QTest::keyClick(prefix, Qt::Key_Escape);
    });
    desk.trigger("miToolsExportAddresses");
    QVERIFY(allModalsServed());
}

void SheetCommandsTest::anotherEndingIsRefused() {
    Desk desk;
    desk.choose("miToolsExportAddresses", "list.txt");
    QCOMPARE(desk.messages.shown.size(), std::size_t{1});
    QCOMPARE(desk.messages.shown[0].text,
             desk.file("list.txt") + " does not end in .csv, .html, .pdf, .st or .xml");
    QVERIFY(!QFile::exists(QString::fromStdString(desk.file("list.txt"))));
}

void SheetCommandsTest::aNameWithoutAnEndingGetsThatOfTheFilter() {
    Desk desk;
    desk.choose("miToolsExportAddresses", "list", 1);
    QVERIFY(desk.stored("list.html").starts_with("<!DOCTYPE html>"));
}

void SheetCommandsTest::messagesAreWrittenAsScriptsOrPages() {
    Desk desk;
    desk.choose("miToolsExportMessages", "scripts.csv", 0);
    QCOMPARE(desk.stored("scripts.csv"), messageSheet(desk.project, MessageSheetForm::Scripts).csv);
    desk.choose("miToolsExportMessages", "pages.csv", 1);
    QCOMPARE(desk.stored("pages.csv"), messageSheet(desk.project, MessageSheetForm::Pages).csv);
    QCOMPARE(desk.notice(), QString());
}

void SheetCommandsTest::aMendedLineEndIsNamed() {
    Desk desk;
    desk.project.STDMSG[4] = "CLEAR\nSTILL 5";
    desk.choose("miToolsExportMessages", "scripts.csv");
    QCOMPARE(desk.notice(), QStringLiteral("STDMSG5: lone CR or LF was written as CR LF"));
}

void SheetCommandsTest::variablesAreWritten() {
    Desk desk;
    desk.choose("miToolsExportVariables", "variables.csv");
    QCOMPARE(desk.stored("variables.csv"), variableSheet(desk.project));
}

void SheetCommandsTest::aFileThatCannotBeWrittenIsTold() {
    Desk desk;
    desk.choose("miToolsExportVariables", "missing/variables.csv");
    desk.chooseFolder("taken.csv");
    desk.trigger("miToolsExportVariables");
    QCOMPARE(desk.messages.shown.size(), std::size_t{2});
    QCOMPARE(desk.messages.shown[0].text, "unable to save " + desk.file("missing/variables.csv"));
    QCOMPARE(desk.messages.shown[1].text, "unable to save " + desk.file("taken.csv"));
}

void SheetCommandsTest::anImportShowsOldAndNew() {
    Desk desk;
    const std::string csv =
        "message,script\r\nSTDMSG3,\"CLEAR\r\nTEXT 0 0 SMALL RED BLACK Fan\r\nSTILL 500\"\r\n";
    desk.importMessages(csv, [](QDialog& dialog) {
        QCOMPARE(child<QLabel>(dialog, "lblImport")->text(),
                 QStringLiteral("Where table.csv differs from the project. Ticked rows will be imported."));
        const auto* const table = child<RowsTable>(dialog, "tblChanges");
        const auto cell = [table](int column) { return table->model()->index(0, column).data().toString(); };
        QCOMPARE(table->ticks(), std::vector<bool>{true});
        QCOMPARE(cell(0), QStringLiteral("STDMSG3"));
        QCOMPARE(cell(1), QStringLiteral("script"));
        QVERIFY(cell(2).contains(QStringLiteral("Pump")));
        QVERIFY(cell(3).contains(QStringLiteral("Fan")));
        const auto* const before = child<QPlainTextEdit>(dialog, "txtOld");
        const auto* const after = child<QPlainTextEdit>(dialog, "txtNew");
        QCOMPARE(before->toPlainText(), QStringLiteral("CLEAR\nTEXT 0 0 SMALL RED BLACK Pump\nSTILL 500"));
        QCOMPARE(after->toPlainText(), QStringLiteral("CLEAR\nTEXT 0 0 SMALL RED BLACK Fan\nSTILL 500"));
        QVERIFY(before->isReadOnly() && after->isReadOnly());
        // The line that differs is marked on both sides.
        QCOMPARE(before->extraSelections().size(), 1);
        QCOMPARE(after->extraSelections().size(), 1);
        QCOMPARE(after->extraSelections().front().cursor.selectedText(),
                 QStringLiteral("TEXT 0 0 SMALL RED BLACK Fan"));
        QVERIFY(!child<QPlainTextEdit>(dialog, "txtImportNotes"));
        press(dialog, "btnCancel");
    });
}

void SheetCommandsTest::anImportShowsThePagesBeforeAndAfter() {
    Desk desk;
    desk.project.STDMSG[2] = "CLEAR\r\nTEXT 0 0 RED BLACK \"Pump\"\r\nACT STILL 500";
    desk.importMessages("message,page,content\r\nSTDMSG3,1,Fan\r\n", [](QDialog& dialog) {
        QCOMPARE(child<PanelView>(dialog, "panelBefore")->accessibleDescription(), QStringLiteral("Pump"));
        QCOMPARE(child<PanelView>(dialog, "panelAfter")->accessibleDescription(), QStringLiteral("Fan"));
        press(dialog, "btnCancel");
    });
    desk.importTable("miToolsImportVariables", "name,default\r\nRegVar6,2.5\r\n", [](QDialog& dialog) {
        QVERIFY(!child<PanelView>(dialog, "panelBefore")->isVisible());
        press(dialog, "btnCancel");
    });
}

void SheetCommandsTest::anImportSaysWhatIsTakenForAnEmptyVariable() {
    Desk desk;
    desk.importMessages("message,page,content,var1\r\nSTDMSG3,1,Level %5v,\r\n", [](QDialog& dialog) {
        QCOMPARE(child<QPlainTextEdit>(dialog, "txtImportNotes")->toPlainText(),
                 QStringLiteral("row 2: var1 is empty: CoilVar1 is taken"));
        press(dialog, "btnOK");
    });
    QVERIFY(desk.project.STDMSG[2].find(" CoilVar1") != std::string::npos);
}

void SheetCommandsTest::anImportIsOneStepThatCanBeUndone() {
    Desk desk;
    desk.trigger("miFileSave");
    desk.showMessage("R1");
    desk.importMessages(twoMessages, [&desk](QDialog& dialog) {
        QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
        press(dialog, "btnOK");
    });
    QCOMPARE(desk.project.STDMSG[0], std::string("STILL 1"));
    QCOMPARE(desk.project.ALTMSG[1], std::string("STILL 2"));
    QCOMPARE(desk.find<QPlainTextEdit>("txtMsg")->toPlainText(), QStringLiteral("STILL 1"));
    QCOMPARE(desk.undo(), QStringLiteral("Undo Import"));
    QVERIFY(desk.project.modified);
    desk.trigger("miEditUndo");
    QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(desk.project.ALTMSG[1], std::string("CLEAR"));
}

void SheetCommandsTest::onlyTickedRowsAreTaken() {
    Desk desk;
    desk.importMessages(twoMessages, [](QDialog& dialog) {
        auto* const table = child<RowsTable>(dialog, "tblChanges");
        table->setTicks({false, true});
        QVERIFY(!child<QCheckBox>(dialog, "chkAllChanges")->isChecked());
        table->setTicks({false, false});
        QVERIFY(!child<QPushButton>(dialog, "btnOK")->isEnabled());
        table->setTicks({false, true});
        press(dialog, "btnOK");
    });
    QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(desk.project.ALTMSG[1], std::string("STILL 2"));
}

void SheetCommandsTest::cancelTakesNothing() {
    Desk desk;
    desk.trigger("miFileSave");
    desk.importMessages(twoMessages, [](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(desk.window->changes().steps().count(), 0);
    QVERIFY(!desk.project.modified);
}

void SheetCommandsTest::theKeyboardAloneImports() {
    Desk desk;
    desk.importMessages(twoMessages, [](QDialog& dialog) {
        auto* const table = child<RowsTable>(dialog, "tblChanges");
        QCOMPARE(dialog.focusWidget(), table);
        QTest::keyClick(table, Qt::Key_Down);
        QCOMPARE(child<QPlainTextEdit>(dialog, "txtNew")->toPlainText(), QStringLiteral("STILL 2"));
        QTest::keyClick(table, Qt::Key_Space);
        QCOMPARE(table->ticks(), (std::vector<bool>{true, false}));
        QTest::keyClick(table, Qt::Key_Space);
        QTest::keyClick(table, Qt::Key_Up);
        QTest::keyClick(table, Qt::Key_Space);
        QCOMPARE(table->ticks(), (std::vector<bool>{false, true}));
        QTest::keyClick(table, Qt::Key_Return);
    });
    QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(desk.project.ALTMSG[1], std::string("STILL 2"));
}

void SheetCommandsTest::allRowsAreTickedAtOnce() {
    Desk desk;
    desk.importMessages(twoMessages, [](QDialog& dialog) {
        auto* const all = child<QCheckBox>(dialog, "chkAllChanges");
        const auto* const table = child<RowsTable>(dialog, "tblChanges");
        QVERIFY(all->isChecked());
        all->setFocus();
        QTest::keyClick(all, Qt::Key_Space);
        QCOMPARE(table->ticks(), (std::vector<bool>{false, false}));
        QVERIFY(!child<QPushButton>(dialog, "btnOK")->isEnabled());
        QTest::keyClick(all, Qt::Key_Space);
        QCOMPARE(table->ticks(), (std::vector<bool>{true, true}));
        press(dialog, "btnOK");
    });
    QCOMPARE(desk.project.STDMSG[0], std::string("STILL 1"));
}

void SheetCommandsTest::variablesAreImported() {
    Desk desk;
    desk.showVariable("F6");
    desk.importTable("miToolsImportVariables",
                     "name;width;precision;on\r\nRegVar6;5;1;\r\nCoilVar2;;;running\r\n",
                     [](QDialog& dialog) {
                         QCOMPARE(child<RowsTable>(dialog, "tblChanges")->ticks().size(), std::size_t{3});
                         press(dialog, "btnOK");
                     });
    QCOMPARE(desk.project.RegVar[5], (FloatVariable{"RegVar6", "1.5", "5", "1"}));
    QCOMPARE(desk.project.CoilVar[1].onText, std::string("running"));
    QCOMPARE(desk.text("txtVarWidth"), QStringLiteral("5"));
    QCOMPARE(desk.window->changes().steps().count(), 1);
    desk.trigger("miEditUndo");
    QCOMPARE(desk.project.RegVar[5], (FloatVariable{"RegVar6", "1.5", "7", "3"}));
}

void SheetCommandsTest::aTableThatChangesNothingSaysSo() {
    Desk desk;
    desk.importMessages("message,script\r\nSTDMSG1,CLEAR\r\n", [](QDialog& dialog) {
        QCOMPARE(child<QLabel>(dialog, "lblImport")->text(),
                 QStringLiteral("table.csv contains nothing that is not already in the project."));
        QVERIFY(!child<QPushButton>(dialog, "btnOK")->isEnabled());
        press(dialog, "btnCancel");
    });
    QCOMPARE(desk.window->changes().steps().count(), 0);
}

void SheetCommandsTest::errorsAreToldInWordsAndNothingIsChanged() {
    Desk desk;
    desk.store("table.csv", "message,script\r\nSTDMSG1,STILL 1\r\nSTDMSG99,STILL 2\r\n");
    desk.chooseTable();
    onModal(QStringLiteral("frmSheetErrors"), [](QWidget* dialog) {
        QCOMPARE(
            child<QLabel>(*dialog, "lblErrors")->text(),
            QStringLiteral("table.csv was not imported; the project is unchanged. (Row 1 is the header.)"));
        const auto* const rows = child<QTableView>(*dialog, "tblErrors")->model();
        QCOMPARE(rows->rowCount(), 1);
        QCOMPARE(rows->index(0, 0).data().toString(), QStringLiteral("3"));
        QCOMPARE(rows->index(0, 1).data().toString(), QStringLiteral("message"));
        QVERIFY(rows->index(0, 2).data().toString().contains(QStringLiteral("STDMSG99")));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    desk.trigger("miToolsImportMessages");
    QVERIFY(allModalsServed());
    QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(desk.window->changes().steps().count(), 0);
}

void SheetCommandsTest::anEditThatIsNotAppliedStopsTheImport() {
    Desk desk;
    desk.store("table.csv", twoMessages);
    desk.showMessage("E2");
    QTest::keyClicks(desk.find<QPlainTextEdit>("txtMsg"), QStringLiteral("x"));
    desk.choose("miToolsImportMessages", "table.csv");
    QCOMPARE(desk.notice(), QStringLiteral("Not done: apply or discard the edit of ALTMSG2 first."));
    QCOMPARE(desk.project.STDMSG[0], std::string("CLEAR"));
    QCOMPARE(desk.find<QPlainTextEdit>("txtMsg")->toPlainText(), QStringLiteral("xCLEAR"));
}

void SheetCommandsTest::aTableThatIsNotThereIsTold() {
    Desk desk;
    desk.chooseFolder("table.csv");
    desk.trigger("miToolsImportMessages");
    QCOMPARE(desk.messages.shown.size(), std::size_t{1});
    QCOMPARE(desk.messages.shown[0].text, "Unable to open " + desk.file("table.csv"));
}

/// Drops that file on the window.
bool drop(const Desk& desk, const char* name) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(desk.file(name)))});
    QDropEvent event(QPointF(200, 200), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(desk.window->windowHandle(), &event);
    const bool taken = event.isAccepted();
    QCoreApplication::processEvents();
    return taken;
}

void SheetCommandsTest::aDroppedTableIsImported() {
    Desk desk;
    desk.store("table.CSV", twoMessages);
    desk.store("variables.csv", "name,width\r\nRegVar1,5\r\n");
    for (int i = 0; i < 2; ++i)
        onModal(QStringLiteral("frmSheetImport"), [](QWidget* dialog) { press(*dialog, "btnOK"); });
    QVERIFY(drop(desk, "table.CSV"));
    QTRY_COMPARE(desk.project.STDMSG[0], std::string("STILL 1"));
    QVERIFY(drop(desk, "variables.csv"));
    QTRY_COMPARE(desk.project.RegVar[0].width, std::string("5"));
    QVERIFY(allModalsServed());
}

void SheetCommandsTest::aDroppedTableWaitsForAProject() {
    Desk desk;
    desk.store("table.csv", twoMessages);
    desk.window->lifecycle().InitProject();
    QVERIFY(!drop(desk, "table.csv"));
}

void SheetCommandsTest::whatAnExportWroteChangesNothing() {
    Desk desk;
    for (const int form : {0, 1}) {
        desk.choose("miToolsExportMessages", "again.csv", form);
        desk.importMessages(desk.stored("again.csv"), [](QDialog& dialog) {
            QVERIFY(!child<QPushButton>(dialog, "btnOK")->isEnabled());
            press(dialog, "btnCancel");
        });
        QFile::remove(QString::fromStdString(desk.file("again.csv")));
    }
}

QTEST_MAIN(SheetCommandsTest)
#include "SheetCommandsTest.moc"
